#include "host/import/draft/FinishedImport.h"

#include "KRLException.h"
#include "host/catalogue/Catalogue.h"
#include "host/import/draft/DocumentText.h"
#include "host/import/draft/DraftedModel.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"
#include "host/import/xml/ModelLoader.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <stdexcept>
#include <utility>

namespace vex {

namespace {

/// A name that neither users nor roles of the draft have.
std::string freeName(ImportDraft const& draft, std::string const& wanted) {
    std::set<std::string> taken;
    for (DraftUser const& user : draft.users()) {
        taken.insert(user.name);
        taken.insert(user.roles.begin(), user.roles.end());
    }
    for (DraftGrant const& grant : draft.grants) {
        taken.insert(grant.role);
    }
    std::string name = wanted;
    for (std::size_t number = 2; taken.contains(name); ++number) {
        name = wanted + " " + std::to_string(number);
    }
    return name;
}

void addStandIns(ImportWork& work) {
    ImportDraft& draft = work.draft;
    std::set<std::string> names;
    std::set<std::string> held;
    for (DraftUser const& user : draft.users()) {
        names.insert(user.name);
        held.insert(user.roles.begin(), user.roles.end());
    }
    for (DraftGrant const& grant : draft.grants) {
        if (grant.role == draft.roleOfAll) {
            continue;
        }
        // A user who bears the name of the role is another's; nothing is given to them.
        if (held.insert(grant.role).second && !names.contains(grant.role)) {
            draft.addUser(grant.role, grant.role);
            work.account.note("nobody holds the role \"" + grant.role +
                              "\": a user of its name stands in");
        }
    }
}

/// Somebody has to be there for a role that everybody has.
void addSomebody(ImportWork& work) {
    ImportDraft& draft = work.draft;
    if (draft.roleOfAll.empty() || !draft.users().empty()) {
        return;
    }
    std::string const name = freeName(draft, "anybody");
    draft.addUser(name, draft.roleOfAll);
    work.account.note("the source names no users and no roles but that of all: the user \"" + name +
                      "\" has it");
}

void addOwner(ImportWork& work) {
    ImportDraft& draft = work.draft;
    ImportRequest const& request = work.request;
    if (request.owner.empty() && draft.isSeenBySomebody()) {
        return;
    }
    std::string const name =
        request.owner.empty() ? freeName(draft, "owner") : trimmed(request.owner);
    std::string const role = freeName(draft, "owner");
    std::vector<std::size_t> everything(draft.model.size() - 1); // the model itself is no part
    std::iota(everything.begin(), everything.end(), ModelDraft::Root + 1);
    work.spendOnViews(everything.size());
    draft.views.push_back(
        {.key = {"view", "everything"}, .name = "Everything", .included = std::move(everything)});
    draft.grants.push_back({role, draft.views.size() - 1});
    draft.addUser(name, role);
    work.account.note("the user \"" + name + "\" sees everything" +
                      (request.owner.empty() ? ": without one nobody would see anything" : ""));
}

void giveIds(ImportDraft& draft) {
    std::vector<DraftKey const*> keys;
    for (DraftView const& view : draft.views) {
        keys.push_back(&view.key);
    }
    std::vector<std::string> ids = draft.model.settle(keys);
    std::vector<std::size_t> const order = draft.model.inDocumentOrder();
    std::vector<std::size_t> rank(order.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
        rank[order[place]] = place;
    }
    for (std::size_t number = 0; number < draft.views.size(); ++number) {
        DraftView& view = draft.views[number];
        view.id = std::move(ids[number]);
        std::sort(view.included.begin(), view.included.end(),
                  [&](std::size_t a, std::size_t b) { return rank[a] < rank[b]; });
        view.included.erase(std::unique(view.included.begin(), view.included.end()),
                            view.included.end());
    }
}

bool hasErrors(Diagnostics const& found) {
    return std::any_of(found.begin(), found.end(),
                       [](Diagnostic const& each) { return each.severity == Severity::Error; });
}

/// What was written is what others will read: it is read here first.
void readAgain(ImportWork& work, ImportedDocuments const& documents, Model const& model) {
    Diagnostics problems;
    std::string const file = work.request.name + ".model.xml";
    LoadOptions options;
    static_cast<ModelLimits&>(options.limits) = work.request.limits.model;
    auto const read = loadModelText(documents.model, file, options, problems);
    if (read == nullptr || read->elementCount() != model.elementCount()) {
        throw std::logic_error("the document of an import is not its model: " +
                               (problems.empty() ? file : toString(problems.front())));
    }
    try {
        readCatalogueText(documents.catalogue, work.request.name + ".catalog.xml", "", problems);
    } catch (KRLDocumentException const& problem) {
        work.refuse(std::string("the users, roles and views of the source make "
                                "no catalogue: ") +
                    problem.GetProblem());
    }
    if (hasErrors(problems)) {
        work.refuse("the users, roles and views of the source make no catalogue: " +
                    problems.front().text);
    }
}

} // namespace

ImportedDocuments finishImport(ImportWork& work) {
    if (work.request.hasStandIns) {
        addStandIns(work);
        addSomebody(work);
    }
    work.draft.giveRoleOfAll();
    addOwner(work);
    work.draft.giveRoleOfAll(); // the owner is somebody, too
    giveIds(work.draft);
    auto const model = writeDraftedModel(work);
    if (model == nullptr || hasErrors(work.found)) {
        throw SourceReport::Stop();
    }
    ImportedDocuments documents{modelDocumentOf(work.draft),
                                catalogueDocumentOf(work.draft, work.request.name)};
    readAgain(work, documents, *model);
    return documents;
}

bool canNameImport(std::string const& name) {
    bool const hasForbidden = std::any_of(name.begin(), name.end(), [](char unit) {
        return static_cast<unsigned char>(unit) < ' ' || unit == '/' || unit == '\\' ||
               unit == '\x7f';
    });
    return !name.empty() && name.front() != '.' && !hasForbidden && trimmed(name) == name &&
           I18NString::fromUtf8(name).toUtf8() == name;
}

} // namespace vex
