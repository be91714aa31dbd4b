#pragma once

#include "I18NString.h"
#include "Vex_Handle_Collection.h"
#include "model/VexMDMaModelElementInfo.h"

/// Where the tree of a request starts, as a search found it.
struct VexFoundStart {
    I18NString className; // under which the objects were reached
    // A list, unlike the records that the tree output makes of it: the searches put
    // what they meet in front and its ancestors at the back, and the provider's
    // members take it half filled and give it on. Once a request, of a few records.
    VexMDMaPath path;
    Vex_Handle_Collection objects;
    bool pathHoldsElement; // the path begins with the object's own record
    bool throughShortcut;  // the way there led through a shortcut: view lists are passed over
};
