#pragma once

#include "I18NString.h"

#include <string>
#include <string_view>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

namespace KRLIDOM {

/// The text of the XML library as a string; null counts as empty.
inline I18NString text(char16_t const* units) {
    return units == nullptr ? I18NString() : I18NString(std::u16string_view(units));
}

[[noreturn]] void raiseStructure(xercesc::DOMException const& failure);
[[noreturn]] void raiseOutOfMemory(char const* limitName);

/// The end of a sentence about a limit: " with NAME.", or just the full stop.
std::string withName(char const* limitName);

/// Raised inside the XML library, for its own one.
class OutOfMemory final : public xercesc::OutOfMemoryException {
public:
    explicit OutOfMemory(char const* limitName) : m_limitName(limitName) {}
    char const* limitName() const { return m_limitName; }

private:
    char const* m_limitName; // of what would bound the memory; may be null
};

/// Runs an operation of the XML library and turns its failures into the
/// platform's. Its out-of-memory exception derives from nothing that a host
/// would catch.
template <class Operation> auto guarded(Operation&& operation) {
    try {
        return operation();
    } catch (xercesc::DOMException const& failure) {
        raiseStructure(failure);
    } catch (OutOfMemory const& failure) {
        raiseOutOfMemory(failure.limitName());
    } catch (xercesc::OutOfMemoryException const&) {
        raiseOutOfMemory(nullptr);
    }
}

} // namespace KRLIDOM
