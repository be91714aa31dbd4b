#pragma once

#include "host/catalogue/Policy.h"
#include "host/import/xml/ModelLoader.h"

#include <string>
#include <string_view>

namespace vex {

/// How many findings there are of each severity.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
};
FindingCounts countFindings(Diagnostics const& found);

/// True when the outermost element of XML text is a catalogue's; reads no
/// further.
bool isCatalogueText(std::string_view text);

/// All that is wrong or doubtful in a model document, in the order of places.
/// `name` stands for the file; `progress` is called while the document is read. When the call's
/// `Budget` ends it, one of the findings says so.
Diagnostics findInModel(std::string const& text, std::string const& name,
                        decltype(LoadOptions::progress) const& progress = {});

/// The same of a catalogue, whose own findings come first, and of its models,
/// each file read once; model files are taken as relative to `folder`. One that
/// cannot be read is a finding of the catalogue; a policy that cannot is an error of its own.
Diagnostics findInCatalogue(std::string const& text, std::string const& name,
                            std::string const& folder,
                            decltype(LoadOptions::progress) const& progress = {},
                            InputLimit const& ofModels = modelLimit,
                            InputLimit const& ofPolicies = PolicyLimits::bytes);

} // namespace vex
