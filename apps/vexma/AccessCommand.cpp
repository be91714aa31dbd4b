#include "apps/vexma/Commands.h"
#include "apps/vexma/ObjectArguments.h"
#include "apps/vexma/WordWarning.h"
#include "apps/vexma/Workplace.h"

#include <memory>

namespace vex {

namespace {

struct AccessCommand {
    SourceOptions source;
    std::vector<std::string> given;
    long mode = 0;
    StrictOption strict;

    int run(Console& console) {
        ObjectArguments const arguments(given, source);
        Workplace workplace(source, console);
        // All must be known before the first answer.
        Vex_Handle_Collection const objects = arguments.findIn(workplace.model());
        AccessAnswer const answer = workplace.access(objects, mode);
        for (std::size_t index = 0; index < answer.verdicts.size(); ++index) {
            console.out() << (answer.verdicts[index] ? 1 : 0) << '\t' << arguments.texts()[index]
                          << '\n';
        }
        RequestWarnings warnings(strict);
        warnAboutLocale(workplace, warnings);
        if (mode != 0 && mode != 1) {
            warnings.add("there is no mode " + std::to_string(mode) + ", so 0 is used");
        }
        return warnings.finish(console,
                               answer.end.isAnswered() ? Done : complainAbout(answer.end, console));
    }
};

} // namespace

CommandRun addAccessCommand(CommandSyntax& command) {
    auto const access = std::make_shared<AccessCommand>();
    command.rest = &access->given; // see ObjectArguments
    access->source.addTo(command);
    command.add({.name = "--mode",
                 .into = &access->mode,
                 .help = "1 leaves the views' lists of included objects out of account",
                 .word = "N",
                 .showsDefault = true});
    access->strict.addTo(command);
    command.epilog =
        R"(The arguments are ids, or references such as [Sales].[Orders]; without --catalog the
first one is the MODEL.xml. Prints one line for each object: 1 or 0, a tab, the object.

Examples:
  vexma access --catalog retail.catalog.xml --model /content/retail --user ann \
      '[Sales].[Orders]' qi.calendar.date
  vexma access retail.model.xml qi.calendar.date)";
    return [access](Console& console) { return access->run(console); };
}

} // namespace vex
