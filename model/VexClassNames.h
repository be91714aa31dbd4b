#pragma once

/// The kinds of model objects that the algorithms name themselves. Where the
/// host's own word is meant, it is fetched by number instead.
namespace VexClass {

inline constexpr char Calculation[] = "calculation";
inline constexpr char Filter[] = "filter";
inline constexpr char Namespace[] = "namespace";
inline constexpr char QueryItem[] = "queryItem";
inline constexpr char QueryItemFolder[] = "queryItemFolder";
inline constexpr char QuerySubject[] = "querySubject";
inline constexpr char Shortcut[] = "shortcut";

} // namespace VexClass
