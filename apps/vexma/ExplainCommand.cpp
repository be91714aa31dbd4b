#include "KRLException.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ObjectArguments.h"
#include "apps/vexma/TreeAnswer.h"
#include "host/insight/AccessStory.h"
#include "host/insight/ObjectText.h"
#include "host/insight/TreeStory.h"

#include <memory>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

using Json = nlohmann::ordered_json;

/// All that there is to tell about the objects.
struct Explanation {
    HostSession& session;
    VexAccessExplanation access;
    ModelTrees trees;
    AccessStory accessStory{*session.getModel(), *session.GetCurrentLocale(), access};
    TreeStory treeStory{*session.GetCurrentLocale(), trees.objects};

    std::vector<std::string> treatmentOf(VEX_HANDLE object, bool isIncluded) const {
        if (trees.refusal) {
            return {"there is none: " + trees.refusal->text};
        }
        return treeStory.treatmentOf(object, isIncluded);
    }
};

Json describeAsJson(Explanation const& told, VexExplainedObject const& object, VEX_HANDLE handle) {
    I18NLocale const& locale = *told.session.GetCurrentLocale();
    Json mentions = Json::array();
    for (VexViewMention const& mention : object.mentions) {
        mentions.push_back({{"view", told.access.views[mention.view].id.toUtf8()},
                            {"included", mention.included},
                            {"excluded", mention.excluded},
                            {"hidden", mention.hidden}});
    }
    return {{"id", object.id.toUtf8()},
            {"class", classOf(handle).toUtf8()},
            {"name", nameIn(locale, handle).toUtf8()},
            {"accessible", object.included},
            {"rule", codeOf(object.reason)},
            {"text", told.accessStory.verdictOf(object)},
            {"tree", told.treatmentOf(handle, object.included)},
            {"views", mentions}};
}

Json describeAsJson(Explanation const& told, VexExplainedView const& view) {
    VEX_HANDLE const handle = told.session.getModel()->findById(view.id);
    return {{"id", view.id.toUtf8()},
            {"name", nameIn(*told.session.GetCurrentLocale(), handle).toUtf8()},
            {"inForce", view.inForce},
            {"role", codeOf(view.role)},
            {"firstMemberRole", view.firstMemberRole.toUtf8()},
            {"text", told.accessStory.partOf(view)}};
}

void writeJson(std::ostream& out, Explanation const& told, Vex_Handle_Collection const& objects) {
    Json whole{{"objects", Json::array()}, {"views", Json::array()}};
    for (std::size_t index = 0; index < objects.size(); ++index) {
        whole["objects"].push_back(
            describeAsJson(told, told.access.objects[index], objects[index]));
    }
    for (VexExplainedView const& view : told.access.views) {
        whole["views"].push_back(describeAsJson(told, view));
    }
    constexpr int indent = 2;
    out << whole.dump(indent) << '\n';
}

void writeText(std::ostream& out, Explanation const& told, Vex_Handle_Collection const& objects) {
    auto const line = [&](char const* indent, std::string const& text) {
        out << indent << printable(text, false) << '\n';
    };
    for (std::size_t index = 0; index < objects.size(); ++index) {
        VexExplainedObject const& object = told.access.objects[index];
        line("", describeObject(objects[index], *told.session.GetCurrentLocale()));
        line("  ", told.accessStory.verdictOf(object));
        for (std::string const& sentence : told.treatmentOf(objects[index], object.included)) {
            line("  in the tree: ", sentence);
        }
        for (std::string const& mention : told.accessStory.mentionsOf(object)) {
            line("  ", mention);
        }
        out << '\n';
    }
    out << (told.access.views.empty() ? "no view was considered\n"
                                      : "the views of the model, for this user:\n");
    for (VexExplainedView const& view : told.access.views) {
        line("  ", told.accessStory.nameOf(view) + ": " + told.accessStory.partOf(view));
    }
}

struct ExplainCommand {
    SourceOptions source;
    std::vector<std::string> given;
    long mode = 0;
    bool json = false;

    int Run(Console& console) {
        ObjectArguments const arguments(given, source);
        Workplace workplace(source, console);
        HostSession& session = workplace.Session();
        Vex_Handle_Collection const objects = arguments.findIn(session);
        try {
            Explanation const told{session, workplace.explain(objects, mode == 1),
                                   askForTrees(workplace)};
            (json ? writeJson : writeText)(console.out(), told, objects);
        } catch (VexException const& refusal) {
            return complainAbout(refusal, console);
        } catch (KRLLimitException const& limit) {
            console.complain(limit.what());
            return Refused;
        }
        return Done;
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
    return [explain](Console& console) { return explain->Run(console); };
}

} // namespace vex
