#pragma once

#include "I18NString.h"
#include "Vex_Handle_Collection.h"
#include "model/VexMDMaModelElementInfo.h"

/// Where the tree of a request starts, as a search found it.
struct VexFoundStart {
    I18NString className; // under which the objects were reached
    VexMDMaPath path;
    Vex_Handle_Collection objects;
    bool pathHoldsElement; // the path begins with the object's own record
    bool throughShortcut;  // the way there led through a shortcut: view lists are passed over
};
