#include "host/store/image/CallLimits.h"
#include "host/store/image/Model.h"
#include "host/store/image/SameText.h"
#include "host/store/image/StoreData.h"

#include <algorithm>

namespace vex {

bool Model::isName(I18NString const& property) {
    return isSameText(property.view(), u"name");
}

bool Model::IsObject(VEX_HANDLE object) const {
    return object.Number() - m_first < HandleCount();
}

bool Model::giveText(TextRef text, I18NString& target) const {
    if (text == 0) {
        return false;
    }
    m_data->texts.give(text, target);
    return true;
}

bool Model::GetId(VEX_HANDLE object, I18NString& id) const {
    Place const place = decode(object);
    return place.kind == Kind::Element && giveText(m_data->ownText(place.number, Own::Id), id);
}

bool Model::GetName(VEX_HANDLE object, I18NString& name) const {
    Place const place = decode(object);
    Atom const atom = place.kind == Kind::Value ? m_data->entryOf(place.number).name
                                                : m_data->classOf(place.number);
    return giveText(m_data->names.text(atom), name);
}

bool Model::GetClass(VEX_HANDLE object, I18NString& name) const {
    Place const place = decode(object);
    return place.kind == Kind::Element && giveText(m_data->ownText(place.number, Own::Class), name);
}

bool Model::GetRole(VEX_HANDLE object, I18NString& role) const {
    Place const place = decode(object);
    switch (place.kind) {
    case Kind::Element:
        return giveText(m_data->ownText(place.number, Own::Role), role);
    case Kind::Value:
        return giveText(m_data->entryOf(place.number).role, role);
    case Kind::Collection:
        break;
    }
    return false;
}

bool Model::GetValue(VEX_HANDLE object, I18NString& value, [[maybe_unused]] bool resolve) const {
    Place const place = decode(object);
    switch (place.kind) {
    case Kind::Value:
        return giveText(m_data->values[place.number], value);
    case Kind::Element:
        return giveText(m_data->ownText(place.number, Own::Text), value);
    case Kind::Collection:
        break;
    }
    return false;
}

I18NLocale const* Model::GetLocale(VEX_HANDLE object) const {
    Place const place = decode(object);
    if (place.kind == Kind::Element) {
        return &m_data->defaultLocale;
    }
    std::uint32_t const number =
        place.kind == Kind::Value ? m_data->entryOf(place.number).locale : 0;
    if (number == 0) {
        return nullptr;
    }
    return &*std::lower_bound(
        m_data->usedLocales.begin(), m_data->usedLocales.end(), number,
        [](I18NLocale const& used, std::uint32_t wanted) { return used.getNumber() < wanted; });
}

VEX_HANDLE Model::GetParent(VEX_HANDLE object) const {
    Place const place = decode(object);
    if (place.kind == Kind::Value) {
        ValueOwner const owner = m_data->ownerOf(place.number);
        return owner.isElement ? elementHandle(owner.number) : valueHandle(owner.number);
    }
    ElementNumber const parent = m_data->elements[place.number].parent;
    return parent == NotFound ? VEX_HANDLE() : elementHandle(parent);
}

Model::SimpleProperties Model::findSimpleProperties(Place place) const {
    if (place.kind == Kind::Element) {
        return {&m_data->shapeOf(place.number), m_data->elements[place.number].firstValue};
    }
    PropertyOwner const* const owner =
        place.kind == Kind::Value ? m_data->findPropertyOwner(place.number) : nullptr;
    return owner == nullptr ? SimpleProperties{nullptr, 0}
                            : SimpleProperties{&m_data->shapes[owner->shape], owner->firstValue};
}

bool Model::hasProperties(VEX_HANDLE object) const {
    Place const place = decode(object);
    if (place.kind == Kind::Element && m_data->hasChildren(place.number)) {
        return true;
    }
    SimpleProperties const simple = findSimpleProperties(place);
    return simple.shape != nullptr && simple.shape->listedCount != 0;
}

VEX_HANDLE Model::simpleProperty(SimpleProperties const& of, std::uint32_t offset) const {
    if (offset == NotFound) {
        return {};
    }
    // Whoever looks a property up reads its value next.
    __builtin_prefetch(m_data->values.data() + of.firstValue + offset);
    return valueHandle(of.firstValue + offset);
}

VEX_HANDLE Model::findCollection(ElementNumber element, Atom cls) const {
    ElementNumber const last = m_data->elements[element].end;
    if (m_data->classes[cls].empty()) {
        return {};
    }
    for (ElementNumber child = element + 1; child < last; child = m_data->elements[child].end) {
        if (m_data->firstOfClass[child] && m_data->classOf(child) == cls) {
            return collectionHandle(child);
        }
    }
    return {};
}

VEX_HANDLE Model::GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                    I18NLocale const* locale) const {
    CallLimits::check();
    Place const place = decode(object);
    if (place.kind == Kind::Element && isName(name)) {
        ElementRecord const& element = m_data->elements[place.number];
        Shape const& shape = m_data->shapes[element.shape];
        std::span<std::uint32_t const> const named = m_data->shapes.namedName(shape);
        if (!named.empty()) {
            return simpleProperty({&shape, element.firstValue},
                                  m_data->chooseOffset(shape, named, locale));
        }
    }
    return findProperty(place, name, locale);
}

VEX_HANDLE Model::findProperty(Place place, I18NString const& name,
                               I18NLocale const* locale) const {
    Atom const atom = m_data->names.find(name.view(), m_data->texts);
    if (atom == NoAtom) {
        return {};
    }
    if (place.kind == Kind::Element && atom == m_data->idName) {
        // The id is an element's first value.
        return m_data->shapeOf(place.number).has(Own::Id)
                   ? valueHandle(m_data->elements[place.number].firstValue)
                   : VEX_HANDLE();
    }
    SimpleProperties const simple = findSimpleProperties(place);
    if (simple.shape != nullptr) {
        std::span<std::uint32_t const> const named = m_data->shapes.named(*simple.shape, atom);
        if (!named.empty()) {
            return simpleProperty(simple, m_data->chooseOffset(*simple.shape, named, locale));
        }
    }
    return place.kind == Kind::Element ? findCollection(place.number, atom) : VEX_HANDLE();
}

VEX_HANDLE Model::GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                    I18NLocale const* locale) const {
    CallLimits::check();
    SimpleProperties const simple = findSimpleProperties(decode(object));
    if (simple.shape == nullptr) {
        return {};
    }
    for (ShapeEntry const& entry : m_data->shapes.simple(*simple.shape)) {
        if (entry.role != 0 && m_data->texts.view(entry.role) == role.view()) {
            return simpleProperty(simple, m_data->findOffset(*simple.shape, entry.name, locale));
        }
    }
    return {};
}

void Model::appendCollections(ElementNumber element, Vex_Handle_Collection& found,
                              I18NString const* name) const {
    if (name != nullptr) {
        Atom const cls = m_data->names.find(name->view(), m_data->texts);
        VEX_HANDLE const collection = cls == NoAtom ? VEX_HANDLE() : findCollection(element, cls);
        if (collection.IsNotNull()) {
            found.push_back(collection);
        }
        return;
    }
    ElementNumber const last = m_data->elements[element].end;
    for (ElementNumber child = element + 1; child < last; child = m_data->elements[child].end) {
        if (m_data->firstOfClass[child]) {
            found.push_back(collectionHandle(child));
        }
    }
}

bool Model::Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                       I18NString const* role) const {
    CallLimits::check();
    Place const place = decode(object);
    SimpleProperties const simple = findSimpleProperties(place);
    if (simple.shape != nullptr) {
        ShapeEntry const* const entry = m_data->shapes.entries(*simple.shape).data();
        auto const keeps = [this](I18NString const* filter, TextRef text) {
            return filter == nullptr || m_data->texts.view(text) == filter->view();
        };
        for (std::uint32_t const offset : m_data->shapes.listed(*simple.shape)) {
            if (keeps(name, m_data->names.text(entry[offset].name)) &&
                (role == nullptr || entry[offset].role != 0) && keeps(role, entry[offset].role)) {
                found.push_back(valueHandle(simple.firstValue + offset));
            }
        }
    }
    // A collection property has no role.
    if (place.kind == Kind::Element && role == nullptr) {
        appendCollections(place.number, found, name);
    }
    return true;
}

void Model::appendChildren(ElementNumber first, ElementNumber last, Vex_Handle_Collection& found,
                           Atom cls, I18NString const* role) const {
    for (ElementNumber child = first; child < last; child = m_data->elements[child].end) {
        if (cls != NoAtom && m_data->classOf(child) != cls) {
            continue;
        }
        TextRef const own = role == nullptr ? 0 : m_data->ownText(child, Own::Role);
        if (role == nullptr || (own != 0 && m_data->texts.view(own) == role->view())) {
            found.push_back(elementHandle(child));
        }
    }
}

bool Model::childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                         I18NString const* role) const {
    CallLimits::check();
    Place const place = decode(object);
    if (place.kind == Kind::Value) {
        return true;
    }
    Atom wanted = NoAtom;
    if (name != nullptr) {
        wanted = m_data->names.find(name->view(), m_data->texts);
        if (wanted == NoAtom) {
            return true;
        }
    }
    if (place.kind == Kind::Element) {
        appendChildren(place.number + 1, m_data->elements[place.number].end, found, wanted, role);
        return true;
    }
    // The members of a collection begin with the one that names it.
    Atom const cls = m_data->classOf(place.number);
    ElementNumber const parent = m_data->elements[place.number].parent;
    if (parent != NotFound && (wanted == NoAtom || wanted == cls)) {
        appendChildren(place.number, m_data->elements[parent].end, found, cls, role);
    }
    return true;
}

bool Model::hasChildObjects(VEX_HANDLE object) const {
    Place const place = decode(object);
    switch (place.kind) {
    case Kind::Element:
        return m_data->hasChildren(place.number);
    case Kind::Collection:
        return true;
    case Kind::Value:
        break;
    }
    return false;
}

bool Model::getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                 Vex_Handle_Collection& found) const {
    CallLimits::check();
    Place const place = decode(object);
    Atom const cls = m_data->names.find(tag.view(), m_data->texts);
    if (place.kind != Kind::Element || cls == NoAtom) {
        return true;
    }
    std::span<ElementNumber const> const all = m_data->classes[cls];
    auto const first = std::upper_bound(all.begin(), all.end(), place.number);
    auto const last = std::lower_bound(first, all.end(), m_data->elements[place.number].end);
    VEX_HANDLE* target = found.extend(static_cast<std::size_t>(last - first));
    for (auto element = first; element != last; ++element, ++target) {
        *target = elementHandle(*element);
    }
    return true;
}

} // namespace vex
