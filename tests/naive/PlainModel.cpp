#include "tests/naive/PlainModel.h"

#include <algorithm>

namespace naive {

namespace {

Text const nameProperty = u"name";

/// The element and everything below it, in document order.
void collectElements(Handle element, Handles& all) {
    all.push_back(element);
    for (auto const& child : element->children) {
        collectElements(child.get(), all);
    }
}

Handle enclosingNamespace(Handle element) {
    Handle ancestor = element->parent;
    while (ancestor && ancestor->cls != u"namespace") {
        ancestor = ancestor->parent;
    }
    return ancestor;
}

} // namespace

Handle findSimpleProperty(Handle owner, Text const& name, Text const& locale,
                          Text const& defaultLocale) {
    Handles values;
    for (auto const& property : owner->properties) {
        if (property->cls == name) {
            values.push_back(property.get());
        }
    }
    auto const valueFor = [&values](Text const& wanted) {
        auto const found = std::find_if(values.begin(), values.end(),
                                        [&](Handle value) { return value->locale == wanted; });
        return found == values.end() ? nullptr : *found;
    };
    if (locale.empty()) {
        if (Handle unlocalised = valueFor(u"")) {
            return unlocalised;
        }
        if (Handle ofDefault = valueFor(defaultLocale)) {
            return ofDefault;
        }
        return values.empty() ? nullptr : values.front();
    }
    for (Text wanted = locale; !wanted.empty(); wanted = parentLocale(wanted)) {
        if (Handle value = valueFor(wanted)) {
            return value;
        }
    }
    return valueFor(u"");
}

Text PlainModel::negotiatedLocale(Text const& asked) const {
    Texts entries;
    for (auto const& property : m_root->properties) {
        if (property->cls == u"locales") {
            for (auto const& entry : property->properties) {
                entries.push_back(entry->value.value_or(Text()));
            }
        }
    }
    Text const canonical = asked.empty() ? Text() : canonicalLocale(asked);
    for (Text wanted = canonical; !wanted.empty(); wanted = parentLocale(wanted)) {
        if (std::find(entries.begin(), entries.end(), wanted) != entries.end()) {
            return canonical;
        }
    }
    return m_defaultLocale;
}

Handle PlainModel::objectWithId(Text const& id) const {
    Handles all;
    collectElements(root(), all);
    for (Handle element : all) {
        if (element->id && *element->id == id) {
            return element;
        }
    }
    return nullptr;
}

std::optional<Texts> PlainModel::referenceOf(Handle element) const {
    auto const nameOf = [this](Handle named) {
        Text name;
        readProperty(named, nameProperty, name, m_defaultLocale);
        return name;
    };
    if (element->cls == u"namespace") {
        return Texts{nameOf(element)};
    }
    Handle const enclosing = enclosingNamespace(element);
    if (!enclosing) {
        return std::nullopt;
    }
    Texts names = {nameOf(element)};
    for (Handle between = element->parent; between != enclosing; between = between->parent) {
        if (between->cls != u"folder" && between->cls != u"queryItemFolder") {
            names.insert(names.begin(), nameOf(between));
        }
    }
    names.insert(names.begin(), nameOf(enclosing));
    return names;
}

Handle PlainModel::objectWithReference(Text const& reference) const {
    Texts names;
    if (!splitStartPath(reference, names)) {
        return nullptr;
    }
    Handles all;
    collectElements(root(), all);
    for (Handle element : all) {
        if (referenceOf(element) == names) {
            return element;
        }
    }
    return nullptr;
}

bool PlainModel::getId(Handle object, Text& id) const {
    if (!object || !object->id) {
        return false;
    }
    id = *object->id;
    return true;
}

bool PlainModel::getName(Handle object, Text& name) const {
    if (!object) {
        return false;
    }
    name = object->cls;
    return true;
}

bool PlainModel::getValue(Handle object, Text& value) const {
    if (!object || !object->value) {
        return false;
    }
    value = *object->value;
    return true;
}

Handle PlainModel::getParent(Handle object) const {
    return object ? object->parent : nullptr;
}

Handles PlainModel::childObjects(Handle object) const {
    Handles result;
    if (!object) {
        return result;
    }
    bool const collection = object->kind == Kind::CollectionProperty;
    for (auto const& child : collection ? object->parent->children : object->children) {
        if (!collection || child->cls == object->cls) {
            result.push_back(child.get());
        }
    }
    return result;
}

Handles PlainModel::properties(Handle object) const {
    Handles result;
    if (!object) {
        return result;
    }
    Texts listed;
    for (auto const& property : object->properties) {
        bool const hasUnlocalised =
            std::any_of(object->properties.begin(), object->properties.end(), [&](auto const& p) {
                return p->cls == property->cls && p->locale.empty();
            });
        if (property->locale.empty()) {
            result.push_back(property.get());
        } else if (!hasUnlocalised &&
                   std::find(listed.begin(), listed.end(), property->cls) == listed.end()) {
            listed.push_back(property->cls);
            result.push_back(findSimpleProperty(object, property->cls, u"", m_defaultLocale));
        }
    }
    for (auto const& collection : object->collections) {
        result.push_back(collection.get());
    }
    return result;
}

bool PlainModel::hasChildObjects(Handle object) const {
    return !childObjects(object).empty();
}

bool PlainModel::hasProperties(Handle object) const {
    return !properties(object).empty();
}

Handles PlainModel::elementsByTagName(Handle object, Text const& tag) const {
    Handles result;
    if (!object || object->kind != Kind::Element) {
        return result;
    }
    Handles all;
    collectElements(object, all);
    for (Handle element : all) {
        if (element != object && element->cls == tag) {
            result.push_back(element);
        }
    }
    return result;
}

Handle PlainModel::propertyByName(Handle object, Text const& name, Text const& locale) const {
    if (!object) {
        return nullptr;
    }
    if (name == u"ID" && object->kind == Kind::Element) {
        return object->idProperty.get();
    }
    bool const isSimple = std::any_of(object->properties.begin(), object->properties.end(),
                                      [&](auto const& property) { return property->cls == name; });
    if (isSimple) {
        return findSimpleProperty(object, name, locale, m_defaultLocale);
    }
    for (auto const& collection : object->collections) {
        if (collection->cls == name) {
            return collection.get();
        }
    }
    return nullptr;
}

void PlainModel::readProperty(Handle object, Text const& name, Text& value,
                              Text const& locale) const {
    if (Handle const property = propertyByName(object, name, locale)) {
        getValue(property, value);
    }
}

} // namespace naive
