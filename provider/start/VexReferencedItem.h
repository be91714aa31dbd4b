#pragma once

#include "model/VexMDMaModelElementInfo.h"
#include "provider/start/VexStartContext.h"
#include "provider/start/VexStartPath.h"

class Vex_Handle_Collection;

/// Finds the query item that three names stand for, from namespace to item. It
/// then is the only candidate, and its records are in `path`. False when the first
/// name is not found; raises when a later one is not.
bool FindReferencedItem(VexStartContext const& context, VexNameParts const& names,
                        Vex_Handle_Collection& candidates, VexMDMaPath& path);
