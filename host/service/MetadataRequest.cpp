#include "host/service/MetadataRequest.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_Element.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "resources.h"

#include <cstdlib>
#include <string>

namespace vex {

namespace {

// Elements of a request document, and options.
constexpr char const* metadataTag = "Metadata";
constexpr char const* functionsTag = "Functions";
constexpr char const* propertyTag = "Property";
constexpr char const* constraintTag = "Constraint";
constexpr char const* depthOption = "Depth";
constexpr char const* startOption = "start_at";
constexpr char const* pathOption = "start_atPath"; // wins over the other one
constexpr char const* referenceOption = "start_atRef";
constexpr char const* functionOption = "function";

constexpr char const* globalPrefix = "/@";
constexpr char const* everyClass = "*/";
constexpr char const* startObject = "./@";
constexpr int globalPrefixLength = 2;

I18NString const& viewOption() {
    return resources::getString(resources::SecurityView);
}

bool has(I18NString const& text, char16_t character) {
    return text.find(character) >= 0;
}

/// Goes through a document and takes what it asks for.
class RequestReader {
public:
    MetadataRequest read(KRLIDOM_Document const& document) {
        if (!document.isNull()) {
            readElement(document.getDocumentElement());
        }
        m_request.start = takeOption(startOption);
        m_request.reference = takeOption(referenceOption);
        m_request.depth = std::strtol(takeOption(depthOption).c_str(), nullptr, 10);
        m_request.view = takeOption(viewOption());
        m_request.functions = !takeOption(functionOption).empty();
        return std::move(m_request);
    }

private:
    void readElement(KRLIDOM_Node const& element) {
        I18NString const tag = element.getNodeName();
        KRLIDOM_NamedNodeMap const attributes = element.getAttributes();
        for (std::size_t index = 0; index < attributes.getLength(); ++index) {
            KRLIDOM_Attr const attribute = attributes.item(index);
            readAttribute(tag, attribute.getName(), attribute.getValue());
        }
        for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
             child = child.getNextSibling()) {
            if (child.getNodeType() == KRLIDOM_Node::ElementNode) {
                readElement(child);
            }
        }
    }

    void readAttribute(I18NString const& tag, I18NString const& name, I18NString const& value) {
        if (tag == functionsTag) {
            addOption(functionOption, "1"); // an element without attributes says nothing
        }
        if (tag == functionsTag || tag == metadataTag) {
            addOption(name, value);
        } else if (tag == propertyTag) {
            readEntry(value);
        } else if (tag == constraintTag) {
            readConstraint(value);
        }
    }

    void readEntry(I18NString const& entry) {
        if (entry.find(globalPrefix) == 0) {
            m_request.globals.push_back(entry.substring(globalPrefixLength));
        } else {
            (has(entry, u'@') ? m_request.properties : m_request.collections).push_back(entry);
        }
    }

    void readConstraint(I18NString const& text) {
        int const equals = text.find(u'=');
        int const value = equals + 2; // whichever character opens it
        int const end = text.find(u']', equals + 1);
        if (equals < 0 || end < value) {
            m_request.oddConstraints.push_back(text);
        } else {
            m_request.constraints.push_back(
                {text.substring(0, equals), text.substring(value, end - value)});
        }
    }

    void addOption(I18NString const& name, I18NString const& value) {
        m_request.otherOptions.try_emplace(name, value);
    }

    I18NString takeOption(I18NString const& name) {
        auto const option = m_request.otherOptions.extract(name);
        return option.empty() ? I18NString() : option.mapped();
    }

    MetadataRequest m_request;
};

void setOption(KRLIDOM_Element const& metadata, I18NString const& name, I18NString const& value) {
    if (!value.empty()) {
        metadata.setAttribute(name, value);
    }
}

void addEntry(KRLIDOM_Element const& metadata, char const* tag, I18NString const& name,
              I18NString const& value) {
    KRLIDOM_Element const entry = metadata.getOwnerDocument().createElement(tag);
    entry.setAttribute(name, value);
    metadata.appendChild(entry);
}

} // namespace

void MetadataRequest::addProperty(I18NString const& text) {
    properties.push_back(has(text, u'@') ? text : I18NString(everyClass) + "@" + text);
}

void MetadataRequest::addCollection(I18NString const& text) {
    collections.push_back(has(text, u'/') ? text : I18NString(everyClass) + text);
}

void MetadataRequest::addConstraint(I18NString const& property, I18NString value) {
    constraints.push_back(
        {has(property, u'@') ? property : I18NString(startObject) + property, std::move(value)});
}

I18NString const& MetadataRequest::startText() const {
    if (!reference.empty()) {
        return reference;
    }
    auto const path = otherOptions.find(pathOption);
    return path == otherOptions.end() || path->second.empty() ? start : path->second;
}

void MetadataRequest::setStartText(I18NString const& text) {
    if (!reference.empty()) {
        reference = text;
        return;
    }
    otherOptions.erase(pathOption);
    start = text;
}

KRLIDOM_OwnedDocument MetadataRequest::toDocument() const {
    KRLIDOM_OwnedDocument document(metadataTag);
    KRLIDOM_Element const metadata = document.document().getDocumentElement();
    if (depth != 0) {
        metadata.setAttribute(depthOption, std::to_string(depth).c_str());
    }
    setOption(metadata, startOption, start);
    setOption(metadata, referenceOption, reference);
    setOption(metadata, viewOption(), view);
    for (auto const& [name, value] : otherOptions) {
        metadata.setAttribute(name, value);
    }
    if (functions) {
        addEntry(metadata, functionsTag, functionOption, "1");
    }
    constexpr char const* anyName = "name";
    for (I18NString const& global : globals) {
        addEntry(metadata, propertyTag, anyName, I18NString(globalPrefix) + global);
    }
    for (auto const* const list : {&properties, &collections}) {
        for (I18NString const& entry : *list) {
            addEntry(metadata, propertyTag, anyName, entry);
        }
    }
    for (Constraint const& constraint : constraints) {
        addEntry(metadata, constraintTag, anyName,
                 constraint.property + "=[" + constraint.value + "]");
    }
    for (I18NString const& text : oddConstraints) {
        addEntry(metadata, constraintTag, anyName, text);
    }
    return document;
}

MetadataRequest MetadataRequest::read(KRLIDOM_Document const& document) {
    return RequestReader().read(document);
}

} // namespace vex
