#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"

#include <list>

// What an object is made of: its collections and its plain attributes. All
// append; nothing is raised but what the host raises.

/// Appends the children of `object` whose class is `collectionName`.
void LoadCollection(VEX_HANDLE object, I18NString const& collectionName,
                    Vex_Handle_Collection& found);

/// Appends "ID" and the names of the properties that are plain attributes.
void ListAttributes(Vex_Handle_Collection const& properties, std::list<I18NString>& names);

/// Appends the names of the properties that are collections.
void ListCollections(Vex_Handle_Collection const& properties, std::list<I18NString>& names);
