#pragma once

#include "VEX_HANDLE.h"
#include "model/VexFailure.h"

class I18NString;
class VexObjectStore;
class VexSession;

/// Which "refobj" decides when a shortcut has several with a value.
enum class VexTargetRule { FirstDecides, LastDecides };

/// The object that a shortcut's "refobj" names; null when no "refobj" has a
/// value. Every one that is read must name an object, else `unknown` is raised,
/// with `parameter` when that is not null.
VEX_HANDLE FindShortcutTarget(VexObjectStore const& store, VEX_HANDLE shortcut, VexTargetRule rule,
                              VexFailure unknown, I18NString const* parameter = nullptr);

/// Replaces a shortcut's handle by its target's, null when it names none, and
/// `targetClass` by the target's class when there is one. `name` is the
/// shortcut's, for the failure alone.
void FindShortcutReference(VexSession const& session, I18NString const& name, VEX_HANDLE& shortcut,
                           I18NString& targetClass);
