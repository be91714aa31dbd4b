#pragma once

#include "I18NString.h"

#include <list>

/// Appends the parts of a reference, outermost first, as [part].[part]..., behind a "."
/// when `reference` holds something already.
void BuildObjectReference(std::list<I18NString> const& parts, I18NString& reference);
