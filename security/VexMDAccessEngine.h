#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "Vex_Handle_Collection.h"
#include "security/VexAccessDecision.h"
#include "security/VexIdList.h"

#include <vector>

class VexSession;

/// Tells for one session which object ids its security views and roles include.
///
/// The model's views are read once, at the first question that needs them; when
/// reading fails, the next question reads again. Where the host has the ids of a view
/// ready, it is asked about ids in place of reading them. Threads: one at a time.
class VexMDAccessEngine {
public:
    /// Copies the lists and the locale; the session is not owned and must
    /// outlive the engine. With `unrestricted` every id is included and the
    /// model is never read.
    VexMDAccessEngine(VexSession* session, std::vector<I18NString> const& requestedViews,
                      std::vector<I18NString> const& roles, I18NLocale const& locale,
                      bool unrestricted);

    /// `skipViewLists` passes over the included lists of the requested views:
    /// only the role-based views decide.
    bool IsIncluded(I18NString const& id, bool skipViewLists);

    /// The same decision with the rule that made it.
    VexAccessVerdict Decide(I18NString const& id, bool skipViewLists);

    /// Decides for each of the objects and tells what the model's views say of
    /// it. Reads the views once more.
    void Explain(Vex_Handle_Collection const& objects, bool skipViewLists,
                 VexAccessExplanation& explanation);

    /// The objects whose ids are included, in the order given.
    Vex_Handle_Collection FindVisibleObjects(Vex_Handle_Collection& objects);

private:
    void populateAccessInfo();
    void filterSecurityViews(Vex_Handle_Collection& views);
    void loadHiddenExludedIncludedIdLists(VEX_HANDLE object, I18NString const& listKind,
                                          bool roleBased, bool defaultView);
    bool IsRequestedAndAccesibleView(I18NString const& viewId);
    bool isRoleBased(VEX_HANDLE const& view, I18NString const& propertyName);

    void explainViews(Vex_Handle_Collection const& views, VexAccessExplanation& explanation);
    Vex_Handle_Collection allSecurityViews();

    VexIdList* listFor(I18NString const& listKind, bool roleBased, bool defaultView);

    VexSession* m_session;
    VexIdList m_excludedIds; // no load asks for this kind of a view in force
    VexIdList m_hiddenIds;   // nor for this one
    VexIdList m_includedIds;
    std::vector<I18NString> m_requestedViews;
    I18NLocale m_locale;
    std::vector<I18NString> m_roles;
    VexIdList m_roleIncludedIds;
    VexIdList m_roleExcludedIds;
    VexIdList m_defaultExcludedIds;
    VexIdList m_roleHiddenIds;
    bool m_hasRoleBasedViews = false;
    bool m_hasDefaultView = false;
    bool m_populated = false;
    bool m_enforced;
};
