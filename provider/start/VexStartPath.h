#pragma once

#include "I18NString.h"

#include <list>
#include <vector>

// Start paths and references are texts of the form [name].[name]...; inside a
// name "]]" stands for one "]".

/// Appends the names of `startPath` to `parts`, outermost first. False when the
/// text is malformed; the names before the fault then stay in the list.
bool GetNamePartsFromStartPath(I18NString const& startPath, std::list<I18NString>& parts);

/// Sets `result` to `source` with each occurrence of `search`, which is not
/// empty, replaced; what a replacement brings in is not searched again.
I18NString& SearchAndReplace(I18NString const& source, I18NString const& search,
                             I18NString const& replacement, I18NString& result);

/// Appends the items to `text`, separated for people.
void getItemsStringFromList(std::vector<I18NString> const& items, I18NString& text);

/// Appends "[", the name and "]". A "]" in the name is not doubled: such a path
/// reads differently when it is split. Kept on purpose.
void AppendBracketedName(I18NString& text, I18NString const& name);
