#include "host/service/NamesOnTheWay.h"

#include "VexObject.h"
#include "host/service/EditDistance.h"
#include "host/service/ObjectName.h"
#include "host/store/image/ReferenceText.h"

#include <algorithm>

namespace vex {

namespace {

/// The names of a text whose brackets may be wrong.
std::vector<std::u16string> splitLeniently(I18NString const& text) {
    std::vector<std::u16string> names;
    if (splitReference(text, names)) {
        return names;
    }
    names.assign(1, {});
    for (char16_t const unit : text.view()) {
        if (unit == u'.') {
            names.emplace_back();
        } else if (unit != u'[' && unit != u']') {
            names.back() += unit;
        }
    }
    return names;
}

} // namespace

NamesOnTheWay::NamesOnTheWay(Model const& model, I18NString const& text, I18NLocale const& locale)
    : m_locales(model.locales()) {
    for (I18NLocale const& each : {model.defaultLocale(), locale}) {
        if (std::find(m_locales.begin(), m_locales.end(), each) == m_locales.end()) {
            m_locales.push_back(each);
        }
    }
    for (std::u16string const& name : splitLeniently(text)) {
        m_last = name;
        m_folded.push_back(foldCase(name));
    }
}

bool NamesOnTheWay::leadTo(VEX_HANDLE element) const {
    if (m_last.empty() || !isNameOf(m_folded.back(), element)) {
        return false;
    }
    auto name = std::next(m_folded.rbegin());
    for (VEX_HANDLE at = VexObject(element).GetParent(); at.IsNotNull() && name != m_folded.rend();
         at = VexObject(at).GetParent()) {
        name += isNameOf(*name, at) ? 1 : 0;
    }
    return name == m_folded.rend();
}

bool NamesOnTheWay::beginAt(VEX_HANDLE element) const {
    return !m_folded.empty() && isNameOf(m_folded.front(), element);
}

bool NamesOnTheWay::isNameOf(std::u16string const& folded, VEX_HANDLE element) const {
    return std::any_of(m_locales.begin(), m_locales.end(), [&](I18NLocale const& locale) {
        I18NString const name = nameIn(locale, element);
        return static_cast<std::size_t>(name.length()) == folded.size() &&
               foldCase(name.view()) == folded;
    });
}

} // namespace vex
