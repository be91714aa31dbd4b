#pragma once

#include "tests/naive/Text.h"
#include "tests/naive/XmlTree.h"

#include <memory>
#include <optional>

namespace naive {

enum class Kind { Element, SimpleProperty, CollectionProperty };

/// An object of the model: an element, or one of an element's properties.
struct Node {
    Kind kind = Kind::Element;
    Text cls; ///< an element's class, a property's name
    std::optional<Text> id;
    std::optional<Text> role;
    std::optional<Text> ownClass;
    std::optional<Text> value;
    Text locale; ///< of a property value; "" without one
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> properties;  ///< simple ones, each value by itself
    std::vector<std::unique_ptr<Node>> children;    ///< elements
    std::vector<std::unique_ptr<Node>> collections; ///< one for each class among the children
    std::unique_ptr<Node> idProperty;
};

/// A model object, or null.
using Handle = Node const*;
using Handles = std::vector<Handle>;

/// Reads the properties of an XML element: the attributes but `excluded`, then the `property`
/// elements.
void readProperties(XmlElement const& from, Texts const& excluded, Node& owner);

/// A locale's own value, else its nearest parent's, else the unlocalised one, else null. The
/// locale "" stands for none.
Handle findSimpleProperty(Handle owner, Text const& name, Text const& locale,
                          Text const& defaultLocale);

/// The model as a tree, every question answered by looking through it. Every operation is defined
/// on a null handle. The out-argument of an operation that gives false stays as it was.
class PlainModel {
public:
    explicit PlainModel(std::string const& document);

    Handle root() const { return m_root.get(); }
    Text const& defaultLocale() const { return m_defaultLocale; }

    /// The asked locale when it or a parent of it is among the model's, else the default locale.
    Text negotiatedLocale(Text const& asked) const;

    Handle objectWithId(Text const& id) const;
    Handle objectWithReference(Text const& reference) const;
    std::optional<Texts> referenceOf(Handle element) const;

    bool getId(Handle object, Text& id) const;
    bool getName(Handle object, Text& name) const;
    bool getValue(Handle object, Text& value) const;
    Handle getParent(Handle object) const;
    Handles childObjects(Handle object) const;
    Handles properties(Handle object) const;
    bool hasChildObjects(Handle object) const;
    bool hasProperties(Handle object) const;
    Handles elementsByTagName(Handle object, Text const& tag) const;
    Handle propertyByName(Handle object, Text const& name, Text const& locale) const;

    /// Leaves `value` as it was when the object has no such property or the property no value.
    void readProperty(Handle object, Text const& name, Text& value, Text const& locale) const;

private:
    std::unique_ptr<Node> m_root;
    Text m_defaultLocale;
};

} // namespace naive
