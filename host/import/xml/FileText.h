#pragma once

#include <cstddef>
#include <limits>
#include <string>

namespace vex {

/// The whole text of a file; "-" reads standard input. Raises
/// `KRLDocumentException` when it cannot be read or holds more than `limit`
/// bytes.
std::string readFileText(std::string const& file,
                         std::size_t limit = std::numeric_limits<std::size_t>::max());

} // namespace vex
