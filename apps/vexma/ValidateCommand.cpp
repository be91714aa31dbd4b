#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/FindingsReport.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/SourceOptions.h"
#include "host/import/xml/FileText.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/DiagnosticRules.h"
#include "host/insight/ModelChecks.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <tuple>

namespace vex {

namespace {

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

void sortByPlace(Diagnostics& found) {
    std::stable_sort(found.begin(), found.end(), [](Diagnostic const& a, Diagnostic const& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    });
}

void append(Diagnostics& list, Diagnostics const& more) {
    list.insert(list.end(), more.begin(), more.end());
}

/// Reads a model and appends its findings, in the order of their places; null
/// when one is an error.
std::shared_ptr<Model const> examineModel(std::string const& text, std::string const& name,
                                          Console const& console, Diagnostics& list) {
    Progress progress(console);
    LoadOptions options;
    options.keepPositions = true;
    options.progress = [&](std::size_t done, std::size_t total) { progress.Report(done, total); };
    Diagnostics found;
    std::shared_ptr<Model const> model = loadModelText(text, name, options, found);
    if (model != nullptr) {
        checkModel(*model, name, found);
    }
    sortByPlace(found);
    append(list, found);
    return model;
}

/// The model of a catalogue's entry. A file that cannot be read is a finding of
/// the catalogue.
std::shared_ptr<Model const> examineEntry(CatalogueModel const& entry, std::string const& name,
                                          Console const& console, Diagnostics& found,
                                          Diagnostics& inModels) {
    try {
        return examineModel(readFileText(entry.file), entry.file, console, inModels);
    } catch (KRLDocumentException const& problem) {
        found.push_back(
            finding("model-unreadable", name, entry.line, entry.column, problem.what()));
        return nullptr;
    }
}

/// Reads a catalogue and all its models; its own findings come first.
void examineCatalogue(std::string const& text, std::string const& name, std::string const& folder,
                      Console const& console, Diagnostics& list) {
    Diagnostics found;
    Diagnostics inModels;
    auto const catalogue = readCatalogueText(text, name, folder, found);
    if (catalogue != nullptr) {
        checkCatalogue(*catalogue, name, found);
        std::map<std::string, std::shared_ptr<Model const>>
            models; // several paths may share a file
        for (CatalogueModel const& entry : catalogue->models) {
            auto const [model, isNew] = models.try_emplace(entry.file);
            if (isNew) {
                model->second = examineEntry(entry, name, console, found, inModels);
            }
            if (model->second != nullptr) {
                checkGrants(*catalogue, entry, *model->second, name, found);
            }
        }
    }
    sortByPlace(found);
    append(list, found);
    append(list, inModels);
}

/// What the command does with all that was found, by the word for `--format`.
using Report = void (*)(Diagnostics const&, bool all, Console&);
std::map<std::string, Report> const formats{
    {"text", &reportAsText},
    {"json", [](Diagnostics const& found, bool, Console& to) { reportAsJson(found, to); }},
    {"sarif", [](Diagnostics const& found, bool, Console& to) { reportAsSarif(found, to); }},
};

void complainAbout(FindingCounts const& counts, bool all, Console& console) {
    if (counts.errors + counts.warnings + counts.notes == 0) {
        return;
    }
    std::string text = "errors: " + std::to_string(counts.errors) +
                       ", warnings: " + std::to_string(counts.warnings);
    if (counts.notes != 0) {
        text += ", notes: " + std::to_string(counts.notes) + (all ? "" : " (--all shows them)");
    }
    console.complain(text);
}

struct ValidateCommand {
    std::string file;
    std::string catalogFile;
    std::string format = "text";
    bool isStrict = false;
    bool all = false;
    bool listsRules = false;

    int Run(Console& console) const {
        if (listsRules) {
            reportRules(console);
            return Done;
        }
        if (file.empty() == catalogFile.empty()) {
            throw UsageException("give one file to read: a model, or a catalogue");
        }
        std::string const& given = file.empty() ? catalogFile : file;
        std::string const text = readFileText(given);
        std::string const name = given == "-" ? "standard input" : given;
        Diagnostics found;
        if (file.empty() || rootElementOf(text) == "catalog") {
            std::string const folder = std::filesystem::path(given).parent_path().string();
            examineCatalogue(text, name, folder, console, found);
        } else {
            examineModel(text, name, console, found);
        }
        formats.at(format)(found, all, console);
        FindingCounts const counts = countFindings(found);
        complainAbout(counts, all || format != "text", console);
        return counts.errors + (isStrict ? counts.warnings : 0) == 0 ? Done : Unreadable;
    }
};

} // namespace

CommandRun addValidateCommand(CommandSyntax& command) {
    auto const validate = std::make_shared<ValidateCommand>();
    command.add({.name = "FILE",
                 .into = &validate->file,
                 .help = "A model or catalogue, \"-\" for standard input"});
    command.add({.name = "--catalog",
                 .into = &validate->catalogFile,
                 .help = "A catalogue, with all its models",
                 .word = "FILE"});
    command.add({.name = "--format",
                 .into = &validate->format,
                 .help = "How to write the findings",
                 .word = "FORMAT",
                 .showsDefault = true,
                 .choices = {"text", "json", "sarif"}});
    command.add({.name = "--all",
                 .into = &validate->all,
                 .help = "Every finding: notes too, and more than ten of a rule in a file"});
    command.add(
        {.name = "--strict", .into = &validate->isStrict, .help = "Warnings count as errors"});
    command.add({.name = "--rules",
                 .into = &validate->listsRules,
                 .help = "List the rules and read nothing"});
    command.epilog =
        R"(Writes one line for each finding: file:line:column, severity, text, [rule]. json and
sarif hold every finding. Exit status: 3 when one of them is an error, with --strict
also when one is a warning, else 0; notes never count.

Examples:
  vexma validate retail.model.xml
  vexma validate retail.catalog.xml --strict
  vexma validate retail.catalog.xml --format sarif > retail.sarif)";
    return [validate](Console& console) { return validate->Run(console); };
}

} // namespace vex
