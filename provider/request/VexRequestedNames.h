#pragma once

#include "I18NString.h"

#include <list>

/// True when "*" is all that the request names: everything is meant.
inline bool IsWildcardForProperties(std::list<I18NString> const& names) {
    return names.size() == 1 && names.front() == "*";
}

/// The same for collections, where two names are always appended: those do not
/// count.
inline bool IsWildcardForCollections(std::list<I18NString> const& names) {
    constexpr std::size_t alwaysAppended = 2;
    return names.size() == 1 + alwaysAppended && names.front() == "*";
}
