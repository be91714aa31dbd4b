#pragma once

#include "host/import/draft/SourceEntries.h"

#include <span>

namespace vex {

/// The keys of Ossie documents that nothing of a model document stands for.
std::span<UnmappedKey const> unmappedOssieKeys();

/// Why what is counted by itself is left out.
namespace ossieReasons {
inline constexpr char const* SecondDialect = "the expression has one in this dialect already";
inline constexpr char const* NoExpression = "it has no expression";
inline constexpr char const* NoField = "no field stands for the column";
inline constexpr char const* UnknownDataset = "the semantic model lacks a dataset that it joins";
inline constexpr char const* UnknownDatatype = "a model has no word for this type";
inline constexpr char const* UnevenColumns = "its two sides have different numbers of columns";
} // namespace ossieReasons

} // namespace vex
