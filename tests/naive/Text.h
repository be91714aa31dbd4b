#pragma once

#include <string>
#include <vector>

/// Strings of the naive evaluator: plain UTF-16, with the host's rules for searching and cutting.
namespace naive {

using Text = std::u16string;
using Texts = std::vector<Text>;

std::string toUtf8(Text const& text);
Text fromUtf8(std::string const& text);

/// The first index of `what` in `text` at or after `from`, or -1.
int findText(Text const& text, Text const& what, int from = 0);

/// A start below 0 counts as 0, one past the end gives "", a negative length means to the end.
Text substring(Text const& text, int start, int length);

bool startsWith(Text const& text, Text const& prefix);

/// White space of both ends cut off.
Text trimmed(Text const& text);

/// Appends the names of "[a].[b]" to `parts`; false when the text is not of that form.
bool splitStartPath(Text const& path, Texts& parts);

/// True for a Name of XML 1.0.
bool isXmlName(Text const& text);

/// "de-at" becomes "de_AT".
Text canonicalLocale(Text const& name);

/// "de_AT" gives "de", "de" gives "".
Text parentLocale(Text const& name);

/// The decimal integer that the text begins with; 0 without digits, clamped to a long.
long leadingInteger(Text const& text);

/// `items` joined with ", ".
Text joined(Texts const& items);

} // namespace naive
