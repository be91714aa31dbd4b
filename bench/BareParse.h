#pragma once

#include <string>

namespace bench {

/// Reads a file with a SAX2 parser that keeps nothing, set up as the model
/// loader sets up its own.
void parseBare(std::string const& file);

} // namespace bench
