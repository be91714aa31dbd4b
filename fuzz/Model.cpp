#include "KRLException.h"
#include "KRLIDOM_Writer.h"
#include "VexObject.h"
#include "fuzz/FuzzSession.h"
#include "fuzz/FuzzTargets.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/ModelChecks.h"
#include "host/store/image/ImageFile.h"

namespace {

constexpr std::string_view whole =
    "<Metadata Depth='0'><Property n='*/@*'/><Property n='*/@_path'/><Property n='*/@_ref'/>"
    "<Property n='*/*'/><Property n='*/folder'/><Property n='*/querySubject'/>"
    "<Property n='/@supportedLocales'/></Metadata>";

// Each object is its parent's child, and found by its id.
void requireLinked(vex::Model const& model) {
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        VexObject const object(element);
        fuzz::require(object.IsValid(), "a loaded object is valid");
        I18NString id;
        if (object.GetId(id) && !id.empty()) {
            fuzz::require(model.findById(id) == element, "an id names its object");
        }
        Vex_Handle_Collection children;
        object.childObjects(children, nullptr, nullptr);
        for (VEX_HANDLE const child : children) {
            fuzz::require(VexObject(child).GetParent() == element, "a child has its parent");
        }
        Vex_Handle_Collection properties;
        object.Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            fuzz::require(VexObject(property).GetParent() == element, "a property has its owner");
        }
    }
}

} // namespace

void fuzz::model(std::string_view input) {
    vex::Diagnostics found;
    vex::LoadOptions options;
    options.keepPositions = true;
    auto const model = vex::loadModelText(input, "m.xml", options, found);
    require((model == nullptr) == !found.empty(), "a model is loaded or an error is reported");
    for (vex::Diagnostic const& problem : found) {
        // An image has no lines.
        bool const hasPlace = problem.line != 0 || vex::isImage(input);
        require(!problem.text.empty() && hasPlace, "an error has a place");
    }
    if (model == nullptr) {
        return;
    }
    requireLinked(*model);
    vex::checkModel(*model, "m.xml", found);
    vex::MetadataAnswer const answer = request(visitAlone(model), whole);
    requireSound(answer);
    KRLIDOM_Writer::toUtf8(answer.response.document()); // raises what it cannot write
}
