#include "host/import/kinds/ImportKinds.h"

#include "host/import/cube/CubeImport.h"
#include "host/import/database/DatabaseImport.h"
#include "host/import/database/DatabaseSource.h"
#include "host/import/draft/FinishedImport.h"
#include "host/import/odata/OdataImport.h"
#include "host/import/ossie/OssieImport.h"
#include "host/import/tabular/TabularImport.h"

#include <algorithm>

namespace vex {

namespace {

constexpr ImportOption databaseOptions[] = {
    {"schema", "NAME", "Only schemas of this name; * and ? stand for any characters"},
    {"include", "TABLE", "Only tables of this name, or SCHEMA.TABLE; * and ? as well"},
    {"exclude", "TABLE", "No tables of this name; as with --include"},
    {"password-file", "FILE", "The first line of this file is the password"},
};

constexpr char const* navigationForms[] = {"relationship", "shortcut"};
constexpr ImportOption odataOptions[] = {
    {"navigation", "FORM", "What becomes of navigation properties (default: relationship)",
     navigationForms},
};

constexpr ImportKind kinds[] = {
    {"cube", "a project of cubes and views, YAML: a file or a folder", true, {}, &importCube},
    {"ossie", "an Ossie document, YAML of its core specification 0.2", true, {}, &importOssie},
    {"tabular", "a tabular model, the JSON of a .bim file", true, {}, &importTabular},
    {"database", "a database over ODBC: a connection string, or a data source's name", false,
     databaseOptions, &importDatabase, &shownDatabase},
    {"odata", "the description of an OData service of version 4, its $metadata in XML", true,
     odataOptions, &importOdata},
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
