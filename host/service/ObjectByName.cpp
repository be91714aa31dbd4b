#include "host/service/ObjectByName.h"

#include "host/service/NameSuggestion.h"
#include "host/store/image/HostException.h"

namespace vex {

namespace {
constexpr char const* howToNameObjects =
    "give an id, or a reference like [Namespace].[Query subject]";
}

VEX_HANDLE findObject(Model const& model, I18NString const& idOrReference) {
    VEX_HANDLE object = model.findById(idOrReference);
    if (!object.IsNotNull()) {
        object = model.GetObjectByReference(idOrReference, 0);
    }
    if (!object.IsNotNull()) {
        std::string const question = toQuestion(suggestObjects(model, idOrReference));
        throw HostException("the model has no object with the id or reference \"" +
                            idOrReference.toUtf8() + "\"; " +
                            (question.empty() ? howToNameObjects : question));
    }
    return object;
}

} // namespace vex
