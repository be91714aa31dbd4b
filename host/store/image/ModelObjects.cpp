// What objects say of themselves, and how they stand to each other.

#include "host/store/image/Budget.h"
#include "host/store/image/Model.h"
#include "host/store/image/StoreData.h"

#include <algorithm>

namespace vex {

bool Model::IsObject(VEX_HANDLE object) const {
    return Holds(object);
}

bool Model::giveText(TextRef text, I18NString& target) const {
    if (text == 0) {
        return false;
    }
    m_data->texts.give(text, target);
    return true;
}

bool Model::GetId(VEX_HANDLE object, I18NString& id) const {
    DecodedHandle const decoded = decode(object);
    return decoded.kind == Kind::Element && giveText(m_data->ownText(decoded.number, Own::Id), id);
}

bool Model::GetName(VEX_HANDLE object, I18NString& name) const {
    DecodedHandle const decoded = decode(object);
    Atom const atom = decoded.kind == Kind::Value ? m_data->entryOf(decoded.number).name
                                                  : m_data->classOf(decoded.number);
    return giveText(m_data->names.text(atom), name);
}

bool Model::GetClass(VEX_HANDLE object, I18NString& name) const {
    DecodedHandle const decoded = decode(object);
    return decoded.kind == Kind::Element &&
           giveText(m_data->ownText(decoded.number, Own::Class), name);
}

bool Model::GetRole(VEX_HANDLE object, I18NString& role) const {
    DecodedHandle const decoded = decode(object);
    switch (decoded.kind) {
    case Kind::Element:
        return giveText(m_data->ownText(decoded.number, Own::Role), role);
    case Kind::Value:
        return giveText(m_data->entryOf(decoded.number).role, role);
    case Kind::Collection:
        break;
    }
    return false;
}

bool Model::GetValue(VEX_HANDLE object, I18NString& value, [[maybe_unused]] bool resolve) const {
    DecodedHandle const decoded = decode(object);
    switch (decoded.kind) {
    case Kind::Value:
        return giveText(m_data->values[decoded.number], value);
    case Kind::Element:
        return giveText(m_data->ownText(decoded.number, Own::Text), value);
    case Kind::Collection:
        break;
    }
    return false;
}

I18NLocale const* Model::GetLocale(VEX_HANDLE object) const {
    DecodedHandle const decoded = decode(object);
    if (decoded.kind == Kind::Element) {
        return &m_data->defaultLocale;
    }
    std::uint32_t const number =
        decoded.kind == Kind::Value ? m_data->entryOf(decoded.number).locale : 0;
    return number == 0 ? nullptr : &m_data->usedLocales[number];
}

VEX_HANDLE Model::GetParent(VEX_HANDLE object) const {
    DecodedHandle const decoded = decode(object);
    if (decoded.kind == Kind::Value) {
        ValueOwner const owner = m_data->ownerOf(decoded.number);
        return owner.isElement ? elementHandle(owner.number) : valueHandle(owner.number);
    }
    ElementNumber const parent = m_data->elements[decoded.number].parent;
    return parent == NotFound ? VEX_HANDLE() : elementHandle(parent);
}

bool Model::hasRole(ElementNumber element, I18NString const& role) const {
    TextRef const own = m_data->ownText(element, Own::Role);
    return own != 0 && m_data->texts.view(own) == role.view();
}

void Model::appendChildren(ElementNumber element, Vex_Handle_Collection& found,
                           I18NString const* role) const {
    ElementNumber const last = m_data->elements[element].end;
    for (ElementNumber child = element + 1; child < last; child = m_data->elements[child].end) {
        if (role == nullptr || hasRole(child, *role)) {
            found.push_back(elementHandle(child));
        }
    }
}

// Among the children or among the elements of the class, whichever are fewer: who asks for
// each of many classes in turn goes through neither all over again.
void Model::appendChildrenOf(ElementNumber element, Atom cls, Vex_Handle_Collection& found,
                             I18NString const* role) const {
    auto const append = [&](ElementNumber child) {
        if (role == nullptr || hasRole(child, *role)) {
            found.push_back(elementHandle(child));
        }
    };
    std::span<ElementNumber const> const ofClass = m_data->below(element, cls);
    if (m_data->hasFewChildren(element, ofClass.size())) {
        ElementNumber const last = m_data->elements[element].end;
        for (ElementNumber child = element + 1; child < last; child = m_data->elements[child].end) {
            if (m_data->classOf(child) == cls) {
                append(child);
            }
        }
        return;
    }
    for (ElementNumber const each : ofClass) {
        if (m_data->elements[each].parent == element) {
            append(each);
        }
    }
}

bool Model::childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                         I18NString const* role) const {
    Budget::charge();
    DecodedHandle const decoded = decode(object);
    if (decoded.kind == Kind::Value) {
        return true;
    }
    Atom wanted = NoAtom;
    if (name != nullptr) {
        wanted = m_data->names.find(name->view(), m_data->texts);
        if (wanted == NoAtom) {
            return true;
        }
    }
    if (decoded.kind == Kind::Element) {
        if (wanted == NoAtom) {
            appendChildren(decoded.number, found, role);
        } else {
            appendChildrenOf(decoded.number, wanted, found, role);
        }
        return true;
    }
    // A collection is named by its first member.
    Atom const cls = m_data->classOf(decoded.number);
    ElementNumber const parent = m_data->elements[decoded.number].parent;
    if (parent != NotFound && (wanted == NoAtom || wanted == cls)) {
        appendChildrenOf(parent, cls, found, role);
    }
    return true;
}

bool Model::hasChildObjects(VEX_HANDLE object) const {
    DecodedHandle const decoded = decode(object);
    switch (decoded.kind) {
    case Kind::Element:
        return m_data->hasChildren(decoded.number);
    case Kind::Collection:
        return true;
    case Kind::Value:
        break;
    }
    return false;
}

bool Model::getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                 Vex_Handle_Collection& found) const {
    Budget::charge();
    DecodedHandle const decoded = decode(object);
    Atom const cls = m_data->names.find(tag.view(), m_data->texts);
    if (decoded.kind == Kind::Element && cls != NoAtom) {
        appendElementsOf(decoded.number, cls, found);
    }
    return true;
}

void Model::appendElementsOf(ElementNumber element, Atom cls, Vex_Handle_Collection& found) const {
    std::span<ElementNumber const> const all = m_data->below(element, cls);
    VEX_HANDLE* target = found.extend(all.size());
    for (ElementNumber const each : all) {
        *target = elementHandle(each);
        ++target;
    }
}

} // namespace vex
