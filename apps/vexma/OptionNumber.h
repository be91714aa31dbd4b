#pragma once

#include "apps/vexma/CommandSyntax.h"

#include <string>

namespace vex {

/// True when a number goes to the target.
bool takesNumber(OptionTarget const& target);

/// What is wrong with the number that was given to an option: text that is none or goes on
/// behind it, one that its target cannot hold, one below what the option takes, and what
/// is not finite. None is negative. "" when nothing is wrong.
std::string complaintAboutNumber(OptionSyntax const& option, std::string const& text);

/// Sets the target to the number, which must be right.
void setNumber(OptionTarget const& target, std::string const& text);

} // namespace vex
