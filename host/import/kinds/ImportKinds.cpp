#include "host/import/kinds/ImportKinds.h"

#include "host/import/draft/FinishedImport.h"
#include "host/import/tabular/TabularImport.h"

#include <algorithm>

namespace vex {

namespace {

constexpr ImportKind kinds[] = {
    {"tabular", "a tabular model, the JSON of a .bim file", true, {}, &importTabular},
};

} // namespace

std::span<ImportKind const> importKinds() {
    return kinds;
}

ImportKind const* findImportKind(std::string_view name) {
    auto const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                   [&](ImportKind const& each) { return each.name == name; });
    return kind == std::end(kinds) ? nullptr : kind;
}

ImportOutcome runImport(ImportKind const& kind, ImportRequest const& request) {
    ImportWork work(request);
    ImportOutcome outcome;
    try {
        kind.read(work);
        outcome.documents = finishImport(work);
    } catch (SourceReport::Stop const&) {
        outcome.documents.reset(); // the reason was reported
    }
    outcome.account = std::move(work.account);
    outcome.found = std::move(work.found);
    return outcome;
}

} // namespace vex
