#include "apps/vexma/TreeDrawing.h"

#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_Text.h"
#include "apps/vexma/Console.h"
#include "apps/vexma/TextColours.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace vex {

namespace {

/// An element that is yet to be drawn, and where.
struct Pending {
    KRLIDOM_Node element;
    std::string indent; // of its own line, without its branch
    bool isRoot;
};

std::string shown(I18NString const& text) {
    return printable(text.toUtf8(), false);
}

KRLIDOM_Node firstElementFrom(KRLIDOM_Node node) {
    while (!node.isNull() && node.getNodeType() != KRLIDOM_Node::ElementNode) {
        node = node.getNextSibling();
    }
    return node;
}

/// The attributes but the name, by name: the map has no order of its own.
std::vector<std::pair<I18NString, I18NString>> details(KRLIDOM_Element const& element) {
    std::vector<std::pair<I18NString, I18NString>> found;
    KRLIDOM_NamedNodeMap const attributes = element.getAttributes();
    for (std::size_t index = 0; index < attributes.getLength(); ++index) {
        KRLIDOM_Attr const attribute = attributes.item(index);
        if (attribute.getName() != "name") {
            found.emplace_back(attribute.getName(), attribute.getValue());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

void drawObject(std::ostream& out, KRLIDOM_Element const& element, TextColours const& style) {
    out << style.className << shown(element.getTagName()) << style.end;
    I18NString const name = element.getAttribute("name");
    if (!name.empty()) {
        out << ' ' << style.name << shown(name) << style.end;
    }
    for (auto const& [attribute, value] : details(element)) {
        out << "  " << style.detail << shown(attribute) << '=' << shown(value) << style.end;
    }
    out << '\n';
}

/// Does not recurse: an answer may be as deep as a model.
void drawTree(std::ostream& out, KRLIDOM_Node const& root, TextColours const& style) {
    std::vector<Pending> pending{{root, "", true}};
    while (!pending.empty()) {
        Pending const at = std::move(pending.back());
        pending.pop_back();
        KRLIDOM_Node const next =
            at.isRoot ? KRLIDOM_Node() : firstElementFrom(at.element.getNextSibling());
        std::string below;
        if (!at.isRoot) {
            out << style.detail << at.indent << (next.isNull() ? "└── " : "├── ") << style.end;
            below = at.indent + (next.isNull() ? "    " : "│   ");
        }
        drawObject(out, KRLIDOM_Element(at.element), style);
        if (!next.isNull()) {
            pending.push_back({next, at.indent, false});
        }
        KRLIDOM_Node const child = firstElementFrom(at.element.getFirstChild());
        if (!child.isNull()) {
            pending.push_back({child, below, false});
        }
    }
}

/// A setting: its value attribute, its text, or the texts of its entries.
void drawSetting(std::ostream& out, KRLIDOM_Element const& setting, TextColours const& style) {
    out << style.className << shown(setting.getTagName()) << style.end << ' ' << style.name
        << shown(setting.getAttribute("value"));
    char const* separator = "";
    for (KRLIDOM_Node node = setting.getFirstChild(); !node.isNull();
         node = node.getNextSibling()) {
        bool const isText = node.getNodeType() == KRLIDOM_Node::TextNode;
        out << separator << shown(KRLIDOM_Text(isText ? node : node.getFirstChild()).getData());
        separator = ", ";
    }
    out << style.end << '\n';
}

} // namespace

void drawResponse(std::ostream& out, KRLIDOM_Element const& response, bool colour) {
    TextColours const& style = textColours(colour);
    KRLIDOM_Node const result = firstElementFrom(response.getFirstChild());
    for (KRLIDOM_Node setting = firstElementFrom(result.getNextSibling()); !setting.isNull();
         setting = firstElementFrom(setting.getNextSibling())) {
        drawSetting(out, KRLIDOM_Element(setting), style);
    }
    for (KRLIDOM_Node tree = firstElementFrom(result.getFirstChild()); !tree.isNull();
         tree = firstElementFrom(tree.getNextSibling())) {
        drawTree(out, tree, style);
    }
}

} // namespace vex
