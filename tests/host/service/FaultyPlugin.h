#pragma once

/// The plug-in "FaultyPlugin" is the metadata access plug-in of the file that the
/// environment names, but for one fault.
namespace faultyPlugin {

/// The file of the plug-in that answers.
constexpr char const* realVariable = "VEX_REAL_PLUGIN";
/// "WHAT FIRST LAST HOW", such as "access 2 3 code": what happens in place of the second and
/// third accessibility request. WHAT is metadata, access, tree (the extension that explains
/// trees) or any. HOW is
///   code      gives 77
///   nothing   says that it is done, and does nothing
///   odd       says that it is done, with a verdict that is neither yes nor no, or an empty tree
///   strange   says that it is done, with a tree of something that the model lacks
///   foreign   throws what is no exception of the platform
///   platform  throws an exception of the platform
///   own       throws an exception of a type that only the plug-in knows
///   raise     raises a failure
///   refuse    raises that the user has no view or role
///   late      throws when everything is done
///   interrupt sends SIGINT to the program before it answers
///   after     sends it when everything is done
constexpr char const* faultVariable = "VEX_FAULT";

} // namespace faultyPlugin
