#pragma once

#include "KRLIDOM_OwnedDocument.h"
#include "apps/vexma/RequestWarnings.h"
#include "apps/vexma/Workplace.h"

#include <string>

namespace vex {

/// A request, and the document that it was read from.
struct WrittenRequest {
    KRLIDOM_OwnedDocument const& document;
    MetadataRequest const& asked;
    I18NString startId{}; // "" when it starts by a path or reference
    std::string text{};   // "" when options built it
    std::string file{};   // what messages call it
};

/// Warns about what the request asks for in vain, and about what nothing reads in its
/// document, each with the nearest word.
void warnAboutWords(WrittenRequest const& request, Workplace& workplace, RequestWarnings& warnings);

/// Warns when the model lacks the language that was asked for, unless the user is refused
/// whatever he asks.
void warnAboutLocale(Workplace const& workplace, RequestWarnings& warnings);

/// @{
/// The same for a command that has no `--strict`.
void complainAboutLocale(Visit const& visit, Console& console);
void complainAboutLocale(Workplace const& workplace, Console& console);
/// @}

} // namespace vex
