#include "apps/vexma/AccessCall.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ObjectArguments.h"

#include <memory>

#include <CLI/CLI.hpp>

namespace vex {

namespace {

struct AccessCommand {
    SourceOptions source;
    long mode = 0;

    int Run(Console& console, std::vector<std::string> const& given) {
        ObjectArguments const arguments(given, source);
        Workplace workplace(source, console);
        // All must be known before the first answer.
        Vex_Handle_Collection const objects = arguments.findIn(workplace.Session());
        for (std::size_t index = 0; index < objects.size(); ++index) {
            AccessAnswer answer;
            if (!askForAccess(workplace, objects[index], mode, answer)) {
                return complainAbout(answer.outcome, console);
            }
            console.out() << answer.verdict << '\t' << arguments.Texts()[index] << '\n';
        }
        return Done;
    }
};

} // namespace

CommandRun addAccessCommand(CLI::App& command) {
    auto const access = std::make_shared<AccessCommand>();
    command.allow_extras(); // see ObjectArguments
    access->source.addTo(command);
    command
        .add_option("--mode", access->mode,
                    "1 leaves the views' lists of included objects out of account")
        ->type_name("N")
        ->capture_default_str();
    command.footer(
        R"(The arguments are ids, or references such as [Sales].[Orders]; without --catalog the
first one is the MODEL.xml. Prints one line for each object: 1 or 0, a tab, the object.

Examples:
  vexma access --catalog retail.catalog.xml --model /content/retail --user ann \
      '[Sales].[Orders]' qi.calendar.date
  vexma access retail.model.xml qi.calendar.date)");
    return
        [access, &command](Console& console) { return access->Run(console, command.remaining()); };
}

} // namespace vex
