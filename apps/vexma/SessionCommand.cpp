#include "VexNotification.h"
#include "VexTrace.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/Interrupt.h"
#include "apps/vexma/TracedPlugin.h"
#include "apps/vexma/WordWarning.h"
#include "apps/vexma/Workplace.h"
#include "host/protocol/LineReader.h"
#include "host/protocol/SessionLineCall.h"

#include <memory>

#include <unistd.h>

namespace vex {

namespace {

/// A session whose actions a client calls itself. Opened when it is made, closed
/// when it goes; the plug-in hears of both.
class ClientSession {
public:
    ClientSession(SourceOptions const& options, SessionPaths paths, Console& console)
        : m_limits(limitsOf(options)), m_asked(visitRequestOf(options)),
          m_content(contentOf(options, console)),
          m_session(open(*m_content, m_asked, paths, console)),
          m_plugin(loadPlugin(options, console)) {
        notify(VexNotification::SessionOpened);
    }
    ClientSession(ClientSession const&) = delete;
    ClientSession& operator=(ClientSession const&) = delete;
    ~ClientSession() {
        try {
            notify(VexNotification::SessionClosed);
        } catch (KRLException const& problem) {
            OutputDebugString(problem.what()); // the answers are out already
        }
    }

    HostSession const& session() const { return *m_session; }
    void notify(int kind) { m_plugin->Notify(*m_session, kind); }
    /// The caller tells the plug-in.
    void reload() { m_session->takeModel(m_content->reloadModel(m_asked.modelPath)->model()); }
    /// Under the command line's limits.
    ActionOutcome call(VexVariant const& action, VexParams const& in) {
        return callAction(*m_plugin, *m_session, action, in, m_limits);
    }

private:
    static std::unique_ptr<HostSession> open(ContentStore& content, VisitRequest const& asked,
                                             SessionPaths paths, Console& console) {
        Visit const visit = openVisit(content, asked);
        complainAboutLocale(visit, console);
        return openSession(visit, paths);
    }

    ActionLimits m_limits;
    VisitRequest m_asked;
    std::shared_ptr<ContentStore> m_content;
    std::unique_ptr<HostSession> m_session;
    std::shared_ptr<PluginProxy> m_plugin;
};

struct SessionCommand {
    SourceOptions source;
    RequestSize requestSize;
    bool anyPath = false;
    std::size_t mostValues = mostValuesOfALine;

    int run(Console& console) const {
        source.check();
        if (source.modelFile == "-") {
            throw UsageException("a session's lines come from standard input; name a model file");
        }
        if (anyPath && source.catalogFile.empty()) {
            throw UsageException("--any-path lifts what a catalogue confines a session to; a "
                                 "model file alone confines it to nothing, so leave it out");
        }
        ClientSession session(source, anyPath ? SessionPaths::Any : SessionPaths::Own, console);
        SessionLineLimits limits;
        limits.document.bytes = requestSize.bytes;
        limits.values = mostValues;
        SessionCalls const calls{
            [&](VexVariant const& action, VexParams const& in) { return session.call(action, in); },
            [&](int kind) { session.notify(kind); }, [&] { session.reload(); }};
        std::size_t const longest = longestSessionLine(requestSize.bytes);
        LineReader lines(STDIN_FILENO, longest);
        std::string line;
        while (console.canWrite()) {
            LineReader::Result const result = lines.next(line);
            if (result == LineReader::Result::End) {
                break;
            }
            InterruptScope const interrupt; // ends what is done for this line, and no more
            ActionLimits ofLine = limitsOf(source);
            ofLine.cancelled = &interrupt.isInterrupted();
            Budget const budget(budgetOf(ofLine));
            console.out(Spelling::Json)
                << (result == LineReader::Result::TooLong
                        ? replyToTooLong(longest)
                        : answerSessionLine(line, session.session(), limits, calls))
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
    command.add({.name = "--any-path",
                 .into = &session->anyPath,
                 .help = "Let lines name any model path, which lifts every restriction of the "
                         "user; for trying a plug-in by hand"});
    session->requestSize.addTo(command);
    command.add({.name = "--max-values",
                 .into = &session->mostValues,
                 .help = "Values that a line may hold: numbers, texts, lists and objects",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
    command.epilog = R"(Reads one JSON object per line and answers each with one:
  {"action": A, "in": [V, ...]}  calls an action; A is a number or a V
  {"notify": kind}               sends a notification of the session; 2 reads the model anew
V is {"long": n}, {"string": s}, {"handle": "id or reference"}, {"node": "XML text"}
or {"empty": true}. A line may bear an "id", any JSON value: its answer begins with it.
The model path that an action names must be that of --model, with or without "path:".

Example:
  echo '{"action": 31000, "in": [{"long": 0}, {"string": "/content/retail"},
         {"node": "<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>"}]}' | tr -d '\n' |
    vexma session --catalog retail.catalog.xml --model /content/retail --user ann)";
    return [session](Console& console) { return session->run(console); };
}

} // namespace vex
