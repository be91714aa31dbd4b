#pragma once

#include <string_view>

namespace vex::databaseReasons {

// Why things of a database are left out, where several readers say it.
inline constexpr char const* System = "it is the system's own";
inline constexpr char const* Schema = "--schema names others";
inline constexpr char const* Filter = "--include and --exclude leave it out";
inline constexpr char const* Nameless = "it has no name";
inline constexpr char const* Definition =
    "it is a query, and names tables that not everybody may see";
inline constexpr char const* Unwritable = "it holds a character that no document can hold";
inline constexpr char const* Target = "it leads to what was not imported";

/// Why a thing of that name cannot be imported; null when it can.
char const* againstName(std::string_view name);

/// True for a text that a model can hold.
bool isWritable(std::string_view text);

} // namespace vex::databaseReasons
