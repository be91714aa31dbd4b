#pragma once

#include "VexExport.h"

#include <cstddef>

/// A failure's number and its text for people (UTF-8). In the text "{0}" stands
/// for the first parameter, "{1}" for the second.
struct VexMessageText {
    unsigned id;      ///< the failure's number
    char const* text; ///< static text
};

/// The text of a failure; null for a number that the table lacks.
VEX_PLATFORM_API char const* VexFindMessageText(unsigned id);

/// The whole table, ascending by number.
VEX_PLATFORM_API VexMessageText const* VexMessageTexts(std::size_t& count);
