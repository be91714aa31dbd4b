#pragma once

#include "I18NLocale.h"
#include "VexHostExport.h"

#include <cstddef>
#include <optional>
#include <span>

/// Which of a property's values a locale finds, as `VexObject::GetPropertyByName` tells
/// it: the value for the locale, else for its nearest parent, else the unlocalised one.
/// Null finds the unlocalised value, else the one for `modelDefault`, else the first.
///
/// `values` are the locales of the values in their order, nameless for an unlocalised
/// one. Gives an index among them, the first that fits; nothing when none does.
/// Threads: any.
VEX_HOST_API std::optional<std::size_t> VexChooseValue(std::span<I18NLocale const> values,
                                                       I18NLocale const* locale,
                                                       I18NLocale const& modelDefault);

/// The locale that a session answers in when it asks for `asked`: that locale, when it
/// or one of its parents is among those that the model supports; else `modelDefault`.
/// The nameless locale asks for the default. Threads: any.
VEX_HOST_API I18NLocale VexChooseLocale(std::span<I18NLocale const> supported,
                                        I18NLocale const& asked, I18NLocale const& modelDefault);
