#pragma once

#include "tests/naive/Text.h"

#include <map>

namespace naive {

/// What a request document asks for, and the questions that are asked of it for one class.
class NaiveRequest {
public:
    /// Throws std::runtime_error when the text is not well-formed.
    explicit NaiveRequest(const std::string& document);

    bool hasMetadata() const { return m_hasMetadata; }
    Text option(const Text& name) const;
    const Texts& attributeRequests() const { return m_attributeRequests; }

    Texts propertiesForClass(const Text& className) const;
    /// The last two are always "shortcut" and "namespace".
    Texts collectionsForClass(const Text& className) const;
    std::map<Text, Text> constraintsForClass(const Text& className) const;

    /// Called by the reader for each attribute, in the order of the document's attribute map.
    void takeAttribute(const Text& element, const Text& name, const Text& value);
    void takeElement(const Text& element);

private:
    void takeConstraint(const Text& text);

    bool m_hasMetadata = false;
    std::map<Text, Text> m_options;
    Texts m_attributeRequests;
    Texts m_collectionRequests;
    std::map<Text, Text> m_constraints;
};

/// True when "*" is all that was asked for, beside the two names that are always appended.
bool asksForAllCollections(const Texts& collections);

} // namespace naive
