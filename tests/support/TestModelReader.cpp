#include "tests/support/TestModelReader.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_Element.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_Reader.h"

#include <algorithm>
#include <map>

namespace {

using Nodes = std::vector<std::unique_ptr<TestNode>>;

TestNode* add(Nodes& nodes, TestNode::Kind kind, I18NString const& name, TestNode* parent) {
    nodes.push_back(std::make_unique<TestNode>());
    TestNode* const node = nodes.back().get();
    node->kind = kind;
    node->name = name;
    node->parent = parent;
    node->number = static_cast<std::uint32_t>(nodes.size() - 1);
    return node;
}

std::optional<I18NString> trimmed(I18NString const& text) {
    constexpr std::u16string_view space = u" \t\r\n";
    std::u16string_view const view = text.view();
    std::size_t const first = view.find_first_not_of(space);
    if (first == std::u16string_view::npos) {
        return std::nullopt;
    }
    return I18NString(view.substr(first, view.find_last_not_of(space) - first + 1));
}

std::optional<I18NString> ownText(KRLIDOM_Node const& element) {
    I18NString text;
    for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        if (child.getNodeType() == KRLIDOM_Node::TextNode) {
            text += child.getNodeValue();
        }
    }
    return trimmed(text);
}

std::map<I18NString, I18NString> attributesOf(KRLIDOM_Node const& element) {
    std::map<I18NString, I18NString> attributes;
    KRLIDOM_NamedNodeMap const map = element.getAttributes();
    for (std::size_t i = 0; i < map.getLength(); ++i) {
        attributes[map.item(i).getName()] = map.item(i).getValue();
    }
    return attributes;
}

void readProperty(Nodes& nodes, KRLIDOM_Node const& element, TestNode* owner) {
    std::map<I18NString, I18NString> attributes = attributesOf(element);
    TestNode* const value = add(nodes, TestNode::Kind::Value, attributes["name"], owner);
    value->value = ownText(element);
    value->role = trimmed(attributes["role"]);
    if (!attributes["locale"].empty()) {
        value->locale = I18NLocale(attributes["locale"]);
    }
    owner->properties.push_back(value);
    for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        if (child.getNodeName() == "property") {
            readProperty(nodes, child, value);
        }
    }
}

void readLocales(Nodes& nodes, KRLIDOM_Node const& element, TestNode* model) {
    TestNode* const locales = add(nodes, TestNode::Kind::Value, element.getNodeName(), model);
    model->properties.push_back(locales);
    for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        if (child.getNodeType() == KRLIDOM_Node::ElementNode) {
            TestNode* const entry = add(nodes, TestNode::Kind::Value, child.getNodeName(), locales);
            entry->value = ownText(child);
            locales->properties.push_back(entry);
        }
    }
}

void readAttributes(Nodes& nodes, KRLIDOM_Node const& element, TestNode* object) {
    for (auto const& [name, text] : attributesOf(element)) {
        if (name == "id") {
            object->id = text;
            object->idProperty = add(nodes, TestNode::Kind::Value, "ID", object);
            object->idProperty->value = text;
        } else if (name == "role") {
            object->role = text;
        } else if (name == "class") {
            object->ownClass = text;
        } else {
            TestNode* const value = add(nodes, TestNode::Kind::Value, name, object);
            value->value = trimmed(text);
            object->properties.push_back(value);
        }
    }
}

void joinCollection(Nodes& nodes, TestNode* owner, TestNode* member) {
    auto const found = std::find_if(owner->collections.begin(), owner->collections.end(),
                                    [&](TestNode* node) { return node->name == member->name; });
    TestNode* const collection = found != owner->collections.end()
                                     ? *found
                                     : add(nodes, TestNode::Kind::Collection, member->name, owner);
    if (found == owner->collections.end()) {
        owner->collections.push_back(collection);
    }
    collection->children.push_back(member);
}

void readElement(Nodes& nodes, KRLIDOM_Node const& element, TestNode* parent) {
    TestNode* const object = add(nodes, TestNode::Kind::Element, element.getNodeName(), parent);
    object->value = ownText(element);
    if (parent != nullptr) {
        parent->children.push_back(object);
        joinCollection(nodes, parent, object);
    }
    readAttributes(nodes, element, object);
    for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        if (child.getNodeName() == "property") {
            readProperty(nodes, child, object);
        } else if (child.getNodeName() == "locales") {
            readLocales(nodes, child, object);
        } else if (child.getNodeType() == KRLIDOM_Node::ElementNode) {
            readElement(nodes, child, object);
        }
    }
}

} // namespace

std::vector<std::unique_ptr<TestNode>> readTestModel(std::string_view xml) {
    KRLIDOM_ReadLimits limits;
    limits.bytes = std::size_t{1} << 26U;
    limits.depth = 2'000; // more than a model document may: hosts of others have no such limit
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(xml, "test model", limits);
    Nodes nodes;
    readElement(nodes, document.document().getDocumentElement(), nullptr);
    return nodes;
}
