#include "security/VexMDAccessEngine.h"

#include "VexSession.h"
#include "model/VexClassNames.h"
#include "model/VexFailure.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "security/VexSecurityWords.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <set>
#include <utility>

using namespace VexSecurity;

VexMDAccessEngine::VexMDAccessEngine(VexSession* session,
                                     std::vector<I18NString> const& requestedViews,
                                     std::vector<I18NString> const& roles, I18NLocale const& locale,
                                     bool unrestricted)
    : m_session(session), m_requestedViews(requestedViews), m_locale(locale), m_roles(roles),
      m_enforced(!unrestricted) {}

bool VexMDAccessEngine::IsIncluded(I18NString const& id, bool skipViewLists) {
    return Decide(id, skipViewLists).included;
}

VexAccessVerdict VexMDAccessEngine::Decide(I18NString const& id, bool skipViewLists) {
    if (m_enforced) {
        populateAccessInfo();
    }
    VexAccessFacts const facts{m_enforced,      m_hasRoleBasedViews, m_hasDefaultView,
                               m_includedIds,   m_roleIncludedIds,   m_roleExcludedIds,
                               m_roleHiddenIds, m_defaultExcludedIds};
    return DecideAccess(facts, id, skipViewLists);
}

Vex_Handle_Collection VexMDAccessEngine::FindVisibleObjects(Vex_Handle_Collection& objects) {
    if (!m_enforced) {
        return objects;
    }
    Vex_Handle_Collection visible;
    for (VEX_HANDLE const object : objects) {
        I18NString id;
        VexMDMaProviderUtility::GetId(object, id);
        if (IsIncluded(id, false)) {
            visible.push_back(object);
        }
    }
    return visible;
}

void VexMDAccessEngine::populateAccessInfo() {
    if (m_populated) {
        return;
    }
    Vex_Handle_Collection views = allSecurityViews();
    if (views.empty()) {
        RaiseFailure(VexFailure::ModelWithoutViews);
    }
    Vex_Handle_Collection requested;
    for (VEX_HANDLE const view : views) {
        I18NString id;
        VexMDMaProviderUtility::GetId(view, id);
        if (IsRequestedAndAccesibleView(id)) {
            requested.push_back(view);
        }
    }
    if (requested.empty()) {
        RaiseFailure(VexFailure::NoRequestedView);
    }
    // Of a requested view only the included kind counts; its other sets matter
    // through its role alone.
    for (VEX_HANDLE const view : requested) {
        loadHiddenExludedIncludedIdLists(view, resources::getString(resources::Included), false,
                                         false);
    }
    filterSecurityViews(views);
    m_populated = true;
}

Vex_Handle_Collection VexMDAccessEngine::allSecurityViews() {
    Vex_Handle_Collection views;
    VexMDMaProviderUtility::getElementsByTagName(m_session->GetObjectStore().GetRootObject(),
                                                 resources::getString(resources::SecurityView),
                                                 views);
    return views;
}

void VexMDAccessEngine::filterSecurityViews(Vex_Handle_Collection& views) {
    std::set<I18NString> const roles(m_roles.begin(), m_roles.end());
    m_hasRoleBasedViews = false;
    VEX_HANDLE defaultView = ConvertFromInt(0);
    for (VEX_HANDLE const view : views) {
        if (!isRoleBased(view, resources::getString(resources::RoleBased))) {
            continue;
        }
        m_hasRoleBasedViews = true;
        Vex_Handle_Collection members;
        VexMDMaProviderUtility::getElementsByTagName(
            view, resources::getString(resources::ViewMember), members);
        if (members.empty()) {
            defaultView = view; // the last such view in model order stays
            continue;
        }
        // quirk: first-member-speaks
        // Only the first member speaks for its view; further ones are never
        // looked at. Kept on purpose.
        if (roles.contains(PropertyOf(members[0], resources::MemberRole))) {
            for (resources::Word const kind :
                 {resources::Included, resources::Excluded, resources::Hidden}) {
                loadHiddenExludedIncludedIdLists(view, resources::getString(kind), true, false);
            }
        }
    }
    if (defaultView.IsNotNull()) {
        m_hasDefaultView = true;
        loadHiddenExludedIncludedIdLists(defaultView, resources::getString(resources::Excluded),
                                         false, true);
    }
}

void VexMDAccessEngine::loadHiddenExludedIncludedIdLists(VEX_HANDLE object,
                                                         I18NString const& listKind, bool roleBased,
                                                         bool defaultView) {
    if (!object.IsNotNull()) {
        return;
    }
    VexIdList* const list = listFor(listKind, roleBased, defaultView);
    std::shared_ptr<VexTextSet const> ready = VexMDMaProviderUtility::FindTextSet(
        object, VexClass::Set, resources::getString(resources::SetKind), listKind,
        resources::getString(resources::SetEntry));
    if (ready != nullptr && list != nullptr) {
        list->add(std::move(ready));
        return;
    }
    Vex_Handle_Collection sets;
    VexMDMaProviderUtility::getElementsByTagName(object, VexClass::Set, sets);
    // The entries of all matching sets at once: a list may be spread over a set for each id.
    Vex_Handle_Collection entries;
    entries.reserve(sets.size());
    VexMDMaProviderUtility::FindElementsWithin(
        {sets.begin(), sets.end()}, resources::getString(resources::SetKind), listKind, nullptr,
        resources::getString(resources::SetEntry), entries);
    if (list == nullptr) {
        return;
    }
    list->reserveMore(entries.size());
    I18NString id;
    for (VEX_HANDLE const entry : entries) {
        bool const hasValue = VexMDMaProviderUtility::GetValue(entry, id, true);
        list->insert(hasValue ? id.view() : std::u16string_view());
    }
}

VexIdList* VexMDAccessEngine::listFor(I18NString const& listKind, bool roleBased,
                                      bool defaultView) {
    struct Row {
        resources::Word kind;
        VexIdList* ofRole;
        VexIdList* ofDefaultView;
        VexIdList* ofView;
    };
    Row const rows[] = {
        {resources::Included, &m_roleIncludedIds, &m_includedIds, &m_includedIds},
        {resources::Excluded, &m_roleExcludedIds, &m_defaultExcludedIds, &m_excludedIds},
        {resources::Hidden, &m_roleHiddenIds, &m_hiddenIds, &m_hiddenIds},
    };
    for (Row const& row : rows) {
        if (listKind == resources::getString(row.kind)) {
            return roleBased ? row.ofRole : defaultView ? row.ofDefaultView : row.ofView;
        }
    }
    return nullptr;
}

bool VexMDAccessEngine::IsRequestedAndAccesibleView(I18NString const& viewId) {
    return std::find(m_requestedViews.begin(), m_requestedViews.end(), viewId) !=
           m_requestedViews.end();
}

bool VexMDAccessEngine::isRoleBased(VEX_HANDLE const& view, I18NString const& propertyName) {
    I18NString name = propertyName;
    VEX_HANDLE const property = VexMDMaProviderUtility::GetPropertyByName(view, name, nullptr);
    if (!property.IsNotNull()) {
        return false;
    }
    I18NString value;
    VexMDMaProviderUtility::GetValue(property, value, true);
    if (value == "true" || value == "false") {
        return value == "true";
    }
    // quirk: role-based-by-leading-number
    // Any other text counts by its leading number, so that "1" and "2x" mean
    // yes, "0" and "yes" mean no. Kept on purpose.
    return std::strtol(value.c_str(), nullptr, 10) != 0;
}
