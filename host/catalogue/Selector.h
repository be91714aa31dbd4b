#pragma once

#include "I18NString.h"

#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// Which objects of a model are meant:
///
/// | written | means |
/// |---|---|
/// | `[Sales].[Orders]` | the object with that reference, in the default language |
/// | `#q1`, `#"a@b"` | the object with that id |
/// | `[Sales].[Orders]/*` | its members, not itself |
/// | `[Sales]/**` | itself and everything below |
/// | `**` | everything |
/// | `queryItem:[Sales]/**`, `querySubject:` | of these, or of everything, the class |
/// | `**@usage=fact`, `queryItem@usage=fact` | those with that property |
/// | `**@tag=pii` | those that have the word among their `tags` |
///
/// Several `@` must all hold.
struct Selector {
    enum class Reach { Itself, Members, Subtree, Everywhere };

    /// `property` has the value; with `isWord` the value is one of its words.
    struct Test {
        std::u16string property;
        std::u16string value;
        bool isWord = false;
    };

    std::vector<std::u16string> reference; // its names; empty without one
    std::u16string id;                     // "" without one
    Reach reach = Reach::Itself;
    std::u16string className; // "" for any
    std::vector<Test> tests;

    /// Reads what is written. Gives what is wrong with it, and what to write; ""
    /// when nothing is.
    static std::string read(I18NString const& text, Selector& selector);
};

/// The selector of an id, with quotes where they must be.
std::string selectorOfId(std::string_view id);

/// Calls `take` with each word of a text like "pii, finance".
template <class Take> void forEachWord(std::u16string_view text, Take const& take) {
    constexpr std::u16string_view between = u" \t\r\n,;";
    for (std::size_t at = text.find_first_not_of(between); at != text.npos;) {
        std::size_t const end = text.find_first_of(between, at);
        take(text.substr(at, end == text.npos ? end : end - at));
        at = end == text.npos ? end : text.find_first_not_of(between, end);
    }
}

} // namespace vex
