#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// Appends a finding for each doubtful spot of a model (see `diagnosticRules`).
/// `file` stands in the findings; their places need a model that was loaded with
/// positions.
void checkModel(Model const& model, std::string const& file, Diagnostics& found);

/// False for a model path under which nobody is restricted.
bool isRestrictedPath(I18NString const& path);

/// Appends a warning for each doubtful spot of a catalogue itself: a model path
/// under which nobody is restricted, a user who may use no view.
void checkCatalogue(Catalogue const& catalogue, std::string const& file, Diagnostics& found);

/// Appends a warning for each grant of a view that the model lacks, and for each
/// role that a grant or a view of the model names and no user has.
void checkGrants(Catalogue const& catalogue, CatalogueModel const& entry, Model const& model,
                 std::string const& file, Diagnostics& found);

/// A shortcut that is met again when it is expanded, and how: from its target
/// through the shortcuts on the way and their targets back to itself. Empty when
/// a model has so many that following each would take too long.
struct EndlessShortcut {
    VEX_HANDLE shortcut;
    std::vector<VEX_HANDLE> cycle;
};

/// In document order.
std::vector<EndlessShortcut> findEndlessShortcuts(Model const& model);

} // namespace vex
