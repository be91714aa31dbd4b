#pragma once

/// The numbers of the host's words that the provider uses. The words are
/// fetched at each use.
namespace VexResource {

enum Number : long {
    ListSeparator = 16,
    ListBlank = 46,
    CollectionSuffix = 55,
    Calculation = 119,
    Filter = 194,
    Folder = 197,
    Function = 201,
    Name = 278,
    Namespace = 279,
    Package = 325,
    QuerySubject = 327,
    QueryItem = 328,
    QueryItemFolder = 329,
    Shortcut = 356,
    SecurityView = 360,
};

} // namespace VexResource
