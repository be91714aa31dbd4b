#include "host/protocol/JsonImport.h"

#include "host/import/draft/ImportAccount.h"
#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

void addPosition(Json& to, std::string const& file, DocumentPosition position) {
    if (!file.empty()) {
        to["file"] = file;
    }
    if (position.line != 0) {
        to["line"] = position.line;
        to["column"] = position.column;
    }
}

Json describe(ImportAccount::Omission const& omission) {
    Json places = Json::array();
    for (ImportAccount::Place const& place : omission.places) {
        Json& told = places.emplace_back(Json{{"name", place.name}});
        addPosition(told, place.file, place.position);
    }
    return {{"kind", omission.kind},
            {"reason", omission.reason},
            {"count", omission.count},
            {"places", std::move(places)}};
}

} // namespace

std::string toJson(ImportReport const& report, ImportAccount const& account) {
    Json whole{{"kind", report.kind}, {"source", report.source}, {"written", report.written}};
    Json& read = whole["read"] = Json::array();
    for (ImportAccount::Row const& row : account.rows()) {
        read.push_back({{"kind", row.kind},
                        {"read", row.read},
                        {"mapped", row.mapped},
                        {"leftOut", row.read - row.mapped}});
    }
    Json& leftOut = whole["leftOut"] = Json::array();
    for (ImportAccount::Omission const& omission : account.omissions()) {
        leftOut.push_back(describe(omission));
    }
    Json& notes = whole["notes"] = Json::array();
    for (ImportAccount::Note const& note : account.notes()) {
        Json& told = notes.emplace_back(Json{{"text", note.text}});
        addPosition(told, note.file, note.position);
    }
    whole["notesLeftOut"] = account.notesLeftOut();
    return toText(whole, JsonForm::Indented);
}

} // namespace vex
