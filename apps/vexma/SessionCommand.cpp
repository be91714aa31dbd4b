#include "apps/vexma/Commands.h"
#include "apps/vexma/Workplace.h"
#include "host/protocol/LineReader.h"
#include "host/protocol/SessionLineCall.h"

#include <memory>

#include <unistd.h>

namespace vex {

namespace {

struct SessionCommand {
    SourceOptions source;
    RequestSize requestSize;

    int Run(Console& console) const {
        source.check();
        if (source.modelFile == "-") {
            throw UsageException("a session's lines come from standard input; name a model file");
        }
        Workplace workplace(source, console);
        KRLIDOM_ReadLimits limits;
        limits.bytes = requestSize.bytes;
        SessionCalls const calls{[&](VexVariant const& action, VexParams const& in) {
                                     return workplace.Call(action, in);
                                 },
                                 [&](int kind) { workplace.Notify(kind); }};
        std::size_t const longest = longestSessionLine(requestSize.bytes);
        LineReader lines(STDIN_FILENO, longest);
        std::string line;
        while (console.canWrite()) {
            LineReader::Result const result = lines.next(line);
            if (result == LineReader::Result::End) {
                break;
            }
            console.out() << (result == LineReader::Result::TooLong
                                  ? replyToTooLong(longest)
                                  : answerSessionLine(line, workplace.Session(), limits, calls))
                          << std::endl;
        }
        return Done;
    }

    static std::string replyToTooLong(std::size_t longest) {
        return toJson(UnusedReply{"the line is longer than " + std::to_string(longest) +
                                  " bytes; ask for less, or raise --max-request"});
    }
};

} // namespace

CommandRun addSessionCommand(CommandSyntax& command) {
    auto const session = std::make_shared<SessionCommand>();
    session->source.addModelFileTo(command);
    session->source.addTo(command);
    session->requestSize.addTo(command);
    command.epilog = R"(Reads one JSON object per line and answers each with one:
  {"action": A, "in": [V, ...]}  calls an action; A is a number or a V
  {"notify": kind}               sends a notification of the session
V is {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"}
or {"empty": true}.

Example:
  echo '{"action": 31000, "in": [{"long": 0}, {"string": "/content/retail"},
         {"node": "<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>"}]}' | tr -d '\n' |
    vexma session --catalog retail.catalog.xml --model /content/retail --user ann)";
    return [session](Console& console) { return session->Run(console); };
}

} // namespace vex
