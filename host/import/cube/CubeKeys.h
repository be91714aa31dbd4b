#pragma once

#include "host/import/draft/SourceEntries.h"

#include <span>

namespace vex {

/// The keys of cubes and views that nothing of a model document stands for.
std::span<UnmappedKey const> unmappedCubeKeys();

/// Why what is counted by itself is left out.
namespace cubeReasons {
inline constexpr char const* Link = "links are not followed";
inline constexpr char const* NoFile = "it is no file";
inline constexpr char const* NoYaml = "it is no YAML";
inline constexpr char const* Program = "programs are not run";
inline constexpr char const* Template = "templates are not run, so nobody knows what it grants";
inline constexpr char const* Computed = "code is not run, so nobody knows whom it is for";
inline constexpr char const* Condition =
    "it holds under a condition that only a request can tell, so it grants nothing";
inline constexpr char const* NoList = "it is no list of policies, so it grants nothing";
inline constexpr char const* NoRole = "it names no role, or both a role and a group";
inline constexpr char const* NoMembers = "its member_level cannot be understood";
inline constexpr char const* UnknownKey = "it says what this import does not know";
inline constexpr char const* PartOfView =
    "what it excludes may be a member of a cube that the source lacks";
inline constexpr char const* RowFilter =
    "views say which objects a role sees, not which rows; filter rows where the data is";
inline constexpr char const* Masking = "it changes values, and says nothing about objects";
inline constexpr char const* UnknownMember = "the cube or view has no such member";
inline constexpr char const* UnknownCube = "the source has no such cube";
inline constexpr char const* OtherFolder =
    "the member stands in its first folder; a second place would not be secured";
inline constexpr char const* SameName = "the view has a member of that name already";
inline constexpr char const* NoText = "it is no text";
inline constexpr char const* SecondKey = "another key makes the same property";
} // namespace cubeReasons

} // namespace vex
