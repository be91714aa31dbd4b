#include "host/insight/ObjectReference.h"

#include "VexObject.h"
#include "host/insight/ObjectText.h"

#include <string>

namespace vex {

bool hasReference(Model const& /*model*/, VEX_HANDLE element) {
    VEX_HANDLE at = element;
    while (at.IsNotNull() && classOf(at) != "namespace") {
        at = VexObject(at).GetParent();
    }
    return at.IsNotNull();
}

std::u16string_view nameText(Model const& model, VEX_HANDLE element) {
    I18NString const name = nameIn(model.defaultLocale(), element);
    return name.empty() ? std::u16string_view() : name.view(); // what it shares stays
}

I18NString boundedReferenceOf(Model const& model, VEX_HANDLE object) {
    constexpr std::size_t most = 1'000;
    I18NString reference;
    if (!hasReference(model, object)) {
        return reference;
    }
    std::size_t length = 0; // of the names, which are all that can be long
    for (VEX_HANDLE at = object; at.IsNotNull() && length <= most; at = VexObject(at).GetParent()) {
        length += nameText(model, at).size();
    }
    if (length <= most) {
        model.getReference(object, reference);
        return reference;
    }
    std::u16string_view const name = nameText(model, object);
    reference.append("...[").append(name.substr(name.size() - std::min(name.size(), most)));
    return reference.append("] (object ")
        .append(I18NString(std::to_string(numberOf(model, object)).c_str()))
        .append(")");
}

} // namespace vex
