#pragma once

#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"

#include <array>
#include <cstddef>

class I18NLocale;

/// Reads the names of many objects one after another. The name properties are
/// looked up some objects ahead of the reading, more and more of them, so that
/// a host can have their values at hand; for a search that ends soon, few are.
class VexNameReader {
public:
    /// All three must outlive the reader; the locale may be null.
    VexNameReader(Vex_Handle_Collection const& objects, I18NString const& nameKey,
                  I18NLocale const* locale)
        : m_objects(objects), m_key(nameKey), m_locale(locale) {}

    /// Goes to the next object; false when there is none.
    bool next() {
        if (m_next == m_lookedUp && !lookUpMore()) {
            return false;
        }
        ++m_next;
        return true;
    }

    VEX_HANDLE object() const { return m_objects[m_next - 1]; }

    /// Reads the object's name into `value`, which keeps what it held when there
    /// is none.
    void readInto(I18NString& value) const;

private:
    static constexpr std::size_t MostAhead = 32;

    bool lookUpMore();

    Vex_Handle_Collection const& m_objects;
    I18NString m_key;
    I18NLocale const* m_locale;
    std::array<VEX_HANDLE, MostAhead> m_properties{};
    std::size_t m_next = 0;
    std::size_t m_lookedUp = 0;
    std::size_t m_firstLookedUp = 0; // whose property is the first in the array
};
