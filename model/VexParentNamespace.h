#pragma once

#include "VEX_HANDLE.h"

/// The nearest namespace around the element, null when there is none; an element
/// is never its own.
VEX_HANDLE FindParentNamespace(VEX_HANDLE element);
