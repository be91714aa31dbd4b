#pragma once

#include "Vex_Handle_Collection.h"
#include "host/store/image/Model.h"

#include <functional>
#include <string>
#include <vector>

namespace vex {

/// Which of some objects may be named to whoever asks: a verdict for each in its
/// place; those past the last verdict may not.
using MayBeNamed = std::function<std::vector<bool>(Vex_Handle_Collection const&)>;

/// An object that a text may have meant, and what it should have been written as.
struct Suggestion {
    VEX_HANDLE object;
    I18NString text;
};

/// What a text may have meant that names nothing: the nearest first, three at most.
/// That is what was mistyped, and what was taken from elsewhere: an id, a path for a
/// reference or the other way round, names in another language or in other case.
/// Objects that may not be named count as if they did not exist, and a text that names
/// one is not suggested, for what stands in it neither; without that function all may be
/// named.
///
/// They are a help and cost little: a text of more than 256 characters gets none, the work
/// is bounded and charged to the call's `Budget` (in a very large model only its first
/// part is searched), and when a limit of the call strikes there are none. Raise nothing
/// of their own.
/// @{
/// Ids, and references in the default language. None when the text is one of them.
std::vector<Suggestion> suggestObjects(Model const& model, I18NString const& text,
                                       MayBeNamed const& mayBeNamed = {});
/// Start paths in the language `locale`. One may be the text itself, when a start path
/// does not lead where its names do.
std::vector<Suggestion> suggestPaths(Model const& model, I18NString const& text,
                                     I18NLocale const& locale, MayBeNamed const& mayBeNamed = {});
/// @}

/// "did you mean A, B or C?"; "" when there is nothing to mean.
std::string toQuestion(std::vector<std::string> const& texts);
std::string toQuestion(std::vector<Suggestion> const& suggestions);

} // namespace vex
