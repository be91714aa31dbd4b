// The properties of objects: by name, by role, all of them.

#include "host/store/image/Budget.h"
#include "host/store/image/Model.h"
#include "host/store/image/SameText.h"
#include "host/store/image/StoreData.h"

namespace vex {

bool Model::isName(I18NString const& property) {
    return isSameText(property.view(), u"name");
}

Model::SimpleProperties Model::findSimpleProperties(DecodedHandle decoded) const {
    if (decoded.kind == Kind::Element) {
        return {&m_data->shapeOf(decoded.number), m_data->elements[decoded.number].firstValue};
    }
    PropertyOwner const* const owner =
        decoded.kind == Kind::Value ? m_data->findPropertyOwner(decoded.number) : nullptr;
    return owner == nullptr ? SimpleProperties{nullptr, 0}
                            : SimpleProperties{&m_data->shapes[owner->shape], owner->firstValue};
}

bool Model::hasProperties(VEX_HANDLE object) const {
    DecodedHandle const decoded = decode(object);
    if (decoded.kind == Kind::Element && m_data->hasChildren(decoded.number)) {
        return true;
    }
    SimpleProperties const simple = findSimpleProperties(decoded);
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
    if (m_data->classes[cls].empty()) {
        return {};
    }
    // Step by step among the children and among the elements of the class: whichever are
    // fewer end it.
    ElementNumber child = element + 1;
    for (ElementNumber const each : m_data->below(element, cls)) {
        if (m_data->elements[each].parent == element) {
            return collectionHandle(each);
        }
        if (child >= m_data->elements[element].end) {
            break;
        }
        if (m_data->firstOfClass[child] && m_data->classOf(child) == cls) {
            return collectionHandle(child);
        }
        child = m_data->elements[child].end;
    }
    return {};
}

VEX_HANDLE Model::GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                    I18NLocale const* locale) const {
    Budget::charge();
    DecodedHandle const decoded = decode(object);
    if (decoded.kind == Kind::Element && isName(name)) {
        ElementRecord const& element = m_data->elements[decoded.number];
        Shape const& shape = m_data->shapes[element.shape];
        std::span<std::uint32_t const> const named = m_data->shapes.namedName(shape);
        if (!named.empty()) {
            return simpleProperty({&shape, element.firstValue},
                                  m_data->chooseOffset(shape, named, locale));
        }
    }
    return findProperty(decoded, name, locale);
}

VEX_HANDLE Model::findProperty(DecodedHandle decoded, I18NString const& name,
                               I18NLocale const* locale) const {
    Atom const atom = m_data->names.find(name.view(), m_data->texts);
    if (atom == NoAtom) {
        return {};
    }
    if (decoded.kind == Kind::Element && atom == m_data->idName) {
        // The id is an element's first value.
        return m_data->shapeOf(decoded.number).has(Own::Id)
                   ? valueHandle(m_data->elements[decoded.number].firstValue)
                   : VEX_HANDLE();
    }
    SimpleProperties const simple = findSimpleProperties(decoded);
    if (simple.shape != nullptr) {
        std::span<std::uint32_t const> const named = m_data->shapes.named(*simple.shape, atom);
        if (!named.empty()) {
            return simpleProperty(simple, m_data->chooseOffset(*simple.shape, named, locale));
        }
    }
    return decoded.kind == Kind::Element ? findCollection(decoded.number, atom) : VEX_HANDLE();
}

VEX_HANDLE Model::GetPropertyByRole(VEX_HANDLE object, I18NString const& role,
                                    I18NLocale const* locale) const {
    Budget::charge();
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
    Budget::charge();
    DecodedHandle const decoded = decode(object);
    SimpleProperties const simple = findSimpleProperties(decoded);
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
    if (decoded.kind == Kind::Element && role == nullptr) {
        appendCollections(decoded.number, found, name);
    }
    return true;
}

} // namespace vex
