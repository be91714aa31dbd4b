#pragma once

#include "host/store/build/Diagnostic.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vex {

/// What a file of rules says about findings: which rules are switched off, and how
/// much the others weigh. A line for each, "rule: off", "note", "warning" or
/// "error". The rules that keep a file from being read stay errors.
class RuleLevels {
public:
    static constexpr char const* fileName = ".vexma.yaml";

    /// Every rule as the table of rules has it.
    RuleLevels() = default;

    /// Reads YAML; `name` stands for the file. Raises `KRLDocumentException` for
    /// text that is none, for a rule that does not exist or may not be changed, and
    /// for what is no level.
    static RuleLevels read(std::string_view text, std::string name);

    /// Gives each finding its weight and takes out those that are switched off.
    /// Gives how many these were.
    std::size_t apply(Diagnostics& found) const;

    /// The file that was read; "" without one.
    std::string const& file() const { return m_file; }

private:
    using Level = std::optional<Severity>; // none: off

    std::string m_file;
    std::map<std::string, Level, std::less<>> m_levels; // by rule
};

} // namespace vex
