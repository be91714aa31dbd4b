#pragma once

#include "KRLException.h"
#include "host/import/tabular/TabularImport.h"
#include "host/import/xml/ModelLoader.h"
#include "tests/host/import/ImportedSource.h"

#include <string>
#include <string_view>

/// A tabular model, imported from a text as the file "m.bim".
class ImportedText : public ImportedSource {
public:
    explicit ImportedText(std::string_view json, vex::ImportRequest request = {}) {
        request.source = "m.bim";
        request.name = request.name.empty() ? "m" : request.name;
        import(std::move(request),
               [&](vex::ImportWork& work) { vex::importTabularText(json, work);
    });
}

/// A model of one table "T" with these members, and what else the model has.
static ImportedText
ofTable(std::string const& members, std::string const& model = "") {
    return ImportedText(R"({"model":{"tables":[{"name":"T",)" + members + "}]" +
                        (model.empty() ? "" : ",") + model + "}}");
}
}
;
