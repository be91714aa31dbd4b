#include "tests/naive/NaiveRequest.h"

#include "tests/naive/XmlTree.h"

#include <algorithm>

namespace naive {

namespace {

// An element's attributes come in the order of their names, as a document has them.
void visit(XmlElement const& element, NaiveRequest& request) {
    request.takeElement(element.name);
    auto attributes = element.attributes;
    std::sort(attributes.begin(), attributes.end());
    for (auto const& [name, value] : attributes) {
        request.takeAttribute(element.name, name, value);
    }
    for (auto const& child : element.children) {
        visit(*child, request);
    }
}

void appendWithPrefix(Texts const& source, Text const& prefix, Texts& result) {
    Texts found;
    for (Text const& entry : source) {
        if (!startsWith(entry, prefix)) {
            continue;
        }
        Text const rest = substring(entry, static_cast<int>(prefix.size()), -1);
        bool const wildcard = startsWith(rest, u"*");
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

void addConstraintsWithPrefix(std::map<Text, Text> const& source, Text const& prefix,
                              std::map<Text, Text>& result) {
    std::map<Text, Text> found;
    for (auto const& [key, value] : source) {
        if (!startsWith(key, prefix)) {
            continue;
        }
        Text const rest = substring(key, static_cast<int>(prefix.size()) + 2, -1);
        bool const wildcard = startsWith(rest, u"*");
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

NaiveRequest::NaiveRequest(std::string const& document) {
    visit(*parseXml(document), *this);
}

void NaiveRequest::takeElement(Text const& element) {
    if (element == u"Metadata") {
        m_hasMetadata = true;
    }
}

void NaiveRequest::takeAttribute(Text const& element, Text const& name, Text const& value) {
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

void NaiveRequest::takeConstraint(Text const& text) {
    int const equals = findText(text, u"=");
    Text const key = substring(text, 0, equals);
    Text const rest = substring(text, equals + 1, -1);
    int const bracket = findText(rest, u"]");
    m_constraints.insert({key, substring(rest, 1, bracket - 1)});
}

Text NaiveRequest::option(Text const& name) const {
    auto const found = m_options.find(name);
    return found == m_options.end() ? Text() : found->second;
}

Texts NaiveRequest::propertiesForClass(Text const& className) const {
    Texts result;
    for (Text const& prefix : {Text(u"./@"), Text(u"*/@"), className + u"/@"}) {
        appendWithPrefix(m_attributeRequests, prefix, result);
    }
    return result;
}

Texts NaiveRequest::collectionsForClass(Text const& className) const {
    Texts result;
    for (Text const& prefix : {Text(u"./"), Text(u"*/"), className + u"/"}) {
        appendWithPrefix(m_collectionRequests, prefix, result);
    }
    result.push_back(u"shortcut");
    result.push_back(u"namespace");
    return result;
}

std::map<Text, Text> NaiveRequest::constraintsForClass(Text const& className) const {
    std::map<Text, Text> result;
    for (Text const& prefix : {Text(u"."), Text(u"*"), className}) {
        addConstraintsWithPrefix(m_constraints, prefix, result);
    }
    return result;
}

bool asksForAllCollections(Texts const& collections) {
    return collections.size() == 3 && collections.front() == u"*";
}

} // namespace naive
