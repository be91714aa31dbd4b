#include "apps/vexma/AccessOfAll.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/VerifyReport.h"
#include "apps/vexma/Viewers.h"
#include "apps/vexma/WordWarning.h"
#include "host/import/xml/FileText.h"
#include "host/insight/FindingRoom.h"
#include "host/insight/ModelChecks.h"
#include "host/protocol/AcceptedLines.h"
#include "host/protocol/JsonVerification.h"
#include "host/protocol/JunitVerification.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <memory>

namespace vex {

namespace {

/// How what was found is written, by the word for `--format`.
using VerifyFormat = void (*)(Console&, Verification const&, bool all);
std::map<std::string, VerifyFormat> const verifyFormats{
    {"text",
     [](Console& console, Verification const& found, bool all) {
         writeVerification(console.out(), found, all, console.outHasColour());
     }},
    {"json",
     [](Console& console, Verification const& found, bool) {
         std::ostream& out = console.out(Spelling::Json);
         writeJson(out, found);
         out << '\n';
     }},
    {"sarif",
     [](Console& console, Verification const& found, bool) {
         std::ostream& out = console.out(Spelling::Json);
         writeSarif(out, found, VEX_VERSION);
         out << '\n';
     }},
    {"junit",
     [](Console& console, Verification const& found, bool all) {
         console.out(Spelling::Xml)
             << toJunit(found, all ? std::numeric_limits<std::size_t>::max() : shownOfAKind);
     }},
};

int statusOf(VerifyOutcome outcome) {
    switch (outcome) {
    case VerifyOutcome::Clean:
        return Done;
    case VerifyOutcome::NothingVerified:
        return Unverified;
    case VerifyOutcome::ShownPastViews:
        return ShownPast;
    case VerifyOutcome::Unfinished:
        return Unfinished;
    case VerifyOutcome::NotVerified:
    case VerifyOutcome::Leaking:
        break;
    }
    return Refused;
}

/// Adds what is found for those whom `told` names.
void verify(Workplace& workplace, UserVerification& told, FindingRoom& room, Console& console) {
    std::string const& user = told.user;
    Progress progress(console, "verifying" + (user.empty() ? "" : " for " + user));
    ModelTrees const trees = matchTrees(workplace);
    AccessOfAll const access = askForAccessOfAll(workplace, progress);
    CallEnd const answered{.kind = CallEnd::Kind::Answered};
    if (auto ended = tellEnds(user, trees.refusal.value_or(answered), access.end)) {
        ended->alike = std::move(told.alike);
        told = *std::move(ended);
        return;
    }
    tellCheck(told, checkTrees(workplace.model(), trees.objects, access.verdicts),
              workplace.model(), workplace.locale(), room);
    told.notGoneIntoAgain =
        labelsOf(workplace.model(), notGoneIntoAgain(trees.objects), workplace.locale());
}

/// The same, what the host makes of the answers too, under one budget.
UserVerification verifyTogether(Workplace& workplace, Viewer const& viewer, FindingRoom& room,
                                Console& console) {
    UserVerification told;
    told.user = viewer.name;
    told.alike = viewer.alike;
    CallEnd const end = workplace.together([&] { verify(workplace, told, room, console); });
    if (!end.isAnswered()) {
        room.giveBack(told); // nothing is known of the user
        told = tellUnfinished(viewer.name, end.text);
        told.alike = viewer.alike;
    }
    return told;
}

struct VerifyCommand {
    SourceOptions source;
    std::vector<std::string> acceptFiles;
    std::size_t maxAccepted = std::size_t{16} << 20U;
    std::size_t maxFindings = FindingRoom::UsualOfAKind;
    std::string baselineFile;
    std::string format = "text";
    bool json = false;
    bool all = false;

    int run(Console& console) {
        if (json) {
            format = "json";
        }
        source.forAllUsers = true;
        source.keepPositions = format == "sarif";
        source.check();
        AcceptedFindings accepted = readAcceptFiles();
        Workplace workplace(source, console);
        complainAboutLocale(workplace, console);
        Verification verification = verifyAll(workplace, accepted, console);
        accept(verification, accepted);
        complainAboutLeftOut(verification, console);
        complainAboutUnused(accepted, verification, console);
        bool const isWritten =
            baselineFile.empty() || writeBaseline(verification, accepted, console);
        verifyFormats.at(format)(console, verification, all);
        return isWritten ? statusOf(verification.outcome()) : Refused;
    }

    AcceptedFindings readAcceptFiles() const {
        AcceptedFindings accepted;
        for (std::string const& file : acceptFiles) {
            AcceptedFindings const read =
                readAccepted(readFileText(file, {maxAccepted, "--max-accepted"}), file);
            accepted.insert(accepted.end(), read.begin(), read.end());
        }
        return accepted;
    }

    Verification verifyAll(Workplace const& workplace, AcceptedFindings& accepted,
                           Console& console) const {
        AcceptedIndex index(accepted);
        FindingRoom room(maxFindings, index);
        Viewers const viewers = Viewers::usersOf(workplace.catalogue(), source.user);
        Verification verification;
        verification.file = fileOf(workplace);
        verification.isOfAllUsers = source.user.empty();
        addUnrestricted(workplace, verification, console);
        for (Viewer const& viewer : viewers.all()) {
            Workplace further(workplace, viewer.user());
            verification.users.push_back(verifyTogether(further, viewer, room, console));
        }
        verification.addNobodyCompared();
        return verification;
    }

    std::string fileOf(Workplace const& workplace) const {
        return workplace.catalogue() == nullptr
                   ? source.modelFile
                   : workplace.catalogue()->findModel(workplace.modelPath())->file;
    }

    /// Where nobody is restricted, everything looks as it should: it is said aloud.
    static void addUnrestricted(Workplace const& workplace, Verification& verification,
                                Console& console) {
        std::string text;
        if (workplace.catalogue() == nullptr) {
            text = "nobody is restricted: a model file alone has no users; give --catalog "
                   "CATALOG.xml --model PATH";
        } else if (!isRestrictedPath(workplace.modelPath())) {
            text = "nobody is restricted under the model path \"" + workplace.modelPath().toUtf8() +
                   "\"; begin it with /content/ to have its grants obeyed";
        } else {
            return;
        }
        console.complain(text);
        verification.addUnrestricted(text);
    }

    void complainAboutLeftOut(Verification const& verification, Console& console) const {
        LeftOutFindings const left = verification.leftOut();
        if (left.open + left.accepted == 0) {
            return;
        }
        console.complain(counted(left.open + left.accepted, "finding") +
                         " past the limit counted, not listed, " + std::to_string(left.accepted) +
                         " of them accepted: of a kind there is room for " +
                         std::to_string(maxFindings) + "; raise it with --max-findings");
    }

    static void complainAboutUnused(AcceptedFindings const& accepted,
                                    Verification const& verification, Console& console) {
        ComparedUsers const users(verification);
        for (AcceptedFinding const& entry : accepted) {
            if (users.isNoLongerFound(entry)) {
                console.complain("accepted, but no longer found: " + toJson(entry));
            }
        }
    }

    /// Writes what accepts all that was found, and accepts it.
    bool writeBaseline(Verification& verification, AcceptedFindings const& accepted,
                       Console& console) const {
        AcceptedFindings everything = acceptAll(verification, accepted);
        std::ofstream file(baselineFile, std::ios::binary);
        file << writeAccepted(everything);
        file.close();
        if (!file) {
            console.complain("the baseline " + baselineFile +
                             " cannot be written: " + std::strerror(errno));
            return false;
        }
        console.complain(std::to_string(everything.size()) + " entries written to " + baselineFile +
                         "; --accept " + baselineFile + " accepts them");
        accept(verification, everything);
        if (std::size_t const open = verification.leftOut().open; open != 0) {
            console.complain(counted(open, "finding") + " past the limit in no entry of " +
                             baselineFile +
                             ", and not accepted by it; raise the limit with "
                             "--max-findings");
        }
        return true;
    }
};

} // namespace

CommandRun addVerifyCommand(CommandSyntax& command) {
    auto const verifying = std::make_shared<VerifyCommand>();
    verifying->source.addModelFileTo(command);
    verifying->source.addTo(command);
    std::vector<std::string> words;
    for (auto const& [word, format] : verifyFormats) {
        words.push_back(word);
    }
    command.add({.name = "--format",
                 .into = &verifying->format,
                 .help = "How to write what was found",
                 .word = "FORMAT",
                 .showsDefault = true,
                 .choices = words});
    command.add({.name = "--json", .into = &verifying->json, .help = "The same as --format json"});
    command.add({.name = "--max-accepted",
                 .into = &verifying->maxAccepted,
                 .help = "Bytes that a file of accepted findings may have",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
    command.add({.name = "--max-findings",
                 .into = &verifying->maxFindings,
                 .help = "Findings of a kind that are listed; all are counted",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
    command.add({.name = "--all",
                 .into = &verifying->all,
                 .help = "Every finding, not the first ten of each kind and cause"});
    command.add({.name = "--accept",
                 .into = &verifying->acceptFiles,
                 .help = "Findings that are known and accepted, one on a line",
                 .word = "FILE"});
    command.add({.name = "--write-baseline",
                 .into = &verifying->baselineFile,
                 .help = "Write all that is found to a file for --accept",
                 .word = "FILE"});
    command.epilog =
        R"(Asks for the trees and for the accessibility of every object, as each user of the
catalogue or as --user, and tells where the two differ. A leak is a text of a visible object
(an expression, an end of a relationship, the target of a shortcut, ...) that names an object
that the user cannot see; hidden keys that relationships join by are counted apart.

Exit status: 0 nothing is found, or all is accepted; 1 something leaks, a difference has no
reason, or the plug-in refused or answered oddly for somebody who has a view; 4 nothing leaks, but trees show what the views leave out, behind shortcuts or
where they start; 5 a limit or an interrupt ended the check; 6 nothing was verified, because
nobody is restricted or everybody is refused; 2 and 3 as for every command.

Examples:
  vexma verify --catalog retail.catalog.xml --model /content/retail
  vexma verify --catalog retail.catalog.xml --model /content/retail --user ann --json
  vexma verify --catalog retail.catalog.xml --model /content/retail \
      --write-baseline known.jsonl
  vexma verify --catalog retail.catalog.xml --model /content/retail \
      --accept known.jsonl --format junit > verify.xml)";
    return [verifying](Console& console) { return verifying->run(console); };
}

} // namespace vex
