#include "VexObject.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ShownText.h"
#include "apps/vexma/Workplace.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/HostException.h"
#include "resources.h"

#include <memory>

namespace vex {

namespace {

struct PolicyCommand {
    std::string action;
    std::string view;
    std::string kind = "included";
    SourceOptions source;

    int run(Console& console) {
        source.forAllUsers = true;
        if (source.modelFile.empty() == source.catalogFile.empty()) {
            throw UsageException("give --catalog CATALOG.xml --model PATH");
        }
        source.check();
        auto const content = contentOf(source);
        std::shared_ptr<ModelVersion const> const version =
            content->getModel(visitRequestOf(source).modelPath);
        Model const& model = *version->model();
        if (view.empty()) {
            for (VEX_HANDLE const each : viewsOf(model)) {
                console.out() << printable(idAndName(each, model.defaultLocale()), false) << '\n';
            }
            return Done;
        }
        showView(model, console);
        return Done;
    }

    static Vex_Handle_Collection viewsOf(Model const& model) {
        return ModelFindings::elementsBelow(model.GetRootObject(),
                                            resources::getString(resources::SecurityView));
    }

    void showView(Model const& model, Console& console) const {
        I18NString const asked = I18NString::fromUtf8(view);
        for (VEX_HANDLE const each : viewsOf(model)) {
            if (idOf(each) == asked) {
                showSets(each, console);
                return;
            }
        }
        throw HostException("the model has no view \"" + view +
                            "\"; without --view the views are listed");
    }

    void showSets(VEX_HANDLE of, Console& console) const {
        for (VEX_HANDLE const set : ModelFindings::elementsBelow(of, "set")) {
            I18NString const& kindName = resources::getString(resources::SetKind);
            if (ModelFindings::valueOf(set, kindName, nullptr).toUtf8() != kind) {
                continue;
            }
            for (VEX_HANDLE const entry :
                 ModelFindings::elementsBelow(set, resources::getString(resources::SetEntry))) {
                I18NString id;
                VexObject(entry).GetValue(id, true);
                console.out() << printable(id.toUtf8(), false) << '\n';
            }
        }
    }
};

} // namespace

CommandRun addPolicyCommand(CommandSyntax& command) {
    auto const policy = std::make_shared<PolicyCommand>();
    command.add({.name = "ACTION",
                 .into = &policy->action,
                 .help = "show: print the ids of a view",
                 .isRequired = true,
                 .choices = {"show"}});
    command.add({.name = "--catalog",
                 .into = &policy->source.catalogFile,
                 .help = "Catalogue of models and users",
                 .word = "FILE"});
    command.add({.name = "--model",
                 .into = &policy->source.modelPath,
                 .help = "Path of the model in the catalogue",
                 .word = "PATH"});
    command.add({.name = "--view",
                 .into = &policy->view,
                 .help = "The view, by its id (default: list the views)",
                 .word = "ID"});
    command.add({.name = "--set",
                 .into = &policy->kind,
                 .help = "Which of its sets",
                 .word = "KIND",
                 .showsDefault = true,
                 .choices = {"included", "excluded", "hidden"}});
    command.epilog =
        R"(Prints what rules come to: the ids that a view lists, a line each, in document order. Views
that list ids themselves are shown as well.

Examples:
  vexma policy show --catalog retail.catalog.xml --model /content/retail
  vexma policy show --catalog retail.catalog.xml --model /content/retail --view clerks)";
    return [policy](Console& console) { return policy->run(console); };
}

} // namespace vex
