#include "apps/vexma/Commands.h"
#include "apps/vexma/FindingsReport.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/SourceOptions.h"
#include "host/import/xml/FileText.h"
#include "host/insight/FileFindings.h"
#include "host/protocol/JsonFindings.h"

#include <filesystem>
#include <map>
#include <memory>

namespace vex {

namespace {

/// How all that was found is written, by the word for `--format`.
using Format = void (*)(std::ostream&, Diagnostics const&, bool all);
std::map<std::string, Format> const formats{
    {"text", &writeFindings},
    {"json",
     [](std::ostream& out, Diagnostics const& found, bool) { out << toJson(found) << '\n'; }},
    {"sarif", [](std::ostream& out, Diagnostics const& found,
                 bool) { out << toSarif(found, VEX_VERSION) << '\n'; }},
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

    int run(Console& console) const {
        if (listsRules) {
            writeRules(console.out());
            return Done;
        }
        if (file.empty() == catalogFile.empty()) {
            throw UsageException("give one file to read: a model, or a catalogue");
        }
        std::string const& given = file.empty() ? catalogFile : file;
        std::string const text = readFileText(given);
        std::string const name = given == "-" ? "standard input" : given;
        Diagnostics const found = examine(text, given, name, console);
        formats.at(format)(console.out(), found, all);
        FindingCounts const counts = countFindings(found);
        complainAbout(counts, all || format != "text", console);
        return counts.errors + (isStrict ? counts.warnings : 0) == 0 ? Done : Unreadable;
    }

    Diagnostics examine(std::string const& text, std::string const& given, std::string const& name,
                        Console const& console) const {
        Progress progress(console);
        auto const report = [&](std::size_t done, std::size_t total) {
            progress.report(done, total);
        };
        return file.empty() || isCatalogueText(text)
                   ? findInCatalogue(text, name,
                                     std::filesystem::path(given).parent_path().string(), report)
                   : findInModel(text, name, report);
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
    return [validate](Console& console) { return validate->run(console); };
}

} // namespace vex
