#pragma once

#include <string>
#include <vector>

/// Strings of the naive evaluator: plain UTF-16, with the host's rules for searching and cutting.
namespace naive {

using Text = std::u16string;
using Texts = std::vector<Text>;

std::string toUtf8(const Text& text);
Text fromUtf8(const std::string& text);

/// The first index of `what` in `text` at or after `from`, or -1.
int findText(const Text& text, const Text& what, int from = 0);

/// A start below 0 counts as 0, one past the end gives "", a negative length means to the end.
Text substring(const Text& text, int start, int length);

bool startsWith(const Text& text, const Text& prefix);

/// White space of both ends cut off.
Text trimmed(const Text& text);

/// Appends the names of "[a].[b]" to `parts`; false when the text is not of that form.
bool splitStartPath(const Text& path, Texts& parts);

/// True for a Name of XML 1.0.
bool isXmlName(const Text& text);

/// "de-at" becomes "de_AT".
Text canonicalLocale(const Text& name);

/// "de_AT" gives "de", "de" gives "".
Text parentLocale(const Text& name);

/// The decimal integer that the text begins with; 0 without digits, clamped to a long.
long leadingInteger(const Text& text);

/// `items` joined with ", ".
Text joined(const Texts& items);

} // namespace naive
