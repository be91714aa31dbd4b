#pragma once

class VexVariant;

/// True when the parameter has that type code. Otherwise writes the failure
/// line to standard output, and the caller raises its own failure.
bool HasParameterType(VexVariant const& parameter, unsigned short expectedType);
