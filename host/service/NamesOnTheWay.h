#pragma once

#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// The names of a path or reference as people write them: in any language of the
/// model or mixed, upper and lower case being the same, some that stand on the way
/// left out, and without the right brackets.
class NamesOnTheWay {
public:
    /// `locale` counts besides the languages of the model.
    NamesOnTheWay(Model const& model, I18NString const& text, I18NLocale const& locale = {});

    /// "" without names.
    std::u16string const& last() const { return m_last; }

    /// True when the last name is the element's, and those before it, in their order,
    /// names of what it stands in.
    bool leadTo(VEX_HANDLE element) const;

    /// True when the first name is the element's.
    bool beginAt(VEX_HANDLE element) const;

private:
    bool isNameOf(std::u16string const& folded, VEX_HANDLE element) const;

    std::vector<I18NLocale> m_locales;
    std::u16string m_last;
    std::vector<std::u16string> m_folded; // outermost first
};

} // namespace vex
