#pragma once

#include "I18NString.h"
#include "model/VexModelScope.h"
#include "provider/tree/VexPathRecords.h"

// Which elements of a path count for a reference, and the reference itself. A
// shortcut in a path costs a search of the model each time.

/// Appends the reference of the object that `path` leads to; null is an empty
/// path.
void GetReferenceForElement(VexModelScope const& model, VexPathRecord const* path,
                            I18NString& reference);

/// True for a namespace and for a shortcut that ends a reference as one does; sets
/// `namespaceName` to the name that the reference then begins with.
bool IsNamespaceOrShortcutToNamespace(VexModelScope const& model, I18NString const& className,
                                      I18NString const& name, I18NString& namespaceName);

/// True for a shortcut whose name counts like that of its target.
bool IsShortcutToQSFilterCalculation(VexModelScope const& model, I18NString const& className,
                                     I18NString const& name);
