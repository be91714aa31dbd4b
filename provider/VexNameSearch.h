#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "VexObjectModel.h"

#include <array>
#include <cstddef>

class I18NLocale;

/// Finds the objects of one name in a list, without reading the names out. It
/// has more and more of them compared ahead, which is most of what a search
/// costs; for one that ends soon, few.
class VexNameSearch {
public:
    /// What an object without a name counts as.
    enum class Unnamed {
        Empty,            ///< one whose name is ""
        LikeTheOneBefore, ///< repeats the name before it, "" at first
    };

    /// All must outlive the search; the locale may be null.
    VexNameSearch(Vex_Handle_Collection const& objects, I18NString const& name,
                  I18NLocale const* locale, Unnamed unnamed);

    /// Goes to the next object of the name; false when there is none.
    bool next();

    VEX_HANDLE object() const { return m_objects[m_next - 1]; }

private:
    static constexpr std::size_t MostAhead = 32;

    bool compareMore();

    Vex_Handle_Collection const& m_objects;
    I18NString m_key;
    I18NString const& m_name;
    I18NLocale const* m_locale;
    Unnamed m_unnamed;
    bool m_unnamedMatches;
    std::array<VexTextMatch, MostAhead> m_matches;
    std::size_t m_next = 0;
    std::size_t m_compared = 0;
    std::size_t m_firstCompared = 0; // whose match is the first in the array
};
