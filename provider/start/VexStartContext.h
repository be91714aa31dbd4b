#pragma once

#include "I18NString.h"
#include "Vex_I18NString_Collection.h"
#include "model/VexModelScope.h"

/// What the searches of one request stand on. Nothing of it changes while they
/// run, and all that is referred to outlives them.
struct VexStartContext {
    VexModelScope model;
    I18NString const& defaultLocale; // the model's
    Vex_I18NString_Collection const& supportedLocales;
};
