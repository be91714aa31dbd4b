#pragma once

/// What a plug-in can do beside its actions it offers as extensions. An extension is
/// a constant table of functions; the header that declares its type holds its id too,
/// as `Id`, so that plug-in and host mean the same. An id ends in a number, which
/// grows with every change that a caller would notice.
///
/// A plug-in that has extensions exports a function of this type, with C linkage,
/// under the name `VexGetExtensionName`. Gives the table of that id; null for an id that the
/// plug-in does not know, and for a null pointer. Raises nothing. The plug-in owns the
/// table; it lives as long as the library, and none of its functions is null. Threads: any, from
/// when the library is loaded.
extern "C" {
using VexGetExtension = void const* (*)(char const* id);
}

/// What hosts look up in the library. A plug-in without it has no extensions; a host
/// that does not know an extension goes without.
inline constexpr char const* VexGetExtensionName = "VexPlugin_getExtension";
