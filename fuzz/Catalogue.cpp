#include "host/catalogue/Catalogue.h"

#include "fuzz/FuzzTargets.h"

#include <algorithm>

void fuzz::catalogue(std::string_view input) {
    vex::Diagnostics found;
    auto const catalogue =
        vex::readCatalogueText(input, "c.xml", "folder", found, {.areRead = false});
    bool const hasError = std::any_of(found.begin(), found.end(), [](auto const& problem) {
        return problem.severity == vex::Severity::Error;
    });
    require((catalogue == nullptr) == hasError, "a catalogue is read or an error is reported");
    for (vex::Diagnostic const& problem : found) {
        require(!problem.text.empty() && problem.line != 0, "an error has a place");
    }
    if (catalogue == nullptr) {
        return;
    }
    for (vex::CatalogueModel const& model : catalogue->models) {
        require(catalogue->findModel(model.path) == &model, "a path names its model");
        for (vex::CatalogueUser const& user : catalogue->users) {
            auto const views = vex::availableViews(model, user);
            require(std::adjacent_find(views.begin(), views.end(),
                                       [](auto const& a, auto const& b) { return !(a < b); }) ==
                        views.end(),
                    "views ascend, each once");
        }
    }
}
