#include "host/import/tabular/TabularImport.h"

#include "host/import/draft/PlainText.h"
#include "host/import/json/JsonTree.h"
#include "host/import/tabular/DisplayFolders.h"
#include "host/import/tabular/TabularCultures.h"
#include "host/import/tabular/TabularRoles.h"
#include "host/import/tabular/TabularTables.h"
#include "host/import/tabular/UnmappedKeys.h"
#include "host/import/xml/FileText.h"

#include <utility>

namespace vex {

namespace {

/// The language of names that no culture translates.
void setLanguage(SourceEntries& model, ImportWork& work) {
    I18NString language = I18NString::fromUtf8(work.request.language);
    if (auto const said = model.text("culture")) {
        I18NString const culture = I18NString::fromUtf8(*said);
        if (I18NLocale::isKnown(culture)) {
            language = culture;
        } else {
            work.account.note("the model's culture " + inQuotes(culture.view()) +
                                  " is no language; its names count as " + language.toUtf8(),
                              model.position());
        }
    }
    work.draft.model.setDefaultLocale(I18NLocale(language));
}

/// Functions are no objects of a model, but what calls one names what it names.
void readFunctions(SourceEntries& model, TabularModel& parts, ImportWork& work) {
    for (SourceTree::Value const each : model.list("functions")) {
        SourceEntries function(model.tree(), each, "function", work);
        function.tellNothing();
        TabularPart part{.kind = TabularKind::Function,
                         .name = function.name(),
                         .expression = function.text("expression").value_or(""),
                         .position = function.position()};
        work.account.leftOut("function", "it is no object of a model", {part.name, part.position});
        parts.parts.push_back(std::move(part));
    }
}

void readModel(SourceEntries& model, std::string name, ImportWork& work) {
    ModelDraft& draft = work.draft.model;
    setLanguage(model, work);
    if (auto const own = model.text("name"); name.empty() && own) {
        name = trimmed(*own);
    }
    TabularModel parts;
    parts.spaceName = name.empty() ? work.request.name : name;
    parts.space = draft.add(ModelDraft::Root, "namespace", {"model", "model"}, model.position());
    draft.set(parts.space, "name", parts.spaceName);
    draft.set(parts.space, "description", model.text("description").value_or(""));

    DisplayFolders folders(work);
    readTables(model, parts, folders, work);
    readRelationships(model, parts, work);
    readFunctions(model, parts, work);
    readCultures(model, parts, folders, work);
    readRoles(model, parts, work);
    model.leaveOutRest(unmappedTabularKeys(), parts.spaceName);
}

} // namespace

void importTabular(ImportWork& work) {
    importTabularText(readFileText(work.request.source, work.request.limits.sourceBytes), work);
}

void importTabularText(std::string_view json, ImportWork& work) {
    SourceTree const tree = readJsonTree(json, work);
    SourceEntries database(tree, 0, "database", work);
    SourceTree::Value const value = database.map("model");
    if (value == SourceTree::None) {
        work.refuse("the object has no \"model\", so it is no tabular model; give the .bim file of "
                    "one",
                    database.position());
    }
    std::string const name = trimmed(database.text("name").value_or(""));
    SourceEntries model(tree, value, "model", work);
    readModel(model, name, work);
    database.leaveOutRest(unmappedTabularKeys(), name);
}

} // namespace vex
