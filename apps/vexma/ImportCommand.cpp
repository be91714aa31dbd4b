#include "I18NLocale.h"
#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ImportReport.h"
#include "apps/vexma/Interrupt.h"
#include "apps/vexma/SourceOptions.h"
#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/WrittenFiles.h"
#include "host/import/kinds/ImportKinds.h"
#include "host/protocol/JsonImport.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

namespace vex {

namespace {

std::vector<std::string> namesOfKinds() {
    std::vector<std::string> names;
    for (ImportKind const& kind : importKinds()) {
        names.emplace_back(kind.name);
    }
    return names;
}

using Clock = std::chrono::steady_clock;

std::optional<Clock::time_point> deadlineIn(std::optional<double> const& seconds) {
    constexpr double longest = 1e9; // a deadline of thirty years is none
    if (!seconds.has_value() || *seconds >= longest) {
        return std::nullopt;
    }
    return Clock::now() +
           std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(*seconds));
}

struct ImportCommand {
    std::string kindName;
    std::string folder;
    std::string reportFile;
    bool membersOnly = false;
    std::optional<double> deadlineSeconds;
    ImportRequest request;
    std::map<std::string, std::vector<std::string>> optionsOfKinds; // by name, of all kinds

    int run(Console& console) {
        ImportKind const& kind = *findImportKind(kindName); // the command line was checked
        complete(kind);
        ImportOutcome const outcome = runInTime(kind);
        for (Diagnostic const& each : outcome.found) {
            console.complain(toString(each));
        }
        if (!outcome.documents.has_value()) {
            console.complain("nothing was written");
            return Unreadable;
        }
        write(*outcome.documents, outcome.account, console);
        return Done;
    }

    /// What is no file may keep one waiting: an interrupt ends it as it ends any call.
    ImportOutcome runInTime(ImportKind const& kind) const {
        std::optional<InterruptScope> interrupt;
        Budget::Allowed allowed{.deadline = deadlineIn(deadlineSeconds)};
        if (!kind.isFile) {
            allowed.cancelled = &interrupt.emplace().isInterrupted();
        }
        Budget const budget(allowed);
        try {
            return runImport(kind, request);
        } catch (KRLLimitException const&) { // it speaks of answers
            if (interrupt.has_value() && interrupt->isInterrupted()) {
                throw KRLLimitException("the import was interrupted; nothing was written");
            }
            if (allowed.deadline.has_value() && Clock::now() >= *allowed.deadline) {
                throw KRLLimitException("the import takes longer than --deadline allows, and "
                                        "nothing was written; allow more time, or import less");
            }
            throw;
        }
    }

    /// Fills in what the command line leaves to its other parts.
    void complete(ImportKind const& kind) {
        if (request.name.empty() && kind.isFile && request.source != "-") {
            std::filesystem::path const source(request.source);
            bool const isFolder = !source.has_filename(); // "models/"
            request.name = (isFolder ? source.parent_path() : source).stem().string();
        }
        if (kind.shown != nullptr) {
            request.shownSource = kind.shown(request.source);
        }
        if (request.name.empty()) {
            throw UsageException("the source has no name of its own; give one with --name NAME");
        }
        if (!canNameImport(request.name)) {
            throw UsageException("\"" + printable(request.name, false) +
                                 "\" cannot name files and a model path; give another with --name "
                                 "NAME, without \"/\", \"\\\" and \".\" at its beginning");
        }
        if (!I18NLocale::isKnown(I18NString::fromUtf8(request.language))) {
            throw UsageException("the locale \"" + printable(request.language, false) +
                                 "\" is unknown; write one like de or de_AT");
        }
        request.hasStandIns = !membersOnly;
        for (auto const& [name, values] : optionsOfKinds) {
            bool const isOfKind = std::any_of(
                kind.options.begin(), kind.options.end(),
                [&, option = name](ImportOption const& each) { return option == each.name; });
            if (!values.empty() && !isOfKind) {
                throw UsageException("--" + name + " is no option of \"import " + kindName +
                                     "\"; leave it out");
            }
            if (!values.empty()) {
                request.options[name] = values;
            }
        }
    }

    void write(ImportedDocuments const& documents, ImportAccount const& account,
               Console& console) const {
        auto const place = [&](char const* ending) {
            return (std::filesystem::path(folder) / (request.name + ending)).string();
        };
        std::vector<FileToWrite> files{{place(".model.xml"), documents.model},
                                       {place(".catalog.xml"), documents.catalogue}};
        ImportReport const report{kindName, request.sourceName(), {files[0].file, files[1].file}};
        std::string const json = reportFile.empty() ? "" : toJson(report, account) + "\n";
        if (!reportFile.empty() && reportFile != "-") {
            files.push_back({reportFile, json});
        }
        writeFilesTogether(files);
        if (reportFile == "-") {
            console.out() << json;
            return;
        }
        for (std::string const& file : report.written) {
            console.out() << "wrote " << printable(file, false) << '\n';
        }
        console.out() << '\n';
        writeAccount(console.out(), account);
    }
};

void addOptionsOfKinds(CommandSyntax& command, ImportCommand& importing) {
    for (ImportKind const& kind : importKinds()) {
        for (ImportOption const& option : kind.options) {
            auto const [values, isNew] = importing.optionsOfKinds.try_emplace(option.name);
            if (isNew) {
                command.add({.name = std::string("--") + option.name,
                             .into = &values->second,
                             .help = option.help,
                             .word = option.word,
                             .group = "Options of some kinds",
                             .choices = {option.choices.begin(), option.choices.end()}});
            }
        }
    }
}

} // namespace

CommandRun addImportCommand(CommandSyntax& command) {
    auto const importing = std::make_shared<ImportCommand>();
    command.add({.name = "KIND",
                 .into = &importing->kindName,
                 .help = "What the source is",
                 .isRequired = true,
                 .choices = namesOfKinds()});
    command.add({.name = "SOURCE",
                 .into = &importing->request.source,
                 .help = "Where to read from; \"-\" for standard input",
                 .isRequired = true});
    command.add({.name = "-o,--output",
                 .into = &importing->folder,
                 .help = "The folder to write NAME.model.xml and NAME.catalog.xml into",
                 .word = "DIR",
                 .isRequired = true});
    command.add({.name = "--name",
                 .into = &importing->request.name,
                 .help = "What it is called (default: as the file, without its ending)",
                 .word = "NAME"});
    command.add({.name = "--locale",
                 .into = &importing->request.language,
                 .help = "The language of a source that does not say its own",
                 .word = "L",
                 .showsDefault = true});
    command.add({.name = "--owner",
                 .into = &importing->request.owner,
                 .help = "A user who sees everything; without this option there is one only where "
                         "nobody would see anything",
                 .word = "NAME"});
    command.add({.name = "--members-only",
                 .into = &importing->membersOnly,
                 .help = "No users in the place of roles that nobody holds"});
    command.add({.name = "--report",
                 .into = &importing->reportFile,
                 .help = "Write the account as JSON to a file; \"-\" for standard output",
                 .word = "FILE"});
    command.add({.name = "--deadline",
                 .into = &importing->deadlineSeconds,
                 .help = "Seconds that the import may take (default: any)",
                 .word = "SECONDS",
                 .isPositive = true});
    addOptionsOfKinds(command, *importing);
    command.epilog =
        R"(Makes a model and a catalogue of a source in another format, and tells what was read,
mapped and left out, with the reason. The model path is /content/NAME. Importing again gives
the same things the same ids. Exit status: 3 when the source cannot be used; then nothing is
written.

Examples:
  vexma import tabular sales.bim -o models
  vexma import odata metadata.xml --name shop --navigation shortcut -o models
  vexma tree --catalog models/sales.catalog.xml --model /content/sales --user ann
  vexma import tabular sales.bim -o new --report - | jq .leftOut
  vexma import database 'Driver=SQLite3;Database=sales.db' --name sales -o models
  vexma diff models/sales.model.xml new/sales.model.xml)";
    return [importing](Console& console) { return importing->run(console); };
}

} // namespace vex
