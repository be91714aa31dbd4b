#pragma once

#include "VEX_HANDLE.h"
#include "VexExport.h"

class I18NString;
class KRLIDOM_Node;

/// A value passed between host and plug-in: a type code and what it names.
///
/// The type codes are part of the contract with other hosts: their numbers
/// never change. Strings and nodes are pointed to, not owned: whoever puts one
/// into a variant keeps it alive while the variant is used.
class VexVariant {
public:
    static constexpr unsigned short Empty = 0;   ///< no value
    static constexpr unsigned short Long = 2;    ///< a whole number
    static constexpr unsigned short String = 3;  ///< an `I18NString`
    static constexpr unsigned short Handle = 4;  ///< a `VEX_HANDLE`
    static constexpr unsigned short Pointer = 7; ///< anything else; both sides agree on what
    static constexpr unsigned short Node = 8;    ///< a `KRLIDOM_Node`

    VexVariant() = default;
    /// @{
    /// A value of the type that its argument has.
    explicit VexVariant(long number) : m_type(Long) { m_value.number = number; }
    explicit VexVariant(I18NString* text) : m_type(String) { m_value.pointer = text; }
    explicit VexVariant(VEX_HANDLE handle) : m_type(Handle) { m_value.handle = handle.Number(); }
    explicit VexVariant(KRLIDOM_Node* node) : m_type(Node) { m_value.pointer = node; }
    /// @}

    /// @{
    /// Replaces value and type. An address becomes a Pointer, whatever it is of.
    VexVariant& operator=(long number) { return *this = VexVariant(number); }
    VexVariant& operator=(void* pointer) {
        m_type = Pointer;
        m_value.pointer = pointer;
        return *this;
    }
    /// @}

    /// One of the type codes.
    unsigned short GetType() const { return m_type; }

    /// @{
    /// Each conversion gives 0 or null when the variant holds another type.
    explicit operator long() const { return m_type == Long ? m_value.number : 0; }
    explicit operator I18NString*() const {
        return m_type == String ? static_cast<I18NString*>(m_value.pointer) : nullptr;
    }
    explicit operator VEX_HANDLE() const {
        return m_type == Handle ? VEX_HANDLE(m_value.handle) : VEX_HANDLE();
    }
    explicit operator KRLIDOM_Node*() const {
        return m_type == Node ? static_cast<KRLIDOM_Node*>(m_value.pointer) : nullptr;
    }
    explicit operator void*() const { return m_type == Pointer ? m_value.pointer : nullptr; }
    /// @}

private:
    unsigned short m_type = Empty;
    union {
        long number;
        std::uint32_t handle;
        void* pointer;
    } m_value{};
};
