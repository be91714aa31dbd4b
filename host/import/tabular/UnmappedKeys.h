#pragma once

#include "host/import/draft/SourceEntries.h"

#include <span>

namespace vex {

/// The keys of tabular models that nothing of a model document stands for.
std::span<UnmappedKey const> unmappedTabularKeys();

/// Why what is counted by itself is left out.
namespace tabularReasons {
inline constexpr char const* DataSource = "it says where the data comes from";
inline constexpr char const* CalculationGroup =
    "a calculation group changes other measures; nothing in a model stands for it";
inline constexpr char const* RowFilter =
    "views say which objects a role sees, not which rows; filter rows where the data is";
inline constexpr char const* RowNumber = "it is the engine's own, no column of the source";
inline constexpr char const* OtherFolder =
    "the object stands in its first display folder; a second place would not be secured";
} // namespace tabularReasons

} // namespace vex
