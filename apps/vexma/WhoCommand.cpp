#include "apps/vexma/Commands.h"
#include "apps/vexma/ObjectArguments.h"
#include "apps/vexma/SightReport.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/Viewers.h"
#include "apps/vexma/WordWarning.h"
#include "host/insight/ObjectReference.h"
#include "host/protocol/JsonSight.h"

#include <algorithm>
#include <memory>

namespace vex {

namespace {

/// By the number of the object.
std::vector<bool> writtenIn(AnsweredTree const& trees, Model const& model) {
    std::vector<bool> isWritten(model.elementCount(), false);
    for (AnsweredObject const& entry : trees) {
        if (entry.fate == ObjectFate::Written) {
            isWritten[numberOf(model, entry.object)] = true;
        }
    }
    return isWritten;
}

struct WhoCommand {
    SourceOptions source;
    std::vector<std::string> given;
    bool json = false;

    int run(Console& console) {
        source.forAllUsers = true;
        ObjectArguments const arguments(given, source);
        Workplace const workplace(source, console);
        complainAboutLocale(workplace, console);
        Vex_Handle_Collection const objects = arguments.findIn(workplace.model());
        std::vector<ObjectSight> told;
        for (VEX_HANDLE const object : objects) {
            told.push_back({labelOf(workplace.model(), object, workplace.locale()), {}});
        }
        Viewers const users = Viewers::usersOf(workplace.catalogue(), source.user);
        Viewers const roles = Viewers::rolesOf(workplace.catalogue(), workplace.modelPath());
        bool isFinished = true;
        for (Viewer const& viewer : users.all()) {
            isFinished = tell(workplace, viewer, false, objects, told) && isFinished;
        }
        if (source.user.empty()) {
            for (Viewer const& viewer : roles.all()) {
                isFinished = tell(workplace, viewer, true, objects, told) && isFinished;
            }
        }
        if (json) {
            console.out(Spelling::Json) << toJson(told) << '\n';
        } else {
            writeSight(console.out(), told, console.outHasColour());
        }
        return isFinished ? Done : Unfinished;
    }

    /// False when the check did not come to its end.
    static bool tell(Workplace const& workplace, Viewer const& viewer, bool areRoles,
                     Vex_Handle_Collection const& objects, std::vector<ObjectSight>& told) {
        Workplace further(workplace, viewer.user);
        AccessReasons const reasons = further.explain(objects, false);
        ModelTrees const trees = reasons.end.isAnswered() ? askForTrees(further) : ModelTrees();
        CallEnd const* const refusal = !reasons.end.isAnswered() ? &reasons.end
                                       : trees.refusal           ? &*trees.refusal
                                                                 : nullptr;
        ToldViewers about{viewer.names(), areRoles, Sight::Refused, "", {}};
        if (refusal != nullptr) {
            about.sight = refusal->isDecided() ? Sight::Refused : Sight::Unknown;
            about.why = refusal->text;
            for (ObjectSight& object : told) {
                object.add(about);
            }
            return refusal->isDecided();
        }
        Explanation const explanation =
            tellAccess(further.model(), further.locale(), objects, reasons.explanation,
                       trees.objects, std::nullopt);
        std::vector<bool> const isWritten = writtenIn(trees.objects, further.model());
        for (std::size_t number = 0; number < objects.size(); ++number) {
            ToldObject const& object = explanation.objects[number];
            about.sight = object.accessible                                       ? Sight::Seen
                          : isWritten[numberOf(further.model(), objects[number])] ? Sight::PastViews
                                                                                  : Sight::NotSeen;
            about.why = object.verdict;
            about.tree = about.sight == Sight::PastViews ? object.tree : std::vector<std::string>();
            told[number].add(about);
        }
        return true;
    }
};

} // namespace

CommandRun addWhoCommand(CommandSyntax& command) {
    auto const who = std::make_shared<WhoCommand>();
    command.rest = &who->given; // see ObjectArguments
    who->source.addTo(command);
    command.add(
        {.name = "--json", .into = &who->json, .help = "Write one JSON object in place of text"});
    command.epilog =
        R"(The arguments are ids, or references such as [Sales].[Orders]. Tells for each object
which users of the catalogue see it, which roles alone would see it, and why; those of whom
the same is said stand together. What a tree shows although the views leave it out is told
apart.

Exit status: 5 when the check did not finish for somebody, because of a limit, an interrupt or
an odd answer of the plug-in; of him it is told so, and the others all the same; else as for
every command.

Examples:
  vexma who --catalog retail.catalog.xml --model /content/retail '[Sales].[Margin]'
  vexma who --catalog retail.catalog.xml --model /content/retail --user ann ca.margin --json)";
    return [who](Console& console) { return who->run(console); };
}

} // namespace vex
