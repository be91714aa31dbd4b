#include "host/insight/FileFindings.h"

#include "KRLException.h"
#include "host/catalogue/PolicyViews.h"
#include "host/import/xml/FileText.h"
#include "host/insight/DiagnosticRules.h"
#include "host/insight/ModelChecks.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace vex {

namespace {

using ProgressReport = decltype(LoadOptions::progress);

/// The name of the root element of XML text, found without reading the rest; ""
/// when there is none in sight.
std::string_view rootElementOf(std::string_view text) {
    struct Skipped {
        std::string_view opening;
        std::string_view closing;
    };
    constexpr Skipped prolog[] = {{"<?", "?>"}, {"<!--", "-->"}};
    std::size_t at = text.find('<');
    while (at != std::string_view::npos) {
        auto const skipped =
            std::find_if(std::begin(prolog), std::end(prolog), [&](Skipped const& each) {
                return text.substr(at).starts_with(each.opening);
            });
        if (skipped == std::end(prolog)) {
            std::string_view const name = text.substr(at + 1);
            return name.substr(0, name.find_first_of(" \t\r\n/>"));
        }
        at = text.find(skipped->closing, at);
        at = at == std::string_view::npos ? at : text.find('<', at);
    }
    return {};
}

/// Those of `first`, then of the other files that it is read with.
void sortByPlace(Diagnostics& found, std::string const& first) {
    auto const placeOf = [&](Diagnostic const& each) {
        return std::make_tuple(each.file != first, std::string_view(each.file), each.line,
                               each.column);
    };
    std::stable_sort(found.begin(), found.end(), [&](Diagnostic const& a, Diagnostic const& b) {
        return placeOf(a) < placeOf(b);
    });
}

void append(Diagnostics& list, Diagnostics const& more) {
    list.insert(list.end(), more.begin(), more.end());
}

Diagnostic unfinished(std::string const& file, KRLLimitException const& stopped) {
    return finding("unfinished", file, 0, 0,
                   std::string("not finished, so not everything is known: ") + stopped.what());
}

/// Reads a model and appends its findings, in the order of their places; null
/// when one is an error.
std::shared_ptr<Model const> examineModel(std::string const& text, std::string const& name,
                                          ProgressReport const& progress, Diagnostics& list,
                                          Policy const* policy = nullptr) {
    LoadOptions options;
    std::optional<PolicyViews> views;
    if (policy != nullptr) {
        options.addition = &views.emplace(*policy);
    }
    options.keepPositions = true;
    options.progress = progress;
    Diagnostics found;
    std::shared_ptr<Model const> model;
    try {
        model = loadModelText(text, name, options, found);
        if (model != nullptr) {
            checkModel(*model, name, found, policy);
        }
    } catch (KRLLimitException const& stopped) {
        found.push_back(unfinished(name, stopped));
        model = nullptr;
    }
    sortByPlace(found, name);
    append(list, found);
    return model;
}

/// The model of a catalogue's entry.
std::shared_ptr<Model const> examineEntry(CatalogueModel const& entry,
                                          ProgressReport const& progress, InputLimit const& limit,
                                          CatalogueFindings& findings, Diagnostics& inModels) {
    try {
        return examineModel(readFileText(entry.file, limit), entry.file, progress, inModels,
                            entry.policy.get());
    } catch (KRLDocumentException const& problem) {
        findings.add("model-unreadable", entry.line, entry.column,
                     [&] { return std::string(problem.what()); });
        return nullptr;
    }
}

} // namespace

FindingCounts countFindings(Diagnostics const& found) {
    FindingCounts counts;
    for (Diagnostic const& each : found) {
        (each.severity == Severity::Error     ? counts.errors
         : each.severity == Severity::Warning ? counts.warnings
                                              : counts.notes)++;
    }
    return counts;
}

bool isCatalogueText(std::string_view text) {
    return rootElementOf(text) == "catalog";
}

Diagnostics findInModel(std::string const& text, std::string const& name,
                        ProgressReport const& progress) {
    Diagnostics found;
    examineModel(text, name, progress, found);
    return found;
}

namespace {

/// Appends what is found in a catalogue itself, and in its models.
void examineCatalogue(std::string const& text, std::string const& name, std::string const& folder,
                      ProgressReport const& progress, InputLimit const& ofModels,
                      InputLimit const& ofPolicies, Diagnostics& found, Diagnostics& inModels) {
    auto const catalogue = readCatalogueText(text, name, folder, found, {.limit = ofPolicies});
    if (catalogue == nullptr) {
        return;
    }
    CatalogueFindings findings(name, found);
    checkCatalogue(*catalogue, findings);
    GrantCheck const grants(*catalogue, findings);
    // Several paths may share a file, and its policy.
    std::map<std::pair<std::string, std::string>, std::optional<GrantedModel>> models;
    for (CatalogueModel const& entry : catalogue->models) {
        Budget::charge();
        grants.checkPolicy(entry);
        auto const [model, isNew] = models.try_emplace({entry.file, entry.policyFile});
        if (isNew) {
            auto const examined = examineEntry(entry, progress, ofModels, findings, inModels);
            if (examined != nullptr) {
                model->second.emplace(*examined);
            }
        }
        if (model->second) {
            grants.check(entry, *model->second);
        }
    }
    findings.tellRest();
}

} // namespace

Diagnostics findInCatalogue(std::string const& text, std::string const& name,
                            std::string const& folder, ProgressReport const& progress,
                            InputLimit const& ofModels, InputLimit const& ofPolicies) {
    Diagnostics found;
    Diagnostics inModels;
    try {
        examineCatalogue(text, name, folder, progress, ofModels, ofPolicies, found, inModels);
    } catch (KRLLimitException const& stopped) {
        found.push_back(unfinished(name, stopped));
    }
    sortByPlace(found, name);
    append(found, inModels);
    return found;
}

} // namespace vex
