#pragma once

#include "I18NString.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// An element of an XML document, and where it stands: what a DOM does not tell.
struct OutlinedElement {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    I18NString tag{};
    std::vector<std::pair<I18NString, I18NString>> attributes{}; // name and value, as written
    I18NString text{};            // its own, white space at its ends left out
    DocumentPosition position{};  // where its start tag ends
    std::size_t container = None; // the place in the list of the element around it
};

/// The elements of a document in the order of their start tags. The document is one that
/// was read within limits before; one that cannot be read gives what stands before the
/// problem.
std::vector<OutlinedElement> outlineOf(std::string_view xml);

} // namespace vex
