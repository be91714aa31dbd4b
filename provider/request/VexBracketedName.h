#pragma once

#include <string_view>

// quirk: closing-bracket-not-doubled
/// Appends "[", the name and "]" to a text of either kind, behind a "." if
/// `dotted`. A "]" in the name is not doubled, in paths and references alike: such
/// a text reads differently when it is split. Kept on purpose.
template <class Text> void AppendBracketedName(Text& text, std::u16string_view name, bool dotted) {
    using View = std::u16string_view;
    text.append(dotted ? View(u".[") : View(u"["));
    text.append(name);
    text.append(View(u"]"));
}
