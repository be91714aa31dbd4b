#include "host/insight/RightsComparison.h"

#include "I18NHash.h"
#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"
#include "resources.h"

#include <functional>
#include <unordered_set>
#include <utility>

namespace vex {

namespace {

/// Takes what a side has, in an order: a key, which both sides share, and what makes the text
/// for people.
using TakeFact = std::function<void(std::string key, std::function<std::string()> const& tell)>;

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

void tellView(Model const& model, VEX_HANDLE view, TakeFact const& take) {
    I18NLocale const locale = model.defaultLocale();
    std::string const id = idOf(view).toUtf8();
    std::string const name = "the view " + idAndName(view, locale);
    auto const add = [&](std::string const& key, auto const& tell) {
        take("view\n" + id + '\n' + key, [&] { return name + tell(); });
    };
    add("", [] { return std::string(); });
    std::string const roleBased = valueOf(view, resources::RoleBased);
    if (!roleBased.empty()) {
        add("roleBased\n" + roleBased, [&] { return " is role based: " + roleBased; });
    }
    bool isFirst = true;
    for (VEX_HANDLE const member :
         ModelFindings::elementsBelow(view, resources::getString(resources::ViewMember))) {
        std::string const role = valueOf(member, resources::MemberRole);
        add((isFirst ? "first\n" : "member\n") + role, [&] {
            return (isFirst ? " is for the role " : " names, without effect, the role ") + role;
        });
        isFirst = false;
    }
    for (VEX_HANDLE const set : ModelFindings::elementsBelow(view, "set")) {
        std::string const kind = valueOf(set, resources::SetKind);
        for (VEX_HANDLE const item :
             ModelFindings::elementsBelow(set, resources::getString(resources::SetEntry))) {
            I18NString entry;
            VexObject(item).GetValue(entry, true);
            add(kind + '\n' + entry.toUtf8(), [&] {
                VEX_HANDLE const object = model.findById(entry);
                return ' ' + verbOf(kind) + " the " +
                       (object.IsNotNull() ? describeObject(object, locale)
                                           : "unknown id " + entry.toUtf8());
            });
        }
    }
}

void tellFacts(RightsSide const& side, TakeFact const& take) {
    for (I18NLocale const& locale : side.model.locales()) {
        std::string const name = locale.getName().toUtf8();
        take("language\n" + name, [&] { return "the language " + name; });
    }
    for (VEX_HANDLE const view : ModelFindings::elementsBelow(
             side.model.GetRootObject(), resources::getString(resources::SecurityView))) {
        tellView(side.model, view, take);
    }
    if (side.catalogue == nullptr) {
        return;
    }
    CatalogueModel const* const entry = side.catalogue->findModel(side.path);
    if (entry != nullptr) {
        for (CatalogueGrant const& grant : entry->grants) {
            std::string const role = grant.role.toUtf8();
            std::string const view = grant.view.toUtf8();
            take("grant\n" + role + '\n' + view,
                 [&] { return "the role " + role + " may use the view " + view; });
        }
    }
    for (CatalogueUser const& user : side.catalogue->users) {
        std::string const name = user.name.toUtf8();
        take("user\n" + name, [&] { return "the user " + name; });
        for (I18NString const& each : user.roles) {
            std::string const role = each.toUtf8();
            take("user\n" + name + '\n' + role,
                 [&] { return "the user " + name + " has the role " + role; });
        }
    }
}

/// Adds what the other side lacks.
void addMissing(RightsSide const& side, RightsSide const& other, bool isAdded,
                std::vector<RightChange>& changes) {
    std::unordered_set<std::string, I18NTextHasher, std::equal_to<>> known;
    tellFacts(other, [&](std::string key, auto const& /*tell*/) {
        Budget::charge();
        Budget::chargeBytes(sizeof key + key.size());
        known.insert(std::move(key));
    });
    tellFacts(side, [&](std::string key, auto const& tell) {
        Budget::charge();
        if (known.insert(std::move(key)).second) {
            changes.push_back({isAdded, tell()});
        }
    });
}

} // namespace

std::vector<RightChange> compareRights(RightsSide const& before, RightsSide const& after) {
    std::vector<RightChange> changes;
    addMissing(before, after, false, changes);
    addMissing(after, before, true, changes);
    return changes;
}

} // namespace vex
