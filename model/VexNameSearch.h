#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"

#include <cstddef>

class I18NLocale;

/// Finds the objects of one name in a list, one after another, without reading
/// the names out, which would be most of what a search costs.
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
    void passName(bool matches);

    Vex_Handle_Collection const& m_objects;
    I18NString m_key;
    I18NString const& m_name;
    I18NLocale const* m_locale;
    Unnamed m_unnamed;
    bool m_unnamedMatches;
    std::size_t m_next = 0;
};
