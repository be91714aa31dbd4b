#pragma once

#include <cstdint>

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>

/// An attribute of the library that holds its value itself. The text node that the library
/// would make for each value is made when somebody asks for it.
class KRLIDOM_LeanAttr final : public xercesc::DOMAttrImpl {
public:
    KRLIDOM_LeanAttr(xercesc::DOMDocumentImpl* document, char16_t const* name)
        : DOMAttrImpl(document, name) {}

    char16_t const* getNodeValue() const override { return getValue(); }
    char16_t const* getValue() const override;
    void setValue(char16_t const* value) override;

    /// @{
    /// These look at the text node, or change it.
    xercesc::DOMNode* appendChild(xercesc::DOMNode* child) override;
    xercesc::DOMNode* insertBefore(xercesc::DOMNode* child, xercesc::DOMNode* before) override;
    xercesc::DOMNode* replaceChild(xercesc::DOMNode* child, xercesc::DOMNode* old) override;
    xercesc::DOMNode* removeChild(xercesc::DOMNode* child) override;
    xercesc::DOMNode* getFirstChild() const override;
    xercesc::DOMNode* getLastChild() const override;
    xercesc::DOMNodeList* getChildNodes() const override;
    bool hasChildNodes() const override;
    xercesc::DOMNode* cloneNode(bool deep) const override;
    bool isEqualNode(xercesc::DOMNode const* other) const override;
    char16_t const* getTextContent() const override;
    void setTextContent(char16_t const* text) override;
    /// @}

private:
    DOMAttrImpl& withText() const;

    char16_t* m_value = nullptr; // null: the children say it
    std::uint32_t m_room = 0;    // for characters, without the zero behind them
};

/// An element of the library whose attributes are lean. Appending an element and setting an
/// attribute take the short way where nothing needs the library's long one, which asks each
/// node several times what it is.
class KRLIDOM_LeanElement final : public xercesc::DOMElementImpl {
public:
    KRLIDOM_LeanElement(xercesc::DOMDocumentImpl* document, char16_t const* name)
        : DOMElementImpl(document, name) {}

    void setAttribute(char16_t const* name, char16_t const* value) override;
    xercesc::DOMNode* appendChild(xercesc::DOMNode* child) override;

private:
    bool takes(xercesc::DOMNode* child) const;
};
