#pragma once

#include "tests/naive/Text.h"

#include <cstddef>
#include <map>
#include <memory>

namespace naive {

/// An element of the response. Attributes are a set: setting one again overwrites it.
struct ResponseElement {
    explicit ResponseElement(Text name);

    Text tag;
    std::map<Text, Text> attributes;
    Text text;
    std::vector<std::unique_ptr<ResponseElement>> children;

    /// UTF-8, attributes sorted by name, no indentation.
    std::string serialised() const;
    void appendTo(std::string& output) const;
};

/// Thrown when the response would hold more elements than the host allows.
struct ElementLimitReached {
    std::size_t limit;
};

/// The document that the host hands in: "Response" with one empty child "Result".
class ResponseDocument {
public:
    explicit ResponseDocument(std::size_t elementLimit);

    /// Every element that is created counts, whether or not it is appended later.
    std::unique_ptr<ResponseElement> createElement(Text const& tag);

    ResponseElement& response() { return *m_response; }
    ResponseElement& result() { return *m_response->children.front(); }
    ResponseElement const& response() const { return *m_response; }

private:
    std::size_t m_elementLimit;
    std::size_t m_elements = 0;
    std::unique_ptr<ResponseElement> m_response;
};

} // namespace naive
