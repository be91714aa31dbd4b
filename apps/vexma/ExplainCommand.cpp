#include "apps/vexma/Commands.h"
#include "apps/vexma/ExplainReport.h"
#include "apps/vexma/ObjectArguments.h"
#include "apps/vexma/TreeAnswer.h"
#include "apps/vexma/WordWarning.h"
#include "host/insight/RuleStory.h"
#include "host/protocol/JsonExplanation.h"

#include <memory>
#include <optional>

namespace vex {

namespace {

struct ExplainCommand {
    SourceOptions source;
    std::vector<std::string> given;
    long mode = 0;
    bool json = false;

    int run(Console& console) {
        source.keepPolicyTrace = true;
        ObjectArguments const arguments(given, source);
        Workplace workplace(source, console);
        complainAboutLocale(workplace, console);
        Vex_Handle_Collection const objects = arguments.findIn(workplace.model());
        std::optional<Explanation> told;
        CallEnd end;
        CallEnd const whole = workplace.together([&] { end = explain(workplace, objects, told); });
        if (!whole.isAnswered()) {
            return complainAbout(whole, console);
        }
        if (told) {
            write(console, *told);
        }
        return end.isAnswered() ? Done : complainAbout(end, console);
    }

    /// How the call ended that was not answered. Without trees it is told why there are none;
    /// a plug-in may refuse them.
    CallEnd explain(Workplace& workplace, Vex_Handle_Collection const& objects,
                    std::optional<Explanation>& told) const {
        AccessReasons const reasons = workplace.explain(objects, mode == 1);
        if (!reasons.end.isAnswered()) {
            return reasons.end;
        }
        ModelTrees const trees = askForTrees(workplace);
        told = tellAccess(workplace.model(), workplace.locale(), objects, reasons.explanation,
                          trees.objects, refusalOf(trees));
        if (auto const& trace = workplace.visit().version->policyTrace()) {
            for (std::size_t number = 0; number < objects.size(); ++number) {
                told->objects[number].rules =
                    tellRules(*trace, workplace.model(), workplace.locale(), objects[number]);
            }
        }
        return trees.refusal && !trees.refusal->isDecided() ? *trees.refusal : reasons.end;
    }

    static std::optional<std::string> refusalOf(ModelTrees const& trees) {
        return trees.refusal ? std::optional(trees.refusal->text) : std::nullopt;
    }

    void write(Console& console, Explanation const& explanation) const {
        if (json) {
            std::ostream& out = console.out(Spelling::Json);
            writeJson(out, explanation);
            out << '\n';
        } else {
            writeExplanation(console.out(), explanation, console.outHasColour());
        }
    }
};

} // namespace

CommandRun addExplainCommand(CommandSyntax& command) {
    auto const explain = std::make_shared<ExplainCommand>();
    command.rest = &explain->given; // see ObjectArguments
    explain->source.addTo(command);
    command.add({.name = "--mode",
                 .into = &explain->mode,
                 .help = "1 leaves the views' lists of included objects out of account",
                 .word = "N",
                 .showsDefault = true});
    command.add({.name = "--json",
                 .into = &explain->json,
                 .help = "Write one JSON object in place of sentences"});
    command.epilog =
        R"(The arguments are ids, or references such as [Sales].[Orders]; without --catalog the
first one is the MODEL.xml. Tells for each object whether it is accessible, the rule
that decided, how the tree treats it and which views name it; then what each view of the
model is to the user.

Examples:
  vexma explain --catalog retail.catalog.xml --model /content/retail --user ann \
      '[Sales].[Margin]'
  vexma explain retail.model.xml ca.margin --json)";
    return [explain](Console& console) { return explain->run(console); };
}

} // namespace vex
