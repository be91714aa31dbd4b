#pragma once

#include "host/store/image/Model.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vex {

/// The number of an element in document order, as `Model::getElement` takes it; that of all
/// elements for what is none of the model's.
inline std::size_t numberOf(Model const& model, VEX_HANDLE element) {
    std::uint32_t const number = element.Number() - model.GetRootObject().Number();
    return std::min<std::size_t>(number, model.elementCount());
}

/// True when it has a reference; what it is is not worked out.
bool hasReference(Model const& model, VEX_HANDLE element);

/// The element's name in the default language; "" without one. A part of the model's memory.
std::u16string_view nameText(Model const& model, VEX_HANDLE element);

/// The element's reference as a label has it: of a very long one the end, and the object's
/// number in the model, which tells it from others that end alike. "" outside of namespaces.
I18NString boundedReferenceOf(Model const& model, VEX_HANDLE object);

} // namespace vex
