#include "KRLException.h"
#include "host/catalogue/CatalogueReader.h"
#include "host/import/xml/FileText.h"
#include "host/import/xml/ModelLoader.h"

#include <algorithm>
#include <filesystem>

namespace vex {

namespace {

bool isError(Diagnostic const& diagnostic) {
    return diagnostic.severity == Severity::Error;
}

bool hasError(Diagnostics const& found) {
    return std::any_of(found.begin(), found.end(), isError);
}

std::shared_ptr<Catalogue const> orRaise(std::shared_ptr<Catalogue const> catalogue,
                                         Diagnostics const& found) {
    if (catalogue == nullptr) {
        auto const error = std::find_if(found.begin(), found.end(), isError);
        throw KRLDocumentException(error->file, error->line, error->column, error->text);
    }
    return catalogue;
}

void reportUnreadable(KRLDocumentException const& problem, std::string const& name,
                      Diagnostics& found) {
    found.push_back({Severity::Error, "catalogue-unreadable", name, problem.GetLine(),
                     problem.GetColumn(), problem.GetProblem()});
}

} // namespace

std::shared_ptr<Catalogue const> readCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder, Diagnostics& found) {
    auto const catalogue = std::make_shared<Catalogue>();
    Diagnostics problems;
    CatalogueReader handler(*catalogue, name, folder, problems);

    MemorySource source(text);
    try {
        readSax(source, handler, DocumentLimits().attributesPerElement);
    } catch (KRLDocumentException const& problem) {
        reportUnreadable(problem, name, problems);
    }
    handler.tellRest();
    found.insert(found.end(), problems.begin(), problems.end());
    return hasError(problems) ? nullptr : catalogue;
}

std::shared_ptr<Catalogue const> readCatalogue(std::string const& file, Diagnostics& found,
                                               InputLimit const& limit) {
    std::string text;
    try {
        text = readFileText(file, limit);
    } catch (KRLDocumentException const& problem) {
        reportUnreadable(problem, file, found);
        return nullptr;
    }
    return readCatalogueText(text, file, std::filesystem::path(file).parent_path().string(), found);
}

std::shared_ptr<Catalogue const> loadCatalogue(std::string const& file, InputLimit const& limit) {
    Diagnostics found;
    return orRaise(readCatalogue(file, found, limit), found);
}

std::shared_ptr<Catalogue const> loadCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder) {
    Diagnostics found;
    return orRaise(readCatalogueText(text, name, folder, found), found);
}

} // namespace vex
