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
            std::ostream& out = console.out(Spelling::Json);
            writeJson(out, told);
            out << '\n';
        } else {
            writeSight(console.out(), told, console.outHasColour());
        }
        return isFinished ? Done : Unfinished;
    }

    /// False when the check did not come to its end.
    static bool tell(Workplace const& workplace, Viewer const& viewer, bool areRoles,
                     Vex_Handle_Collection const& objects, std::vector<ObjectSight>& told) {
        Workplace further(workplace, viewer.user());
        std::vector<ToldViewers> about;
        CallEnd end;
        CallEnd const whole =
            further.together([&] { end = look(further, viewer, areRoles, objects, about); });
        if (!whole.isAnswered()) {
            end = whole;
        }
        if (!end.isAnswered()) {
            about.assign(objects.size(), {viewer.names(),
                                          areRoles,
                                          end.isDecided() ? Sight::Refused : Sight::Unknown,
                                          end.text,
                                          {}});
        }
        for (std::size_t number = 0; number < objects.size(); ++number) {
            told[number].add(std::move(about[number]));
        }
        return end.isDecided();
    }

    /// What there is to tell about a viewer, for each object; how the call ended that was not
    /// answered.
    static CallEnd look(Workplace& workplace, Viewer const& viewer, bool areRoles,
                        Vex_Handle_Collection const& objects, std::vector<ToldViewers>& about) {
        AccessReasons const reasons = workplace.explain(objects, false);
        if (!reasons.end.isAnswered()) {
            return reasons.end;
        }
        ModelTrees const trees = askForTrees(workplace);
        if (trees.refusal) {
            return *trees.refusal;
        }
        Model const& model = workplace.model();
        Explanation const explanation = tellAccess(
            model, workplace.locale(), objects, reasons.explanation, trees.objects, std::nullopt);
        std::vector<bool> const isWritten = writtenIn(trees.objects, model);
        for (std::size_t number = 0; number < objects.size(); ++number) {
            ToldObject const& object = explanation.objects[number];
            ToldViewers& each = about.emplace_back();
            each.names = viewer.names();
            each.areRoles = areRoles;
            each.sight = object.accessible                             ? Sight::Seen
                         : isWritten[numberOf(model, objects[number])] ? Sight::PastViews
                                                                       : Sight::NotSeen;
            each.why = object.verdict;
            if (each.sight == Sight::PastViews) {
                each.tree = object.tree;
            }
        }
        return reasons.end;
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
