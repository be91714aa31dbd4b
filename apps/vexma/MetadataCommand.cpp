#include "KRLIDOM_Writer.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/RequestComplaint.h"
#include "apps/vexma/RequestOptions.h"
#include "apps/vexma/StartWarning.h"
#include "apps/vexma/WordWarning.h"
#include "host/insight/AnswerEstimate.h"

#include <memory>
#include <ostream>

namespace vex {

namespace {

struct MetadataCommand {
    SourceOptions source;
    RequestOptions request;
    bool pretty = false;
    bool estimate = false;

    int run(Console& console) const {
        source.check();
        request.check(source);
        std::string const text = request.readText();
        KRLIDOM_OwnedDocument const document = request.makeRequest(text);
        MetadataRequest const asked = MetadataRequest::read(document.document());
        I18NString const id = request.startId();
        Workplace workplace(source, console);
        WrittenRequest const written{document, asked, id, text, request.fileName()};
        RequestWarnings warnings = request.makeWarnings();
        warnAboutLocale(workplace, warnings);
        if (estimate) {
            warnAboutWords(written, workplace, warnings);
            int const status = giveEstimate(document, asked, id, workplace, console);
            if (status == Done) {
                warnAboutStart(asked, id, KRLIDOM_Node(), workplace, warnings);
            }
            return warnings.finish(console, status);
        }
        MetadataAnswer const answer = workplace.metadataAt(id, document.document());
        warnAboutWords(written, workplace, warnings);
        if (!answer.end.isAnswered()) {
            return warnings.finish(console,
                                   complainAboutRequest(answer.end, asked, workplace, console));
        }
        bool const inLines = pretty || console.outIsTerminal();
        // A document that cannot be written leaves no half of it behind.
        KRLIDOM_Writer::check(answer.response.document());
        std::ostream& out = console.out(Spelling::Xml);
        KRLIDOM_Writer::write(out, answer.response.document(), inLines);
        out << (inLines ? "" : "\n"); // lines end with one already
        warnAboutStart(asked, id, answer.response.document().getDocumentElement(), workplace,
                       warnings);
        return warnings.finish(console, Done);
    }

    static int giveEstimate(KRLIDOM_OwnedDocument const& document, MetadataRequest const& asked,
                            I18NString const& id, Workplace& workplace, Console& console) {
        std::size_t const limit = workplace.responseLimits().elements;
        AnswerEstimate estimate(limit);
        CallEnd const end = workplace.explainTreeAt(id, document.document(), estimate);
        if (!end.isAnswered() && !estimate.isMore()) {
            return complainAboutRequest(end, asked, workplace, console);
        }
        std::ostream& out = console.out();
        if (estimate.isMore()) {
            out << "elements  more than " << limit << "\nbytes     more than ";
        } else {
            out << "elements  " << estimate.elements() << "\nbytes     at most ";
        }
        out << estimate.bytes() << '\n';
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
                 .help = "Say how large the answer is, and do not build it: its elements, and the "
                         "memory that it takes at most"});
    command.epilog = R"(Examples:
  vexma metadata retail.model.xml --depth 2 --property name --property screenTip
  vexma metadata --catalog retail.catalog.xml --model /content/retail --user ann \
      --locale de --start '[Retail].[Sales]' --collection querySubject
  vexma metadata retail.model.xml --id qs.orders --depth 2 --property name --property ID
  vexma metadata retail.model.xml --request - < request.xml)";
    return [metadata](Console& console) { return metadata->run(console); };
}

} // namespace vex
