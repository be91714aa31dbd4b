// Why the engine decides as it does. Slower than deciding, and used only when
// people ask.

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "provider/VexConstants.h"
#include "security/VexMDAccessEngine.h"
#include "security/VexSecurityWords.h"

#include <algorithm>
#include <unordered_map>

using namespace VexSecurity;

namespace {

using ObjectsById = std::unordered_multimap<I18NString, VexExplainedObject*>;

struct KindRow {
    resources::Word kind;
    bool VexViewMention::*mark;
};
constexpr KindRow kindRows[] = {
    {resources::Included, &VexViewMention::included},
    {resources::Excluded, &VexViewMention::excluded},
    {resources::Hidden, &VexViewMention::hidden},
};

void markEntries(VEX_HANDLE set, bool VexViewMention::*mark, std::size_t view,
                 ObjectsById const& objects) {
    Vex_Handle_Collection entries;
    VexMDMaProviderUtility::getElementsByTagName(set, resources::getString(resources::SetEntry),
                                                 entries);
    for (VEX_HANDLE const entry : entries) {
        I18NString id;
        VexMDMaProviderUtility::GetValue(entry, id, true);
        auto const [first, last] = objects.equal_range(id);
        for (auto found = first; found != last; ++found) {
            auto& mentions = found->second->mentions;
            if (mentions.empty() || mentions.back().view != view) {
                mentions.push_back({view, false, false, false});
            }
            mentions.back().*mark = true;
        }
    }
}

void markMentions(VEX_HANDLE view, std::size_t number, ObjectsById const& objects) {
    Vex_Handle_Collection sets;
    VexMDMaProviderUtility::getElementsByTagName(view, VexClass::Set, sets);
    for (VEX_HANDLE const set : sets) {
        I18NString const kind = PropertyOf(set, resources::SetKind);
        for (KindRow const& row : kindRows) {
            if (kind == resources::getString(row.kind)) {
                markEntries(set, row.mark, number, objects);
            }
        }
    }
}

} // namespace

void VexMDAccessEngine::Explain(Vex_Handle_Collection const& objects, bool skipViewLists,
                                VexAccessExplanation& explanation) {
    explanation = {};
    if (m_enforced) {
        populateAccessInfo(); // raises what a request would, without an object too
    }
    explanation.objects.reserve(objects.size());
    ObjectsById byId;
    for (VEX_HANDLE const object : objects) {
        VexExplainedObject explained;
        VexMDMaProviderUtility::GetId(object, explained.id);
        VexAccessVerdict const verdict = Decide(explained.id, skipViewLists);
        explained.included = verdict.included;
        explained.reason = verdict.reason;
        explanation.objects.push_back(std::move(explained));
        byId.emplace(explanation.objects.back().id, &explanation.objects.back());
    }
    if (!m_enforced) {
        return;
    }
    Vex_Handle_Collection const views = allSecurityViews();
    explainViews(views, explanation);
    for (std::size_t number = 0; number < views.size(); ++number) {
        markMentions(views[number], number, byId);
    }
}

void VexMDAccessEngine::explainViews(Vex_Handle_Collection const& views,
                                     VexAccessExplanation& explanation) {
    VexExplainedView* defaultView = nullptr;
    explanation.views.resize(views.size());
    for (std::size_t number = 0; number < views.size(); ++number) {
        VEX_HANDLE const view = views[number];
        VexExplainedView& explained = explanation.views[number];
        VexMDMaProviderUtility::GetId(view, explained.id);
        explained.inForce = IsRequestedAndAccesibleView(explained.id);
        Vex_Handle_Collection members;
        VexMDMaProviderUtility::getElementsByTagName(
            view, resources::getString(resources::ViewMember), members);
        if (!members.empty()) {
            explained.firstMemberRole = PropertyOf(members[0], resources::MemberRole);
        }
        if (!isRoleBased(view, resources::getString(resources::RoleBased))) {
            explained.role = VexViewRole::NotRoleBased;
        } else if (members.empty()) {
            if (defaultView != nullptr) {
                defaultView->role = VexViewRole::ReplacedDefault;
            }
            explained.role = VexViewRole::DefaultView;
            defaultView = &explained;
        } else {
            bool const held = std::find(m_roles.begin(), m_roles.end(),
                                        explained.firstMemberRole) != m_roles.end();
            explained.role = held ? VexViewRole::RoleHeld : VexViewRole::RoleNotHeld;
        }
    }
}
