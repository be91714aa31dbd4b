#pragma once

#include "I18NString.h"
#include "VexHostExport.h"

#include <vector>

/// Splits a start path or reference, "[Sales].[Orders]", into its names, as the
/// plug-in does; inside a name "]]" stands for one "]". White space around brackets
/// and dots is skipped. The empty text has no names. False when the text is not of
/// that form; `names` then holds what was read before. Appends. Threads: any.
VEX_HOST_API bool VexSplitReference(I18NString const& reference, std::vector<I18NString>& names);

/// Appends "[name]", behind a "." when the reference is not empty, with each "]" in
/// the name doubled. What was joined with it, `VexSplitReference` splits again.
/// Threads: any.
VEX_HOST_API void VexAppendToReference(I18NString& reference, I18NString const& name);
