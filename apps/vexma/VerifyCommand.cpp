#include "apps/vexma/Commands.h"
#include "apps/vexma/Progress.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/VerifyReport.h"
#include "host/protocol/JsonVerification.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace vex {

namespace {

/// What the accessibility check says about every element; nothing when it
/// refuses, which is the end then.
std::optional<std::vector<bool>> askForAccessOfAll(Workplace& workplace, Progress& progress,
                                                   CallEnd& refusal) {
    constexpr std::size_t objectsOfACall = 1'024;
    Model const& model = workplace.model();
    std::vector<bool> accessible;
    while (accessible.size() < model.elementCount()) {
        std::size_t const end = std::min(accessible.size() + objectsOfACall, model.elementCount());
        Vex_Handle_Collection objects;
        for (std::size_t number = accessible.size(); number < end; ++number) {
            objects.push_back(model.getElement(number));
        }
        AccessAnswer answer = workplace.access(objects, 0);
        if (!answer.end.isAnswered()) {
            refusal = std::move(answer.end);
            return std::nullopt;
        }
        accessible.insert(accessible.end(), answer.verdicts.begin(), answer.verdicts.end());
        progress.report(accessible.size(), model.elementCount());
    }
    return accessible;
}

struct VerifyCommand {
    SourceOptions source;
    bool json = false;

    int run(Console& console) {
        std::shared_ptr<Catalogue const> catalogue;
        std::vector<CatalogueUser const*> users{nullptr};
        if (!source.catalogFile.empty()) {
            catalogue = loadCatalogue(source.catalogFile);
            users = usersOf(*catalogue);
        }
        source.check();
        Workplace workplace(source, console);
        Verification verification;
        for (CatalogueUser const* const user : users) {
            if (user == nullptr || user->name.toUtf8() == source.user) {
                verification.users.push_back(verify(workplace, source.user, console));
                continue;
            }
            Workplace further(workplace, user->name);
            verification.users.push_back(verify(further, user->name.toUtf8(), console));
        }
        if (json) {
            console.out() << toJson(verification) << '\n';
        } else {
            writeVerification(console.out(), verification);
        }
        bool const isKnownBad =
            std::any_of(verification.users.begin(), verification.users.end(), [](auto const& user) {
                return user.unfinished.empty() && !user.isClean();
            });
        return isKnownBad ? Refused : verification.isFinished() ? Done : Unfinished;
    }

    /// The one asked for, else all. The first one opens the model.
    std::vector<CatalogueUser const*> usersOf(Catalogue const& catalogue) {
        std::vector<CatalogueUser const*> users;
        for (CatalogueUser const& user : catalogue.users) {
            if (source.user.empty() || user.name.toUtf8() == source.user) {
                users.push_back(&user);
            }
        }
        if (source.user.empty() && users.empty()) {
            throw UsageException("the catalogue has no user to verify for");
        }
        if (source.user.empty()) {
            source.user = users.front()->name.toUtf8();
        }
        return users;
    }

    static UserVerification verify(Workplace& workplace, std::string const& user,
                                   Console& console) {
        Progress progress(console, "verifying" + (user.empty() ? "" : " for " + user));
        ModelTrees trees = matchTrees(workplace);
        CallEnd refusal{.kind = CallEnd::Kind::Answered};
        auto const accessible = askForAccessOfAll(workplace, progress, refusal);
        for (CallEnd const* const end : {trees.refusal ? &*trees.refusal : nullptr, &refusal}) {
            if (end != nullptr && end->kind == CallEnd::Kind::Stopped) {
                return tellUnfinished(user, end->text);
            }
        }
        if (trees.refusal.has_value() || !accessible) {
            bool const both = trees.refusal.has_value() && !accessible;
            return tellRefusal(user, both,
                               both || !accessible ? refusal.text : trees.refusal->text);
        }
        UserVerification told =
            tellCheck(user, checkTrees(workplace.model(), trees.objects, *accessible),
                      workplace.model(), workplace.locale());
        told.notGoneIntoAgain =
            labelsOf(workplace.model(), notGoneIntoAgain(trees.objects), workplace.locale());
        return told;
    }
};

} // namespace

CommandRun addVerifyCommand(CommandSyntax& command) {
    auto const verify = std::make_shared<VerifyCommand>();
    verify->source.addModelFileTo(command);
    verify->source.addTo(command);
    command.add({.name = "--json",
                 .into = &verify->json,
                 .help = "Write one JSON object in place of text"});
    command.epilog =
        R"(Asks for the trees and for the accessibility of every object, as each user of the
catalogue or as --user, and tells where the two differ. Differences that the required
behaviour brings are counted apart. A leak is a text of a visible object (an expression, an
end of a relationship, the target of a shortcut, ...) with the reference of an object that
the user cannot see. Exit status: 1 when something leaks or a difference has no reason.

Examples:
  vexma verify --catalog retail.catalog.xml --model /content/retail
  vexma verify --catalog retail.catalog.xml --model /content/retail --user ann --json)";
    return [verify](Console& console) { return verify->run(console); };
}

} // namespace vex
