#include "KRLIDOM_Writer.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/RequestComplaint.h"
#include "apps/vexma/RequestOptions.h"
#include "host/insight/AnswerEstimate.h"

#include <memory>

namespace vex {

namespace {

struct MetadataCommand {
    SourceOptions source;
    RequestOptions request;
    bool pretty = false;
    bool estimate = false;

    int Run(Console& console) const {
        source.check();
        request.check(source);
        KRLIDOM_OwnedDocument const document = request.makeRequest();
        MetadataRequest const asked = MetadataRequest::read(document.document());
        Workplace workplace(source, console);
        if (estimate) {
            return giveEstimate(asked, workplace, console);
        }
        MetadataAnswer const answer = workplace.metadata(document.document());
        if (!answer.end.isAnswered()) {
            return complainAboutRequest(answer.end, asked, workplace, console);
        }
        bool const inLines = pretty || console.outIsTerminal();
        KRLIDOM_Writer::write(console.out(), answer.response.document(), inLines);
        console.out() << (inLines ? "" : "\n"); // lines end with one already
        return Done;
    }

    int giveEstimate(MetadataRequest const& asked, Workplace& workplace, Console& console) const {
        AnswerEstimate const answer =
            estimateAnswer(workplace.model(), {asked, workplace.locale(), source.response.elements,
                                               !source.user.empty()});
        char const* const bound = answer.isMore ? "more than " : "at most ";
        std::size_t const elements = answer.isMore ? source.response.elements : answer.elements;
        console.out() << "elements  " << bound << elements << "\nbytes     " << bound
                      << answer.bytes << '\n';
        return Done;
    }
};

} // namespace

CommandRun addMetadataCommand(CommandSyntax& command) {
    auto const metadata = std::make_shared<MetadataCommand>();
    metadata->source.addModelFileTo(command);
    metadata->source.addTo(command);
    metadata->request.addTo(command);
    command.add({.name = "--pretty",
                 .into = &metadata->pretty,
                 .help = "Break lines and indent (always done on a terminal)"});
    command.add({.name = "--estimate",
                 .into = &metadata->estimate,
                 .help =
                     "Say how large the answer may be, and do not make it: an upper estimate of "
                     "its elements and memory that leaves views out of account"});
    command.epilog = R"(Examples:
  vexma metadata retail.model.xml --depth 2 --property name --property screenTip
  vexma metadata --catalog retail.catalog.xml --model /content/retail --user ann \
      --locale de --start '[Retail].[Sales]' --collection querySubject
  vexma metadata retail.model.xml --request - < request.xml)";
    return [metadata](Console& console) { return metadata->Run(console); };
}

} // namespace vex
