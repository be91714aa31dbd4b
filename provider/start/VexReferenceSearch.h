#pragma once

#include "provider/start/VexFoundStart.h"
#include "provider/start/VexStartContext.h"
#include "provider/start/VexStartPath.h"

#include <optional>

// The searches for what a reference names. `candidates` are the objects that its
// first name is sought among; what is found takes their place.

/// Finds the object that a reference of two or three names stands for. None when
/// two names lead to nothing; raises for three. `reference` is the whole text.
std::optional<VexFoundStart> FindReferencedStart(VexStartContext const& context,
                                                 VexNameParts const& names,
                                                 I18NString const& reference,
                                                 Vex_Handle_Collection& candidates);

/// Finds a filter, a calculation or a shortcut of a namespace, in this order.
bool FindReferencedFilterOrCalculation(VexStartContext const& context, VexNameParts const& names,
                                       Vex_Handle_Collection& candidates, VexMDMaPath& path);

/// True when a namespace of that name lies below one of the candidates, at any
/// depth.
bool FindReferencedNamespaces(I18NString const& name, I18NLocale const* locale,
                              Vex_Handle_Collection const& candidates);

/// The first shortcut of the model that has the first of the names, null when
/// none has. Raises in a model without shortcuts, and when it is the candidate
/// that the names were sought from already.
VEX_HANDLE FindReferencedShortcut(VexStartContext const& context, VexNameParts const& names,
                                  Vex_Handle_Collection const& candidates);
