#pragma once

#include "host/service/NameSuggestion.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// The object with that id, else with that reference; null when it names nothing.
VEX_HANDLE lookUpObject(Model const& model, I18NString const& idOrReference);

/// What people are told of a text that names nothing, or nothing that they may see.
std::string unknownObjectText(I18NString const& idOrReference,
                              std::vector<Suggestion> const& suggestions);

/// The same object. Raises `HostException` when it names nothing; what that suggests
/// may be named.
VEX_HANDLE findObject(Model const& model, I18NString const& idOrReference,
                      MayBeNamed const& mayBeNamed = {});

} // namespace vex
