#pragma once

#include "model/VexMDMaModelElementInfo.h"
#include "provider/start/VexStartContext.h"

class Vex_Handle_Collection;

/// Looks for a name among `items`. When found, leaves that one object in
/// `items`, puts its record in front of `path` and its ancestors' at the back;
/// otherwise changes neither.
bool FindItemInCollection(VexStartContext const& context, I18NString const& wanted,
                          Vex_Handle_Collection& items, VexMDMaPath& path);

/// Leaves `object` alone in `found`.
void ReplaceBy(Vex_Handle_Collection& found, VEX_HANDLE object);
