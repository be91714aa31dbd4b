#include "host/insight/RightsComparison.h"

#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "resources.h"

#include <set>

namespace vex {

namespace {

/// What a side has, in an order: a key, which both sides share, and the text for people.
struct Fact {
    std::string key;
    std::string text;
};
using Facts = std::vector<Fact>;

std::string valueOf(VEX_HANDLE element, resources::Word property) {
    return ModelFindings::valueOf(element, resources::getString(property), nullptr).toUtf8();
}

/// "includes" for the set kind "included", and so on; a kind without effect is told as it is.
std::string verbOf(std::string const& kind) {
    struct Row {
        resources::Word kind;
        char const* verb;
    };
    constexpr Row rows[] = {{resources::Included, "includes"},
                            {resources::Excluded, "excludes"},
                            {resources::Hidden, "hides"}};
    for (Row const& row : rows) {
        if (kind == resources::getString(row.kind).toUtf8()) {
            return row.verb;
        }
    }
    return "has in a set of the kind \"" + kind + '"';
}

void addView(Model const& model, VEX_HANDLE view, Facts& facts) {
    I18NLocale const locale = model.defaultLocale();
    std::string const id = idOf(view).toUtf8();
    std::string const name = "the view " + idAndName(view, locale);
    auto const add = [&](std::string const& key, std::string const& text) {
        facts.push_back({"view\n" + id + '\n' + key, name + text});
    };
    add("", "");
    std::string const roleBased = valueOf(view, resources::RoleBased);
    if (!roleBased.empty()) {
        add("roleBased\n" + roleBased, " is role based: " + roleBased);
    }
    bool isFirst = true;
    for (VEX_HANDLE const member :
         ModelFindings::elementsBelow(view, resources::getString(resources::ViewMember))) {
        std::string const role = valueOf(member, resources::MemberRole);
        add((isFirst ? "first\n" : "member\n") + role,
            (isFirst ? " is for the role " : " names, without effect, the role ") + role);
        isFirst = false;
    }
    for (VEX_HANDLE const set : ModelFindings::elementsBelow(view, "set")) {
        std::string const kind = valueOf(set, resources::SetKind);
        for (VEX_HANDLE const item :
             ModelFindings::elementsBelow(set, resources::getString(resources::SetEntry))) {
            I18NString entry;
            VexObject(item).GetValue(entry, true);
            VEX_HANDLE const object = model.findById(entry);
            add(kind + '\n' + entry.toUtf8(),
                ' ' + verbOf(kind) + " the " +
                    (object.IsNotNull() ? describeObject(object, locale)
                                        : "unknown id " + entry.toUtf8()));
        }
    }
}

Facts factsOf(RightsSide const& side) {
    Facts facts;
    for (I18NLocale const& locale : side.model.locales()) {
        std::string const name = locale.getName().toUtf8();
        facts.push_back({"language\n" + name, "the language " + name});
    }
    for (VEX_HANDLE const view : ModelFindings::elementsBelow(
             side.model.GetRootObject(), resources::getString(resources::SecurityView))) {
        addView(side.model, view, facts);
    }
    if (side.catalogue == nullptr) {
        return facts;
    }
    CatalogueModel const* const entry = side.catalogue->findModel(side.path);
    if (entry != nullptr) {
        for (CatalogueGrant const& grant : entry->grants) {
            std::string const role = grant.role.toUtf8();
            std::string const view = grant.view.toUtf8();
            facts.push_back(
                {"grant\n" + role + '\n' + view, "the role " + role + " may use the view " + view});
        }
    }
    for (CatalogueUser const& user : side.catalogue->users) {
        std::string const name = user.name.toUtf8();
        facts.push_back({"user\n" + name, "the user " + name});
        for (I18NString const& role : user.roles) {
            facts.push_back({"user\n" + name + '\n' + role.toUtf8(),
                             "the user " + name + " has the role " + role.toUtf8()});
        }
    }
    return facts;
}

/// Adds the facts whose keys the others lack.
void addMissing(Facts const& facts, Facts const& others, bool isAdded,
                std::vector<RightChange>& changes) {
    std::set<std::string> known;
    for (Fact const& other : others) {
        known.insert(other.key);
    }
    for (Fact const& fact : facts) {
        if (known.insert(fact.key).second) {
            changes.push_back({isAdded, fact.text});
        }
    }
}

} // namespace

std::vector<RightChange> compareRights(RightsSide const& before, RightsSide const& after) {
    Facts const was = factsOf(before);
    Facts const is = factsOf(after);
    std::vector<RightChange> changes;
    addMissing(was, is, false, changes);
    addMissing(is, was, true, changes);
    return changes;
}

} // namespace vex
