#pragma once

/// @def VEX_PLATFORM_API
/// Marks what the platform exports.
///
/// Everything that a host and a plug-in share lives in one shared library, so
/// that exception types and the factory exist once in a process.
#if defined(VEX_PLATFORM_STATIC)
#define VEX_PLATFORM_API
#else
#define VEX_PLATFORM_API __attribute__((visibility("default")))
#endif
