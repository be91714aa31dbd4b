#pragma once

class VexVariant;

/// True when the parameter has that type code and, where it points to its value,
/// points to one. Otherwise writes the failure line to standard output, and the
/// caller raises its own failure.
bool HasParameterType(VexVariant const& parameter, unsigned short expectedType);

/// The same for a node that has to be an element.
bool HoldsElement(VexVariant const& parameter);
