#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/FindingsReport.h"
#include "apps/vexma/InputSizes.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/Workplace.h"
#include "host/import/xml/FileText.h"
#include "host/insight/DiagnosticRules.h"
#include "host/insight/FileFindings.h"
#include "host/insight/RuleLevels.h"
#include "host/protocol/JsonFindings.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace vex {

namespace {

/// How all that was found is written, by the word for `--format`.
using ValidateFormat = void (*)(std::ostream&, Diagnostics const&, FindingsForm);
std::map<std::string, ValidateFormat> const validateFormats{
    {"text", &writeFindings},
    {"json",
     [](std::ostream& out, Diagnostics const& found, FindingsForm) {
         writeJson(out, found);
         out << '\n';
     }},
    {"sarif",
     [](std::ostream& out, Diagnostics const& found, FindingsForm) {
         writeSarif(out, found, VEX_VERSION);
         out << '\n';
     }},
};

/// What messages call a file.
std::string nameOf(std::string const& file) {
    return file == "-" ? "standard input" : file;
}

/// The rules for a file: those beside it, else those of the current folder.
class RulesOfFolders {
public:
    /// A file that holds for all of them in their place; "" for none.
    explicit RulesOfFolders(std::string const& given) {
        if (!given.empty()) {
            m_given = std::make_shared<RuleLevels>(read(given));
        }
    }

    std::shared_ptr<RuleLevels const> forFile(std::string const& file) {
        if (m_given != nullptr) {
            return m_given;
        }
        std::string const beside = std::filesystem::path(file).parent_path().string();
        for (std::string const& folder : {beside, std::string()}) {
            if (auto levels = ofFolder(folder)) {
                return levels;
            }
        }
        return std::make_shared<RuleLevels>();
    }

private:
    /// Null when the folder has none.
    std::shared_ptr<RuleLevels const> ofFolder(std::string const& folder) {
        auto const [known, isNew] = m_byFolder.try_emplace(folder);
        std::filesystem::path const file = std::filesystem::path(folder) / RuleLevels::fileName;
        std::error_code unseen; // what cannot be looked at is reported when it is read
        if (isNew && (std::filesystem::exists(file, unseen) || unseen)) {
            known->second = std::make_shared<RuleLevels>(read(file.string()));
        }
        return known->second;
    }

    static RuleLevels read(std::string const& file) {
        constexpr InputLimit longest{65'536};
        return RuleLevels::read(readFileText(file, longest), nameOf(file));
    }

    std::shared_ptr<RuleLevels const> m_given;
    std::map<std::string, std::shared_ptr<RuleLevels const>> m_byFolder;
};

/// What was found in all files, and what their rules made of it.
struct Examination {
    Diagnostics found;
    std::size_t unread = 0;                         // files, where they are no findings
    std::map<std::string, std::size_t> switchedOff; // findings, by the file of rules
};

/// Checks of files that came to no end.
std::size_t countUnfinished(Diagnostics const& found) {
    return static_cast<std::size_t>(
        std::count_if(found.begin(), found.end(),
                      [](Diagnostic const& each) { return each.rule == "unfinished"; }));
}

std::string summaryOf(Examination const& examined, bool showsNotes) {
    FindingCounts const counts = countFindings(examined.found);
    std::string text = "errors: " + std::to_string(counts.errors + examined.unread) +
                       ", warnings: " + std::to_string(counts.warnings);
    if (counts.notes != 0) {
        text +=
            ", notes: " + std::to_string(counts.notes) + (showsNotes ? "" : " (--all shows them)");
    }
    if (std::size_t const count = countUnfinished(examined.found); count != 0) {
        text += ", not finished: " + std::to_string(count);
    }
    for (auto const& [file, count] : examined.switchedOff) {
        text += ", switched off by " + file + ": " + std::to_string(count);
    }
    return text;
}

struct ValidateCommand {
    std::string firstFile;
    std::vector<std::string> otherFiles;
    std::vector<std::string> catalogFiles;
    std::string format = "text";
    std::string rulesFile;
    bool isStrict = false;
    bool all = false;
    bool listsRules = false;
    std::optional<double> deadlineSeconds;
    InputSizes sizes;

    int run(Console& console) const {
        if (listsRules) {
            writeRules(console.out());
            return Done;
        }
        Examination const examined = examineAll(checkedFiles(), console);
        std::ostream& out = console.out(format == "text" ? Spelling::Drawn : Spelling::Json);
        validateFormats.at(format)(out, examined.found, {all, console.outHasColour()});
        FindingCounts const counts = countFindings(examined.found);
        if (!examined.found.empty() || !examined.switchedOff.empty() || examined.unread != 0) {
            console.complain(summaryOf(examined, all || format != "text"));
        }
        std::size_t const unfinished = countUnfinished(examined.found);
        std::size_t const broken =
            counts.errors - unfinished + examined.unread + (isStrict ? counts.warnings : 0);
        return broken != 0 ? Unreadable : unfinished != 0 ? Unfinished : Done;
    }

    /// The files that stand without an option.
    std::vector<std::string> checkedFiles() const {
        std::vector<std::string> files = otherFiles;
        if (!firstFile.empty()) {
            files.insert(files.begin(), firstFile);
        }
        for (std::string const& file : files) {
            if (file.size() > 1 && file.front() == '-') {
                throw UsageException("there is no option " + file + "; see --help");
            }
        }
        if (files.empty() && catalogFiles.empty()) {
            throw UsageException("give at least one file to read: a model, or a catalogue");
        }
        std::size_t inputs = rulesFile == "-" ? 1 : 0;
        for (auto const* const list : {&std::as_const(files), &catalogFiles}) {
            inputs += static_cast<std::size_t>(std::count(list->begin(), list->end(), "-"));
        }
        if (inputs > 1) {
            throw UsageException("standard input can be read once; leave all \"-\" but one out");
        }
        return files;
    }

    Examination examineAll(std::vector<std::string> const& files, Console& console) const {
        Examination examined;
        RulesOfFolders rules(rulesFile);
        for (std::string const& file : files) {
            examine(file, false, rules, examined, console);
        }
        for (std::string const& file : catalogFiles) {
            examine(file, true, rules, examined, console);
        }
        return examined;
    }

    void examine(std::string const& file, bool isCatalogue, RulesOfFolders& rules,
                 Examination& examined, Console& console) const {
        auto const levels = rules.forFile(file);
        Diagnostics found;
        try {
            std::string const text = readFileText(file, sizes.model());
            ActionLimits limits;
            limits.time = deadlineOf(deadlineSeconds);
            // What ends it stands among the findings.
            workWithin(limits, [&] { found = findIn(text, file, isCatalogue, console); });
        } catch (KRLDocumentException const& problem) {
            if (format == "text") { // said where other files' complaints are not
                console.complain(problem.what());
                ++examined.unread;
                return;
            }
            found.push_back(finding("unreadable", nameOf(file), 0, 0, problem.GetProblem()));
        }
        std::size_t const switchedOff = levels->apply(found);
        if (switchedOff != 0) {
            examined.switchedOff[levels->file()] += switchedOff;
        }
        examined.found.insert(examined.found.end(), found.begin(), found.end());
    }

    Diagnostics findIn(std::string const& text, std::string const& file, bool isCatalogue,
                       Console const& console) const {
        Progress progress(console);
        auto const report = [&](std::size_t done, std::size_t total) {
            constexpr std::size_t stepsOfAPiece = 1'024;
            Budget::charge(stepsOfAPiece); // the parser's own work
            progress.report(done, total);
        };
        std::string const name = nameOf(file);
        if (!isCatalogue && !isCatalogueText(text)) {
            return findInModel(text, name, report);
        }
        if (text.size() > sizes.catalogue().bytes) {
            throw KRLDocumentException(name, 0, 0, sizes.catalogue().problem());
        }
        return findInCatalogue(text, name, std::filesystem::path(file).parent_path().string(),
                               report, sizes.model(), sizes.policy());
    }
};

} // namespace

CommandRun addValidateCommand(CommandSyntax& command) {
    auto const validate = std::make_shared<ValidateCommand>();
    command.rest = &validate->otherFiles;
    command.add({.name = "FILE",
                 .into = &validate->firstFile,
                 .help = "Models and catalogues, \"-\" for standard input"});
    command.add({.name = "--catalog",
                 .into = &validate->catalogFiles,
                 .help = "A catalogue, with all its models (repeatable)",
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
                 .into = &validate->rulesFile,
                 .help = "Which rules are off, or weigh more or less (default: .vexma.yaml beside "
                         "the file read, else in the current folder)",
                 .word = "FILE"});
    command.add({.name = "--list-rules",
                 .into = &validate->listsRules,
                 .help = "List the rules and read nothing"});
    command.add({.name = "--deadline",
                 .into = &validate->deadlineSeconds,
                 .help = "Seconds that the check of one file may take (default: any)",
                 .word = "SECONDS",
                 .group = "Limits",
                 .isPositive = true});
    validate->sizes.addTo(command);
    command.epilog =
        R"(Writes one line for each finding: file:line:column, severity, text, [rule]. json and
sarif hold 5000 findings of a rule in a file, and how many more there are. Exit status: 3
when one of them is an error, with --strict also when one is a warning, else 5 when a limit or
an interrupt ended a check, else 0; notes never count. A line of the rules file is
"RULE: off", "RULE: note", "RULE: warning" or "RULE: error".

Examples:
  vexma validate retail.model.xml
  vexma validate retail.catalog.xml other.model.xml --strict
  vexma validate retail.catalog.xml --format sarif > retail.sarif)";
    return [validate](Console& console) { return validate->run(console); };
}

} // namespace vex
