#pragma once

#include "host/store/image/Model.h"

namespace vex {

/// The object with that id, else with that reference. Raises `HostException`
/// when it names nothing.
VEX_HANDLE findObject(Model const& model, I18NString const& idOrReference);

} // namespace vex
