#pragma once

#include "host/insight/AcceptedFindings.h"

#include <string>
#include <string_view>

namespace vex {

/// Reads a list of accepted findings, a JSON object on each line; lines that are empty or
/// begin with "#" are passed over. `name` stands for the file. Raises `HostException` with the
/// line of what cannot be read, and what may stand there.
AcceptedFindings readAccepted(std::string_view text, std::string const& name);

/// Such a list, each entry on a line.
std::string writeAccepted(AcceptedFindings const& accepted);

/// One entry of it.
std::string toJson(AcceptedFinding const& entry);

} // namespace vex
