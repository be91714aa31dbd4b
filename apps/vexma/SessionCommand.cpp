#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/LineReader.h"
#include "apps/vexma/SessionLines.h"
#include "apps/vexma/Workplace.h"

#include <memory>
#include <new>

#include <CLI/CLI.hpp>
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
        LineReader lines(STDIN_FILENO, longestLine());
        std::string line;
        while (console.canWrite()) {
            LineReader::Result const result = lines.next(line);
            if (result == LineReader::Result::End) {
                break;
            }
            Json const answer =
                result == LineReader::Result::TooLong
                    ? answerToFailure("the line is longer than " + std::to_string(longestLine()) +
                                      " bytes; ask for less, or raise "
                                      "--max-request")
                    : Answer(workplace, line);
            console.out() << answer.dump(-1, ' ', false, Json::error_handler_t::replace)
                          << std::endl;
        }
        return Done;
    }

    /// A request of the greatest size, each byte escaped, and some room around
    /// it.
    std::size_t longestLine() const {
        constexpr std::size_t longestEscape = 6; // \u0022
        constexpr std::size_t around = 65'536;
        return requestSize.bytes > std::numeric_limits<std::size_t>::max() / (2 * longestEscape)
                   ? std::numeric_limits<std::size_t>::max()
                   : requestSize.bytes * longestEscape + around;
    }

    Json Answer(Workplace& workplace, std::string const& text) const {
        try {
            KRLIDOM_ReadLimits limits;
            limits.bytes = requestSize.bytes;
            SessionLine const line = readSessionLine(text, workplace.Session(), limits);
            if (line.notify) {
                workplace.Notify(*line.notify);
                return answerToNotify(*line.notify);
            }
            return answerTo(workplace.Call(line.action, line.in));
        } catch (KRLException const& problem) {
            return answerToFailure(problem.what());
        } catch (std::bad_alloc const&) {
            return answerToFailure("there is not enough memory for this line; ask for less");
        }
    }
};

} // namespace

CommandRun addSessionCommand(CLI::App& command) {
    auto const session = std::make_shared<SessionCommand>();
    session->source.addModelFileTo(command);
    session->source.addTo(command);
    session->requestSize.addTo(command);
    command.footer(R"(Reads one JSON object per line and answers each with one:
  {"action": A, "in": [V, ...]}  calls an action; A is a number or a V
  {"notify": kind}               sends a notification of the session
V is {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"}
or {"empty": true}.

Example:
  echo '{"action": 31000, "in": [{"long": 0}, {"string": "/content/retail"},
         {"node": "<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>"}]}' | tr -d '\n' |
    vexma session --catalog retail.catalog.xml --model /content/retail --user ann)");
    return [session](Console& console) { return session->Run(console); };
}

} // namespace vex
