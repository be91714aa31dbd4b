#pragma once

/// The kinds of model objects that the algorithms name themselves, each spelt
/// here and nowhere else. Where the host's own word is meant, it is fetched by
/// number from `resources` instead.
namespace VexClass {

inline constexpr char Calculation[] = "calculation";
inline constexpr char DataSources[] = "dataSources";
inline constexpr char Filter[] = "filter";
inline constexpr char Folder[] = "folder";
inline constexpr char Namespace[] = "namespace";
inline constexpr char Packages[] = "packages";
inline constexpr char ParameterMaps[] = "parameterMaps";
inline constexpr char QueryItem[] = "queryItem";
inline constexpr char QueryItemFolder[] = "queryItemFolder";
inline constexpr char QuerySubject[] = "querySubject";
inline constexpr char Relationship[] = "relationship";
inline constexpr char SecurityViews[] = "securityViews";
inline constexpr char Set[] = "set";
inline constexpr char Shortcut[] = "shortcut";

} // namespace VexClass
