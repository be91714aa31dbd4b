#pragma once

#include "I18NString.h"

/// The words of the system: element, class, property and list names by number.
/// The numbers are part of the contract with plug-ins.
namespace resources {

/// The numbers.
enum Word : long {
    ListSeparator = 16,    ///< ","
    ListBlank = 46,        ///< " "
    CollectionSuffix = 55, ///< "Collection"
    Calculation = 119,     ///< "calculation"
    PathMark = 126,        ///< "path:"
    MemberRole = 128,      ///< "roleId"
    Hidden = 182,          ///< "hidden"
    Filter = 194,          ///< "filter"
    Folder = 197,          ///< "folder"
    Function = 201,        ///< "function"
    Excluded = 209,        ///< "excluded"
    Included = 227,        ///< "included"
    SetKind = 228,         ///< "kind"
    RoleBased = 236,       ///< "roleBased"
    Name = 278,            ///< "name"
    Namespace = 279,       ///< "namespace"
    Package = 325,         ///< "package"
    QuerySubject = 327,    ///< "querySubject"
    QueryItem = 328,       ///< "queryItem"
    QueryItemFolder = 329, ///< "queryItemFolder"
    SetEntry = 330,        ///< "item"
    ViewMember = 350,      ///< "member"
    Shortcut = 356,        ///< "shortcut"
    SecurityView = 360,    ///< "securityView"
};

/// The text with that number; "" for a number that the table lacks. The
/// reference stays valid for the life of the process. Threads: any.
VEX_PLATFORM_API I18NString const& getString(long id);

} // namespace resources
