#pragma once

/// @def VEX_HOST_API
/// Marks what the library for hosts exports.
#define VEX_HOST_API __attribute__((visibility("default")))
