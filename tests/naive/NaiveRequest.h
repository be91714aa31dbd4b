#pragma once

#include "tests/naive/Text.h"

#include <map>

namespace naive {

/// What a request document asks for, and the questions that are asked of it for one class.
class NaiveRequest {
public:
    /// Throws std::runtime_error when the text is not well-formed.
    explicit NaiveRequest(std::string const& document);

    bool hasMetadata() const { return m_hasMetadata; }
    Text option(Text const& name) const;
    Texts const& attributeRequests() const { return m_attributeRequests; }

    Texts propertiesForClass(Text const& className) const;
    /// The last two are always "shortcut" and "namespace".
    Texts collectionsForClass(Text const& className) const;
    std::map<Text, Text> constraintsForClass(Text const& className) const;

    /// Called by the reader for each attribute, in the order of the document's attribute map.
    void takeAttribute(Text const& element, Text const& name, Text const& value);
    void takeElement(Text const& element);

private:
    void takeConstraint(Text const& text);

    bool m_hasMetadata = false;
    std::map<Text, Text> m_options;
    Texts m_attributeRequests;
    Texts m_collectionRequests;
    std::map<Text, Text> m_constraints;
};

/// True when "*" is all that was asked for, beside the two names that are always appended.
bool asksForAllCollections(Texts const& collections);

} // namespace naive
