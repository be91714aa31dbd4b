#include "KRLException.h"
#include "host/catalogue/CatalogueReader.h"
#include "host/import/xml/FileText.h"
#include "host/import/xml/ModelLoader.h"

#include <algorithm>
#include <filesystem>
#include <map>

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

void report(char const* rule, KRLDocumentException const& problem, std::string const& name,
            Diagnostics& found) {
    found.push_back({Severity::Error, rule, name, problem.GetLine(), problem.GetColumn(),
                     problem.GetProblem()});
}

/// Those of all models, each file once.
void readPolicies(Catalogue& catalogue, std::string const& name, InputLimit const& limit,
                  Diagnostics& found) {
    std::map<std::string, std::shared_ptr<Policy const>> read;
    PolicyApplication application(catalogue);
    std::size_t grants = 0;
    for (CatalogueModel& model : catalogue.models) {
        std::string const& file = model.policyFile;
        if (file.empty()) {
            continue;
        }
        auto const [policy, isNew] = read.try_emplace(file);
        if (isNew) {
            try {
                policy->second = readPolicy(file, limit);
            } catch (KRLDocumentException const& problem) {
                report("policy-unreadable", problem, file, found);
            }
        }
        if (policy->second == nullptr) {
            continue;
        }
        grants += policy->second->grants.size();
        if (grants > PolicyLimits::grantsOfAll) {
            found.push_back({Severity::Error, "policy-too-large", name, model.line, model.column,
                             "up to here the policies of the models grant more than " +
                                 std::to_string(PolicyLimits::grantsOfAll) +
                                 " views; split the catalogue"});
            return;
        }
        application.apply(model, policy->second);
    }
}

} // namespace

std::shared_ptr<Catalogue const> readCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder, Diagnostics& found,
                                                   PolicyFiles policies) {
    auto const catalogue = std::make_shared<Catalogue>();
    Diagnostics problems;
    CatalogueReader handler(*catalogue, name, folder, problems);

    MemorySource source(text);
    try {
        readSax(source, handler, DocumentLimits().attributesPerElement);
    } catch (KRLDocumentException const& problem) {
        report("catalogue-unreadable", problem, name, problems);
    }
    if (policies.areRead && !hasError(problems)) {
        readPolicies(*catalogue, name, policies.limit, problems);
    }
    handler.tellRest();
    found.insert(found.end(), problems.begin(), problems.end());
    return hasError(problems) ? nullptr : catalogue;
}

std::shared_ptr<Catalogue const> readCatalogue(std::string const& file, Diagnostics& found,
                                               InputLimit const& limit, PolicyFiles policies) {
    std::string text;
    try {
        text = readFileText(file, limit);
    } catch (KRLDocumentException const& problem) {
        report("catalogue-unreadable", problem, file, found);
        return nullptr;
    }
    return readCatalogueText(text, file, std::filesystem::path(file).parent_path().string(), found,
                             policies);
}

std::shared_ptr<Catalogue const> loadCatalogue(std::string const& file, InputLimit const& limit,
                                               PolicyFiles policies) {
    Diagnostics found;
    return orRaise(readCatalogue(file, found, limit, policies), found);
}

std::shared_ptr<Catalogue const> loadCatalogueText(std::string_view text, std::string const& name,
                                                   std::string const& folder) {
    Diagnostics found;
    return orRaise(readCatalogueText(text, name, folder, found), found);
}

} // namespace vex
