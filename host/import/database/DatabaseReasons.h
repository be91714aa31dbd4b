#pragma once

namespace vex::databaseReasons {

// Why things of a database are left out, where several readers say it.
inline constexpr char const* System = "it is the system's own";
inline constexpr char const* Schema = "--schema names others";
inline constexpr char const* Filter = "--include and --exclude leave it out";
inline constexpr char const* Nameless = "it has no name";
inline constexpr char const* Definition =
    "it is a query, and names tables that not everybody may see";
inline constexpr char const* Target = "it leads to what was not imported";

} // namespace vex::databaseReasons
