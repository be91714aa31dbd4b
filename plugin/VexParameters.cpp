#include "plugin/VexParameters.h"

#include "KRLIDOM_Element.h"
#include "VexVariant.h"
#include "provider/VexConstants.h"

#include <cstdio>

namespace {

// A pointer that points to nothing is no value of its type.
bool holdsNothing(VexVariant const& parameter) {
    switch (parameter.GetType()) {
    case VexVariant::String:
        return static_cast<I18NString*>(parameter) == nullptr;
    case VexVariant::Node:
        return static_cast<KRLIDOM_Node*>(parameter) == nullptr;
    default:
        return false;
    }
}

bool told(bool good) {
    if (!good) {
        std::puts(
            "\n\n *** FAILURE: VemAction::validateParameter at invalid VexVariant type *** \n");
    }
    return good;
}

} // namespace

bool HasParameterType(VexVariant const& parameter, unsigned short expectedType) {
    return told(parameter.GetType() == expectedType && !holdsNothing(parameter));
}

bool HoldsElement(VexVariant const& parameter) {
    auto const* const node = static_cast<KRLIDOM_Node*>(parameter);
    return told(node != nullptr && !KRLIDOM_Element(*node).isNull());
}
