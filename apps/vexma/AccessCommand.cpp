#include "apps/vexma/Commands.h"
#include "apps/vexma/ObjectArguments.h"
#include "apps/vexma/TextColours.h"
#include "apps/vexma/Viewers.h"
#include "apps/vexma/WordWarning.h"
#include "apps/vexma/Workplace.h"

#include <map>
#include <memory>
#include <vector>

namespace vex {

namespace {

struct AccessCommand {
    SourceOptions source;
    std::vector<std::string> given;
    long mode = 0;
    bool allUsers = false;
    StrictOption strict;

    int run(Console& console) {
        if (allUsers && !source.user.empty()) {
            throw UsageException("both --user and --all-users are given; leave one out");
        }
        source.forAllUsers = allUsers;
        ObjectArguments const arguments(given, source);
        Workplace workplace(source, console);
        // All must be known before the first answer.
        MayBeNamed const seen = [&](Vex_Handle_Collection const& suggested) {
            return workplace.access(suggested, 0).verdicts;
        };
        Vex_Handle_Collection const objects =
            arguments.findIn(workplace.model(), allUsers ? MayBeNamed() : seen);
        int const status = allUsers ? runForAll(workplace, arguments, objects, console)
                                    : runForOne(workplace, arguments, objects, console);
        RequestWarnings warnings(strict);
        warnAboutLocale(workplace, warnings);
        if (mode != 0 && mode != 1) {
            warnings.add("there is no mode " + std::to_string(mode) + ", so 0 is used");
        }
        return warnings.finish(console, status);
    }

    int runForOne(Workplace& workplace, ObjectArguments const& arguments,
                  Vex_Handle_Collection const& objects, Console& console) const {
        AccessAnswer const answer = workplace.access(objects, mode);
        for (std::size_t index = 0; index < answer.verdicts.size(); ++index) {
            write(console, answer.verdicts[index] ? "1" : "0",
                  printable(arguments.texts()[index], false));
        }
        return answer.end.isAnswered() ? Done : complainAbout(answer.end, console);
    }

    /// Object by object, the users in the order of the catalogue.
    int runForAll(Workplace const& workplace, ObjectArguments const& arguments,
                  Vex_Handle_Collection const& objects, Console& console) const {
        Viewers const viewers = Viewers::usersOf(workplace.catalogue(), "");
        std::vector<AccessAnswer> answers;
        std::map<std::string, std::size_t> answerOf; // by the name of the user
        int status = Done;
        for (Viewer const& viewer : viewers.all()) {
            Workplace further(workplace, viewer.user());
            AccessAnswer const& answer = answers.emplace_back(further.access(objects, mode));
            for (std::string const& name : viewer.names()) {
                answerOf.emplace(name, answers.size() - 1);
                if (!answer.end.isAnswered()) {
                    console.complain(name +
                                     (answer.end.isDecided() ? ": every request is refused: "
                                                             : ": not finished: ") +
                                     answer.end.text);
                }
            }
            if (!answer.end.isDecided()) {
                status = Unfinished; // nothing is known of the user
            }
        }
        std::vector<std::string> const names = namesIn(workplace);
        for (std::size_t index = 0; index < objects.size(); ++index) {
            for (std::string const& name : names) {
                AccessAnswer const& answer = answers[answerOf.at(name)];
                bool const isAnswered = index < answer.verdicts.size();
                write(console,
                      !isAnswered              ? answer.end.isDecided() ? "-" : "?"
                      : answer.verdicts[index] ? "1"
                                               : "0",
                      (name.empty() ? "" : printable(name, false) + '\t') +
                          printable(arguments.texts()[index], false));
            }
        }
        return status;
    }

    static std::vector<std::string> namesIn(Workplace const& workplace) {
        std::vector<std::string> names;
        if (workplace.catalogue() == nullptr) {
            names.emplace_back();
            return names;
        }
        for (CatalogueUser const& user : workplace.catalogue()->users) {
            names.push_back(user.name.toUtf8());
        }
        return names;
    }

    static void write(Console& console, std::string const& verdict, std::string const& rest) {
        TextColours const& colours = textColours(console.outHasColour());
        char const* const colour = verdict == "1"   ? colours.good
                                   : verdict == "0" ? colours.doubtful
                                                    : colours.bad;
        console.out() << colour << verdict << colours.end << '\t' << rest << '\n';
    }
};

} // namespace

CommandRun addAccessCommand(CommandSyntax& command) {
    auto const access = std::make_shared<AccessCommand>();
    command.rest = &access->given; // see ObjectArguments
    access->source.addTo(command);
    command.add({.name = "--all-users",
                 .into = &access->allUsers,
                 .help = "Answer for every user of the catalogue"});
    command.add({.name = "--mode",
                 .into = &access->mode,
                 .help = "1 leaves the views' lists of included objects out of account",
                 .word = "N",
                 .showsDefault = true});
    access->strict.addTo(command);
    command.epilog =
        R"(The arguments are ids, or references such as [Sales].[Orders]; without --catalog the
first one is the MODEL.xml. Prints one line for each object: 1 or 0, a tab, the object. With
--all-users, one for each object and user, with the user and a tab before the object; - stands
for a user whose requests are refused, ? for one whose check did not finish, because of a
limit, an interrupt or an odd answer of the plug-in; the exit status is 5 then.

Examples:
  vexma access --catalog retail.catalog.xml --model /content/retail --user ann \
      '[Sales].[Orders]' qi.calendar.date
  vexma access --catalog retail.catalog.xml --model /content/retail --all-users \
      '[Sales].[Margin]'
  vexma access retail.model.xml qi.calendar.date)";
    return [access](Console& console) { return access->run(console); };
}

} // namespace vex
