#include "apps/vexma/Commands.h"
#include "apps/vexma/MetadataCall.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/TreeDrawing.h"
#include "apps/vexma/WhyTree.h"

#include <memory>

namespace vex {

namespace {

struct TreeCommand {
    SourceOptions source;
    RequestOptions request;
    bool why = false;

    int Run(Console& console) const {
        source.check();
        request.check(source);
        if (why) {
            return runWithReasons(console);
        }
        KRLIDOM_OwnedDocument document = request.makeRequest();
        MetadataRequest const asked = MetadataRequest::read(document.document());
        Workplace workplace(source, console);
        ActionOutcome const outcome = callMetadata(workplace, std::move(document));
        if (!isHandled(outcome)) {
            return complainAboutRequest(outcome, asked, workplace, console);
        }
        drawResponse(console.out(), outcome.response.document().getDocumentElement(),
                     console.outHasColour());
        return Done;
    }

    int runWithReasons(Console& console) const {
        Workplace workplace(source, console);
        TreeAnswer const answer =
            askForTree(workplace, request.makeQuestion(*workplace.Session().getModel()));
        if (!isHandled(answer.outcome)) {
            return complainAbout(answer.outcome, console);
        }
        try {
            drawTreeWithReasons(console.out(), workplace, answer.objects, console.outHasColour());
        } catch (VexException const& refusal) {
            return complainAbout(refusal, console);
        }
        return Done;
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
    return [tree](Console& console) { return tree->Run(console); };
}

} // namespace vex
