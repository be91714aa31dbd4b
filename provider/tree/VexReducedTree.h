#pragma once

#include "KRLIDOM_Element.h"
#include "VEX_HANDLE.h"

class I18NLocale;

// The reduced tree: every object with id, name, role and class, whatever the user
// may see. No request of the plug-in's own writes it.

/// Writes the child objects of `object` under the first child of `parent`.
void WriteReducedTree(VEX_HANDLE object, I18NLocale const* locale, KRLIDOM_Node const& parent);

/// Writes `object`, and what containers hold, under `parent`.
void WriteReducedSubtree(VEX_HANDLE object, I18NLocale const* locale,
                         KRLIDOM_Element const& parent);
