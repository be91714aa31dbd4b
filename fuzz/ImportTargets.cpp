#include "fuzz/FuzzTargets.h"
#include "host/import/cube/CubeImport.h"
#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odata/OdataImport.h"
#include "host/import/ossie/OssieImport.h"
#include "host/import/tabular/TabularImport.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

struct Outcome {
    std::optional<vex::ImportedDocuments> documents;
    vex::Diagnostics found;
};

using ReadText = void (*)(std::string_view, vex::ImportWork&);
using Options = std::map<std::string, std::vector<std::string>>;

Outcome importOnce(std::string_view input, ReadText read, Options const& options) {
    vex::ImportRequest request;
    request.source = "source";
    request.options = options;
    request.name = "m";
    request.limits.viewEntries = 100'000;
    request.limits.sourceValues = 200'000; // a few lines of aliases would come to millions
    vex::ImportWork work(std::move(request));
    Outcome outcome;
    try {
        read(input, work);
        outcome.documents = vex::finishImport(work); // reads again what it wrote
    } catch (vex::SourceReport::Stop const&) {
        outcome.documents.reset();
    }
    std::size_t leftOut = 0;
    for (vex::ImportAccount::Omission const& omission : work.account.omissions()) {
        fuzz::require(!omission.reason.empty() && omission.count >= omission.places.size(),
                      "what is left out has a reason and places");
        leftOut += omission.count;
    }
    for (vex::ImportAccount::Row const& row : work.account.rows()) {
        fuzz::require(row.read >= row.mapped, "what is mapped was read");
        leftOut -= row.read - row.mapped;
    }
    fuzz::require(leftOut == 0, "what is not mapped is left out with a reason");
    outcome.found = std::move(work.found);
    return outcome;
}

/// Imported or refused with a reason, and alike the next time.
void importTwice(std::string_view input, ReadText read, Options const& options = {}) {
    Outcome const first = importOnce(input, read, options);
    fuzz::require(first.documents.has_value() == first.found.empty(),
                  "a source is imported, or an error is reported");
    for (vex::Diagnostic const& problem : first.found) {
        fuzz::require(!problem.text.empty(), "an error has a text");
    }
    Outcome const second = importOnce(input, read, options);
    fuzz::require(
        first.documents.has_value() == second.documents.has_value() &&
            (!first.documents || (first.documents->model == second.documents->model &&
                                  first.documents->catalogue == second.documents->catalogue)),
        "importing again gives the same documents");
}

} // namespace

void fuzz::tabular(std::string_view input) {
    importTwice(input, &vex::importTabularText);
}

void fuzz::odata(std::string_view input) {
    importTwice(input, &vex::importOdataText);
    importTwice(input, &vex::importOdataText, {{"navigation", {"shortcut"}}});
}

void fuzz::ossie(std::string_view input) {
    importTwice(input, &vex::importOssieText);
}

void fuzz::cube(std::string_view input) {
    importTwice(input, [](std::string_view yaml, vex::ImportWork& work) {
        vex::importCubeTexts({{"m.yml", std::string(yaml)}}, work);
    });
}
