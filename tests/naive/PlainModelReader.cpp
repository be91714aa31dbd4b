#include "tests/naive/PlainModel.h"

#include <algorithm>

namespace naive {

namespace {

bool isOneOf(Text const& name, Texts const& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::optional<Text> unlessEmpty(Text const& text) {
    return text.empty() ? std::optional<Text>() : std::optional<Text>(text);
}

Node& addProperty(Node& owner, Text const& name, std::optional<Text> const& value) {
    auto property = std::make_unique<Node>();
    property->kind = Kind::SimpleProperty;
    property->cls = name;
    property->value = value;
    property->parent = &owner;
    owner.properties.push_back(std::move(property));
    return *owner.properties.back();
}

void readPropertyElement(XmlElement const& from, Node& owner) {
    Text const* name = from.attribute(u"name");
    Node& property = addProperty(owner, name ? *name : Text(), unlessEmpty(trimmed(from.text)));
    if (Text const* locale = from.attribute(u"locale")) {
        property.locale = canonicalLocale(*locale);
    }
    if (Text const* role = from.attribute(u"role")) {
        property.role = *role;
    }
    for (auto const& child : from.children) {
        readPropertyElement(*child, property);
    }
}

void readLocales(XmlElement const& from, Node& owner) {
    Node& locales = addProperty(owner, u"locales", std::nullopt);
    for (auto const& entry : from.children) {
        addProperty(locales, u"locale", unlessEmpty(canonicalLocale(trimmed(entry->text))));
    }
}

void addIdProperty(Node& element) {
    if (element.id) {
        element.idProperty = std::make_unique<Node>();
        element.idProperty->kind = Kind::SimpleProperty;
        element.idProperty->cls = u"ID";
        element.idProperty->value = element.id;
        element.idProperty->parent = &element;
    }
}

void addCollectionProperties(Node& element) {
    Texts seen;
    for (auto const& child : element.children) {
        if (!isOneOf(child->cls, seen)) {
            seen.push_back(child->cls);
            auto collection = std::make_unique<Node>();
            collection->kind = Kind::CollectionProperty;
            collection->cls = child->cls;
            collection->parent = &element;
            element.collections.push_back(std::move(collection));
        }
    }
}

std::unique_ptr<Node> readElement(XmlElement const& from, Node* parent) {
    auto element = std::make_unique<Node>();
    element->cls = from.name;
    element->parent = parent;
    element->value = unlessEmpty(trimmed(from.text));
    if (Text const* id = from.attribute(u"id")) {
        element->id = *id;
    }
    if (Text const* role = from.attribute(u"role")) {
        element->role = *role;
    }
    if (Text const* ownClass = from.attribute(u"class")) {
        element->ownClass = *ownClass;
    }
    readProperties(from, {u"id", u"role", u"class"}, *element);
    for (auto const& child : from.children) {
        if (child->name != u"property" && child->name != u"locales") {
            element->children.push_back(readElement(*child, element.get()));
        }
    }
    addIdProperty(*element);
    addCollectionProperties(*element);
    return element;
}

} // namespace

void readProperties(XmlElement const& from, Texts const& excluded, Node& owner) {
    for (auto const& [name, value] : from.attributes) {
        if (!isOneOf(name, excluded) && !startsWith(name, u"xml:")) {
            bool const isLocale = name == u"defaultLocale" && from.name == u"model";
            addProperty(owner, name, unlessEmpty(isLocale ? canonicalLocale(value) : value));
        }
    }
    for (auto const& child : from.children) {
        if (child->name == u"property") {
            readPropertyElement(*child, owner);
        } else if (child->name == u"locales") {
            readLocales(*child, owner);
        }
    }
}

PlainModel::PlainModel(std::string const& document) {
    std::unique_ptr<XmlElement> const tree = parseXml(document);
    Text const* written = tree->attribute(u"defaultLocale");
    m_defaultLocale = written ? canonicalLocale(*written) : Text(u"en_US");
    m_root = readElement(*tree, nullptr);
}

} // namespace naive
