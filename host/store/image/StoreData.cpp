#include "host/store/image/StoreData.h"

#include "I18NHash.h"

#include <algorithm>

namespace vex {

ValueOwner StoreData::ownerOf(std::uint32_t value) const {
    if (value >= elementValueCount) {
        PropertyOwner const* const behind =
            std::upper_bound(propertyOwners.begin(), propertyOwners.end(), value,
                             [](std::uint32_t wanted, PropertyOwner const& owner) {
                                 return wanted < owner.firstValue;
                             });
        PropertyOwner const& owner = behind[-1];
        return {owner.shape, owner.firstValue, owner.value, false};
    }
    // The marks before and behind it hold the search to a few elements.
    std::size_t const mark = value / ValuesPerOwnerMark;
    ElementNumber const first = ownerMarks[mark];
    ElementNumber const last =
        mark + 1 < ownerMarks.size() ? ownerMarks[mark + 1] + 1 : elementCount();
    ElementRecord const* const behind =
        std::upper_bound(elements.data() + first, elements.data() + last, value,
                         [](std::uint32_t wanted, ElementRecord const& element) {
                             return wanted < element.firstValue;
                         });
    ElementRecord const& owner = behind[-1];
    return {owner.shape, owner.firstValue, static_cast<ElementNumber>(&owner - elements.data()),
            true};
}

PropertyOwner const* StoreData::findPropertyOwner(std::uint32_t value) const {
    PropertyOwner const* const found = std::lower_bound(
        propertyOwners.begin(), propertyOwners.end(), value,
        [](PropertyOwner const& owner, std::uint32_t wanted) { return owner.value < wanted; });
    return found != propertyOwners.end() && found->value == value ? found : nullptr;
}

std::uint32_t StoreData::searchOffset(Shape const& owner, std::span<std::uint32_t const> named,
                                      I18NLocale const* locale) const {
    ShapeEntry const* const entry = shapes.entries(owner).data();
    auto const findLocale = [named, entry](std::uint32_t number) {
        auto const at = std::lower_bound(
            named.begin(), named.end(), number,
            [entry](std::uint32_t offset, std::uint32_t of) { return entry[offset].locale < of; });
        return at != named.end() && entry[*at].locale == number ? *at : NotFound;
    };
    if (locale == nullptr) {
        std::uint32_t const unlocalised = findLocale(0);
        if (unlocalised != NotFound) {
            return unlocalised;
        }
        std::uint32_t const ofDefault = findLocale(usedLocales.of(defaultLocale));
        return ofDefault != NotFound ? ofDefault : *std::min_element(named.begin(), named.end());
    }
    // The last parent is the nameless locale, whose number is that of a value
    // without a locale.
    for (I18NLocale wanted = *locale;; wanted = wanted.getParent()) {
        std::uint32_t const number = usedLocales.of(wanted);
        std::uint32_t const offset = findLocale(number);
        if (offset != NotFound || number == 0) {
            return offset;
        }
    }
}

std::span<ElementNumber const> StoreData::below(ElementNumber element, Atom cls) const {
    std::span<ElementNumber const> const all = classes[cls];
    auto const first = std::upper_bound(all.begin(), all.end(), element);
    auto const last = std::lower_bound(first, all.end(), elements[element].end);
    return {first, last};
}

bool StoreData::hasFewChildren(ElementNumber element, std::size_t most) const {
    ElementNumber child = element + 1;
    for (; child < elements[element].end && most != 0; --most) {
        child = elements[child].end;
    }
    return child >= elements[element].end;
}

TextRef StoreData::nameOf(ElementNumber element) const {
    Shape const& shape = shapeOf(element);
    std::span<std::uint32_t const> const named = shapes.namedName(shape);
    std::uint32_t const offset =
        named.empty() ? NotFound : chooseOffset(shape, named, &defaultLocale);
    return offset == NotFound ? 0 : values[elements[element].firstValue + offset];
}

std::vector<ElementNumber> StoreData::referenceOf(ElementNumber element) const {
    std::vector<ElementNumber> named{element};
    if (classOf(element) == namespaceName) {
        return named;
    }
    for (ElementNumber at = elements[element].parent; at != NotFound; at = elements[at].parent) {
        Atom const cls = classOf(at);
        if (!isLeftOutOfReferences(cls)) {
            named.push_back(at);
        }
        if (cls == namespaceName) {
            return named;
        }
    }
    return {};
}

std::size_t StoreData::byteCount() const {
    return sizeof *this + texts.byteCount() + names.byteCount() + shapes.byteCount() +
           elements.byteCount() + firstOfClass.byteCount() + values.byteCount() +
           ownerMarks.byteCount() + propertyOwners.byteCount() + classes.byteCount() +
           ids.byteCount() + references.byteCount() + positions.byteCount() +
           locales.capacity() * sizeof(I18NLocale) + usedLocales.byteCount();
}

// Never 0, which stands for an element without a reference.
std::uint64_t firstReferenceHash(std::u16string_view name, std::uint64_t seed) {
    return I18NHashText(name, seed) | 1U;
}

std::uint64_t nextReferenceHash(std::uint64_t before, std::u16string_view name,
                                std::uint64_t seed) {
    return I18NMixHash(before, I18NHashText(name, seed), seed) | 1U;
}

} // namespace vex
