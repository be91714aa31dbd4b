#pragma once

#include "I18NString.h"

#include <span>

namespace vex {

/// The words of model documents that have a meaning, and those that the schema
/// of model documents offers. Each list lives as long as the process.
struct KnownWords {
    /// Classes, and the elements that are none: "property", "locales".
    static std::span<I18NString const> classes();
    /// Properties, and the attributes that are none: "id", "role", "class".
    static std::span<I18NString const> properties();
    static std::span<I18NString const> datatypes();
    static std::span<I18NString const> usages();
};

/// True for the classes of what people ask for: it has a name to be shown by, and
/// views list its id. Shortcuts have rules of their own.
bool isAskedFor(I18NString const& className);

} // namespace vex
