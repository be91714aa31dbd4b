#include "VexObject.h"
#include "apps/vexma/Commands.h"
#include "apps/vexma/ShownText.h"
#include "apps/vexma/Workplace.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "host/insight/PolicyDraft.h"
#include "host/store/image/HostException.h"
#include "resources.h"

#include <memory>

namespace vex {

namespace {

struct PolicyCommand {
    std::string action;
    std::string catalogFile; // without its option
    std::string view;
    std::string kind = "included";
    SourceOptions source;

    int run(Console& console) {
        source.forAllUsers = true;
        if (source.catalogFile.empty() == catalogFile.empty()) {
            throw UsageException("give one catalogue: vexma policy " + action +
                                 " CATALOG.xml --model PATH");
        }
        source.catalogFile += catalogFile;
        source.check();
        return action == "from" ? writePolicy(console) : show(console);
    }

    int show(Console& console) const {
        auto const content = contentOf(source, console);
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

    /// Of the views that the model lists itself; what a policy adds to them is one already.
    int writePolicy(Console& console) const {
        auto const content = contentOf(source, console);
        VisitRequest const request = visitRequestOf(source);
        std::shared_ptr<Catalogue const> const catalogue = content->getCatalogue();
        CatalogueModel const* const entry = catalogue->findModel(request.modelPath);
        if (entry == nullptr) {
            content->getModel(request.modelPath); // tells which there are
            return Unreadable;
        }
        LoadOptions load;
        load.input = source.sizes.model();
        auto const model = loadModel(entry->file, load);
        PolicyDraft draft;
        std::string difference;
        for (bool const hasTraits : {true, false}) {
            draft = draftPolicy(*model, hasTraits);
            if (!draft.problem.empty()) {
                break;
            }
            difference = findDifference(*model, entry->file, draft.text, load);
            if (difference.empty()) {
                break;
            }
        }
        for (std::string const& each : draft.leftOut) {
            console.complain("left out, for it has no effect: " + each);
        }
        if (!draft.problem.empty() || !difference.empty()) {
            console.complain("no policy was written: " +
                             (draft.problem.empty() ? difference : draft.problem));
            return Refused;
        }
        console.out() << draft.text;
        console.complain("views: " + std::to_string(draft.views) +
                         ", entries: " + std::to_string(draft.entries) +
                         ", selectors in their "
                         "place: " +
                         std::to_string(draft.selectors) + "; compared: the same");
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
                 .help = "show: print the ids of a view; from: write the views of a model as rules",
                 .isRequired = true,
                 .choices = {"show", "from"}});
    command.add({.name = "CATALOG.xml",
                 .into = &policy->catalogFile,
                 .help = "Catalogue of models and users, in the place of --catalog"});
    command.add({.name = "--catalog",
                 .into = &policy->source.catalogFile,
                 .help = "Catalogue of models and users",
                 .word = "FILE"});
    command.add({.name = "--model",
                 .into = &policy->source.modelPath,
                 .help = "Path of the model in the catalogue",
                 .word = "PATH"});
    policy->source.addCacheTo(command);
    policy->source.sizes.addTo(command);
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

"from" goes the other way: it writes a policy to standard output, with rules for what the views
of the model list. The views that come of it are compared with those of the model, every id of
every set; a policy that differs is not written. Put it into a file, remove the views from the
model, and name the file at the model in the catalogue: policy="FILE".

Exit status: 1 when no policy was written; else as for every command.

Examples:
  vexma policy show --catalog retail.catalog.xml --model /content/retail
  vexma policy show --catalog retail.catalog.xml --model /content/retail --view clerks
  vexma policy from retail.catalog.xml --model /content/retail > retail.policy.yaml)";
    return [policy](Console& console) { return policy->run(console); };
}

} // namespace vex
