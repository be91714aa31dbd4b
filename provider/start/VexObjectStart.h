#pragma once

#include "VEX_HANDLE.h"
#include "provider/start/VexFoundStart.h"

class I18NLocale;
class VexSession;

/// True for what a tree can start at: an element of the open model, below its root.
bool IsElementOfModel(VexSession const& session, VEX_HANDLE object);

/// The start at such an object, which needs no search: its path records are its own
/// and its ancestors'. `pathText` becomes the path from the outermost of them to the
/// object, a "]" in a name doubled, so that it splits into their names.
VexFoundStart StartAtObject(I18NLocale const* locale, VEX_HANDLE object, I18NString& pathText);
