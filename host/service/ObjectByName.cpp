#include "host/service/ObjectByName.h"

#include "host/store/image/HostException.h"

namespace vex {

namespace {
constexpr char const* howToNameObjects =
    "give an id, or a reference like [Namespace].[Query subject]";

/// As much of a text as people read.
std::string shown(I18NString const& text) {
    constexpr int longest = 200;
    return text.length() <= longest ? text.toUtf8() : text.substring(0, longest).toUtf8() + "...";
}

} // namespace

VEX_HANDLE lookUpObject(Model const& model, I18NString const& idOrReference) {
    VEX_HANDLE const object = model.findById(idOrReference);
    return object.IsNotNull() ? object : model.GetObjectByReference(idOrReference, 0);
}

std::string unknownObjectText(I18NString const& idOrReference,
                              std::vector<Suggestion> const& suggestions) {
    return "the model has no object with the id or reference \"" + shown(idOrReference) + "\"; " +
           (suggestions.empty() ? howToNameObjects : toQuestion(suggestions));
}

VEX_HANDLE findObject(Model const& model, I18NString const& idOrReference,
                      MayBeNamed const& mayBeNamed) {
    VEX_HANDLE const object = lookUpObject(model, idOrReference);
    if (!object.IsNotNull()) {
        throw HostException(
            unknownObjectText(idOrReference, suggestObjects(model, idOrReference, mayBeNamed)));
    }
    return object;
}

} // namespace vex
