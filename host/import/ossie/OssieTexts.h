#pragma once

#include "host/import/draft/SourceEntries.h"

#include <cstddef>
#include <string>

namespace vex {

/// What any thing of an Ossie document may have, into the object that stands for it.
/// @{

/// `description` and `ai_context` as one description; `custom_extensions` as properties
/// "extension.VENDOR".
void copyTexts(SourceEntries& thing, std::size_t object, ImportWork& work);

/// `expression` as a property: that in ANSI_SQL, else the first one; those in other dialects as
/// "expression.DIALECT". Gives the first of them; "" without one.
std::string copyExpression(SourceEntries& thing, std::size_t object, ImportWork& work);

/// `datatype` in the word of the model for it, if there is one. Gives that word.
std::string copyDatatype(SourceEntries& thing, std::size_t object, ImportWork& work);

/// The text of a key as a property, which has the key's name unless another is given.
void copyText(SourceEntries& thing, std::size_t object, ImportWork& work, std::string_view key,
              std::string_view property = {});
/// @}

} // namespace vex
