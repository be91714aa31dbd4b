#include "VexLocaleChoice.h"

#include <algorithm>

namespace {

std::optional<std::size_t> indexOf(std::span<I18NLocale const> locales, I18NLocale const& locale) {
    auto const at = std::find(locales.begin(), locales.end(), locale);
    return at == locales.end()
               ? std::nullopt
               : std::optional<std::size_t>(static_cast<std::size_t>(at - locales.begin()));
}

} // namespace

std::optional<std::size_t> VexChooseValue(std::span<I18NLocale const> values,
                                          I18NLocale const* locale,
                                          I18NLocale const& modelDefault) {
    I18NLocale const nameless;
    if (locale == nullptr) {
        for (I18NLocale const& wanted : {nameless, modelDefault}) {
            if (std::optional<std::size_t> const index = indexOf(values, wanted)) {
                return index;
            }
        }
        return values.empty() ? std::nullopt : std::optional<std::size_t>(0);
    }
    for (I18NLocale wanted = *locale;; wanted = wanted.getParent()) {
        if (std::optional<std::size_t> const index = indexOf(values, wanted)) {
            return index;
        }
        if (wanted == nameless) {
            return std::nullopt;
        }
    }
}

I18NLocale VexChooseLocale(std::span<I18NLocale const> supported, I18NLocale const& asked,
                           I18NLocale const& modelDefault) {
    I18NLocale const nameless;
    for (I18NLocale locale = asked; locale != nameless; locale = locale.getParent()) {
        if (indexOf(supported, locale)) {
            return asked;
        }
    }
    return modelDefault;
}
