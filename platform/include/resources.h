#pragma once

#include "I18NString.h"

/// The words of the system: element, class, property and list names by number.
/// The numbers are part of the contract with plug-ins.
namespace resources {

/// The text with that number; "" for a number that the table lacks. The
/// reference stays valid for the life of the process. Threads: any.
VEX_PLATFORM_API I18NString const& getString(long id);

} // namespace resources
