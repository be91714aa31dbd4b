#include "tests/naive/NaiveRequest.h"

#include "tests/naive/XmlTree.h"

#include <algorithm>

namespace naive {

namespace {

// An element's attributes come in the order of their names, as a document has them.
void visit(const XmlElement& element, NaiveRequest& request) {
    request.takeElement(element.name);
    auto attributes = element.attributes;
    std::sort(attributes.begin(), attributes.end());
    for (const auto& [name, value] : attributes) {
        request.takeAttribute(element.name, name, value);
    }
    for (const auto& child : element.children) {
        visit(*child, request);
    }
}

void appendWithPrefix(const Texts& source, const Text& prefix, Texts& result) {
    Texts found;
    for (const Text& entry : source) {
        if (!startsWith(entry, prefix)) {
            continue;
        }
        const Text rest = substring(entry, static_cast<int>(prefix.size()), -1);
        const bool wildcard = startsWith(rest, u"*");
        if (wildcard) {
            found.clear();
        }
        found.push_back(rest);
        if (wildcard) {
            break;
        }
    }
    result.insert(result.end(), found.begin(), found.end());
}

void addConstraintsWithPrefix(const std::map<Text, Text>& source, const Text& prefix,
                              std::map<Text, Text>& result) {
    std::map<Text, Text> found;
    for (const auto& [key, value] : source) {
        if (!startsWith(key, prefix)) {
            continue;
        }
        const Text rest = substring(key, static_cast<int>(prefix.size()) + 2, -1);
        const bool wildcard = startsWith(rest, u"*");
        if (wildcard) {
            found.clear();
        }
        found.insert({rest, value});
        if (wildcard) {
            break;
        }
    }
    result.insert(found.begin(), found.end());
}

} // namespace

NaiveRequest::NaiveRequest(const std::string& document) {
    visit(*parseXml(document), *this);
}

void NaiveRequest::takeElement(const Text& element) {
    if (element == u"Metadata") {
        m_hasMetadata = true;
    }
}

void NaiveRequest::takeAttribute(const Text& element, const Text& name, const Text& value) {
    if (element == u"Metadata") {
        m_options.insert({name, value});
    } else if (element == u"Functions") {
        m_options.insert({u"function", u"1"});
        m_options.insert({name, value});
    } else if (element == u"Property") {
        Texts& list = findText(value, u"@") >= 0 ? m_attributeRequests : m_collectionRequests;
        list.push_back(value);
    } else if (element == u"Constraint") {
        takeConstraint(value);
    }
}

void NaiveRequest::takeConstraint(const Text& text) {
    const int equals = findText(text, u"=");
    const Text key = substring(text, 0, equals);
    const Text rest = substring(text, equals + 1, -1);
    const int bracket = findText(rest, u"]");
    m_constraints.insert({key, substring(rest, 1, bracket - 1)});
}

Text NaiveRequest::option(const Text& name) const {
    const auto found = m_options.find(name);
    return found == m_options.end() ? Text() : found->second;
}

Texts NaiveRequest::propertiesForClass(const Text& className) const {
    Texts result;
    for (const Text& prefix : {Text(u"./@"), Text(u"*/@"), className + u"/@"}) {
        appendWithPrefix(m_attributeRequests, prefix, result);
    }
    return result;
}

Texts NaiveRequest::collectionsForClass(const Text& className) const {
    Texts result;
    for (const Text& prefix : {Text(u"./"), Text(u"*/"), className + u"/"}) {
        appendWithPrefix(m_collectionRequests, prefix, result);
    }
    result.push_back(u"shortcut");
    result.push_back(u"namespace");
    return result;
}

std::map<Text, Text> NaiveRequest::constraintsForClass(const Text& className) const {
    std::map<Text, Text> result;
    for (const Text& prefix : {Text(u"."), Text(u"*"), className}) {
        addConstraintsWithPrefix(m_constraints, prefix, result);
    }
    return result;
}

bool asksForAllCollections(const Texts& collections) {
    return collections.size() == 3 && collections.front() == u"*";
}

} // namespace naive
