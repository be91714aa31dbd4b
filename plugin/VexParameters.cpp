#include "plugin/VexParameters.h"

#include "VexVariant.h"

#include <cstdio>

bool HasParameterType(VexVariant const& parameter, unsigned short expectedType) {
    if (parameter.GetType() == expectedType) {
        return true;
    }
    std::puts("\n\n *** FAILURE: VemAction::validateParameter at invalid VexVariant type *** \n");
    return false;
}
