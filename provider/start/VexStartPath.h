#pragma once

#include "I18NString.h"

#include <list>
#include <vector>

// Start paths and references are texts of the form [name].[name]...; inside a
// name "]]" stands for one "]".

/// The names of such a text, outermost first.
using VexNameParts = std::list<I18NString>;

/// Appends the names of `startPath` to `parts`. False when the text is
/// malformed; the names before the fault then stay in the list.
bool GetNamePartsFromStartPath(I18NString const& startPath, VexNameParts& parts);

/// Sets `result` to `source` with each occurrence of `search`, which is not
/// empty, replaced; what a replacement brings in is not searched again. Paths and
/// references are written without it: a "]" in a name is not doubled.
I18NString& SearchAndReplace(I18NString const& source, I18NString const& search,
                             I18NString const& replacement, I18NString& result);

/// Appends the items to `text`, separated for people.
void getItemsStringFromList(std::vector<I18NString> const& items, I18NString& text);
