#include "host/import/ossie/OssieImport.h"

#include "host/import/ossie/OssieKeys.h"
#include "host/import/ossie/OssieModel.h"
#include "host/import/xml/FileText.h"
#include "host/import/yamltree/YamlTree.h"

namespace vex {

namespace {

constexpr char const* knownVersion = "0.2";

void readVersion(SourceEntries& document, ImportWork& work) {
    std::string const version = document.text("version").value_or("");
    if (!version.starts_with(knownVersion)) {
        work.account.note((version.empty() ? std::string("the document says no version")
                                           : "the document is of version " + version) +
                              "; it was read as one of " + knownVersion,
                          document.position());
    }
}

/// An ontology maps its concepts to a semantic model that stands in the mapping.
void readMapping(SourceTree const& tree, SourceTree::Value value, ImportWork& work) {
    SourceEntries mapping(tree, value, "ontology mapping", work);
    if (SourceTree::Value const model = mapping.map("semantic_model"); model != SourceTree::None) {
        readOssieModel(tree, model, work);
    }
    mapping.leaveOutRest(unmappedOssieKeys(), mapping.kind());
}

} // namespace

void importOssie(ImportWork& work) {
    importOssieText(readFileText(work.request.source, work.request.limits.sourceBytes), work);
}

void importOssieText(std::string_view yaml, ImportWork& work) {
    SourceTree const tree = readYamlTree(yaml, work);
    if (tree.isEmpty()) {
        work.refuse("the source holds nothing; give an Ossie document");
    }
    work.draft.model.setDefaultLocale(I18NLocale(I18NString::fromUtf8(work.request.language)));
    SourceEntries document(tree, 0, "document", work);
    readVersion(document, work);
    for (SourceTree::Value const each : document.list("semantic_model")) {
        readOssieModel(tree, each, work);
    }
    for (SourceTree::Value const each : document.list("ontology_mappings")) {
        readMapping(tree, each, work);
    }
    document.leaveOutRest(unmappedOssieKeys(), "");
    if (work.draft.model.size() == 1) {
        work.refuse("the document has no \"semantic_model\" with anything in it, so there is "
                    "nothing to import; give an Ossie document with one",
                    document.position());
    }
}

} // namespace vex
