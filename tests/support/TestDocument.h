#pragma once

#include "KRLIDOM_OwnedDocument.h"

#include <string>
#include <string_view>

/// The node and all below it on one line, attributes in alphabetical order.
std::string sortedText(KRLIDOM_Node const& node);

/// A request document from its text.
class TestRequest {
public:
    explicit TestRequest(std::string_view xml);

    /// The document node, as a host hands it over.
    KRLIDOM_Node& node() { return m_node; }

private:
    KRLIDOM_OwnedDocument m_document;
    KRLIDOM_Node m_node;
};

/// A response document as a host hands it over: the element "Response" whose
/// only child is an empty element "Result".
class TestResponse {
public:
    explicit TestResponse(KRLIDOM_Limits const& limits = {});

    KRLIDOM_Node& node() { return m_response; }
    KRLIDOM_Element result() const;

    /// The whole document, such as "<Response><Result/></Response>".
    std::string text() const { return sortedText(m_response); }
    /// What stands inside "Result".
    std::string resultText() const;
    std::size_t elementCount() const { return m_document.elementCount(); }

private:
    KRLIDOM_OwnedDocument m_document;
    KRLIDOM_Node m_response;
};
