#include "apps/vexma/Commands.h"
#include "apps/vexma/RequestComplaint.h"
#include "apps/vexma/RequestOptions.h"
#include "apps/vexma/StartWarning.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/TreeDrawing.h"
#include "apps/vexma/WhyTree.h"
#include "apps/vexma/WordWarning.h"

#include <memory>

namespace vex {

namespace {

struct TreeCommand {
    SourceOptions source;
    RequestOptions request;
    bool why = false;

    int run(Console& console) const {
        source.check();
        request.check(source);
        if (why) {
            return runWithReasons(console);
        }
        std::string const text = request.readText();
        KRLIDOM_OwnedDocument const document = request.makeRequest(text);
        MetadataRequest const asked = MetadataRequest::read(document.document());
        I18NString const id = request.startId();
        Workplace workplace(source, console);
        MetadataAnswer const answer = workplace.metadataAt(id, document.document());
        RequestWarnings warnings = request.makeWarnings();
        warnAboutLocale(workplace, warnings);
        warnAboutWords({document, asked, id, text, request.fileName()}, workplace, warnings);
        if (!answer.end.isAnswered()) {
            return warnings.finish(console,
                                   complainAboutRequest(answer.end, asked, workplace, console));
        }
        KRLIDOM_Element const response = answer.response.document().getDocumentElement();
        drawResponse(console.out(), response, console.outHasColour());
        warnAboutStart(asked, id, response, workplace, warnings);
        return warnings.finish(console, Done);
    }

    int runWithReasons(Console& console) const {
        Workplace workplace(source, console);
        TreeQuestion const question = request.makeQuestion(workplace.model());
        TreeAnswer const answer = askForTree(workplace, question, request.startId());
        if (!answer.end.isAnswered()) {
            return complainAbout(answer.end, console);
        }
        CallEnd const explained =
            drawTreeWithReasons(console.out(), workplace, answer.objects, console.outHasColour());
        if (!explained.isAnswered()) {
            return complainAbout(explained, console);
        }
        RequestWarnings warnings = request.makeWarnings();
        warnAboutLocale(workplace, warnings);
        warnAboutStart(question.makeRequest(), request.startId(), KRLIDOM_Node(), workplace,
                       warnings);
        return warnings.finish(console, Done);
    }
};

} // namespace

CommandRun addTreeCommand(CommandSyntax& command) {
    auto const tree = std::make_shared<TreeCommand>();
    tree->source.addModelFileTo(command);
    tree->source.addTo(command);
    tree->request.addTo(command);
    command.add({.name = "--why",
                 .into = &tree->why,
                 .help = "Draw what is left out too, with the reason; in brackets without colour"});
    command.epilog = R"(Draws what "vexma metadata" answers to the same options.

Examples:
  vexma tree retail.model.xml --depth 3
  vexma tree --catalog retail.catalog.xml --model /content/retail --user ann --why
  vexma tree --catalog retail.catalog.xml --model /content/retail --user carl --locale de
  vexma tree retail.model.xml --start '[Retail].[Sales]' --property name --property usage)";
    return [tree](Console& console) { return tree->run(console); };
}

} // namespace vex
