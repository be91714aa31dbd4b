#include "tests/naive/PlainModel.h"

#include <algorithm>

namespace naive {

namespace {

const Text nameProperty = u"name";

/// The element and everything below it, in document order.
void collectElements(Handle element, Handles& all) {
    all.push_back(element);
    for (const auto& child : element->children) {
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

Handle findSimpleProperty(Handle owner, const Text& name, const Text& locale,
                          const Text& defaultLocale) {
    Handles values;
    for (const auto& property : owner->properties) {
        if (property->cls == name) {
            values.push_back(property.get());
        }
    }
    const auto valueFor = [&values](const Text& wanted) {
        const auto found = std::find_if(values.begin(), values.end(),
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

Text PlainModel::negotiatedLocale(const Text& asked) const {
    Texts entries;
    for (const auto& property : m_root->properties) {
        if (property->cls == u"locales") {
            for (const auto& entry : property->properties) {
                entries.push_back(entry->value.value_or(Text()));
            }
        }
    }
    const Text canonical = asked.empty() ? Text() : canonicalLocale(asked);
    for (Text wanted = canonical; !wanted.empty(); wanted = parentLocale(wanted)) {
        if (std::find(entries.begin(), entries.end(), wanted) != entries.end()) {
            return canonical;
        }
    }
    return m_defaultLocale;
}

Handle PlainModel::objectWithId(const Text& id) const {
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
    const auto nameOf = [this](Handle named) {
        Text name;
        readProperty(named, nameProperty, name, m_defaultLocale);
        return name;
    };
    if (element->cls == u"namespace") {
        return Texts{nameOf(element)};
    }
    const Handle enclosing = enclosingNamespace(element);
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

Handle PlainModel::objectWithReference(const Text& reference) const {
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
    const bool collection = object->kind == Kind::CollectionProperty;
    for (const auto& child : collection ? object->parent->children : object->children) {
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
    for (const auto& property : object->properties) {
        const bool hasUnlocalised =
            std::any_of(object->properties.begin(), object->properties.end(), [&](const auto& p) {
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
    for (const auto& collection : object->collections) {
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

Handles PlainModel::elementsByTagName(Handle object, const Text& tag) const {
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

Handle PlainModel::propertyByName(Handle object, const Text& name, const Text& locale) const {
    if (!object) {
        return nullptr;
    }
    if (name == u"ID" && object->kind == Kind::Element) {
        return object->idProperty.get();
    }
    const bool isSimple = std::any_of(object->properties.begin(), object->properties.end(),
                                      [&](const auto& property) { return property->cls == name; });
    if (isSimple) {
        return findSimpleProperty(object, name, locale, m_defaultLocale);
    }
    for (const auto& collection : object->collections) {
        if (collection->cls == name) {
            return collection.get();
        }
    }
    return nullptr;
}

void PlainModel::readProperty(Handle object, const Text& name, Text& value,
                              const Text& locale) const {
    if (const Handle property = propertyByName(object, name, locale)) {
        getValue(property, value);
    }
}

} // namespace naive
