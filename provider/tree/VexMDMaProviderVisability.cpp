#include "provider/tree/VexMDMaProviderVisability.h"

#include "model/VexCollections.h"
#include "model/VexMDMaProviderUtility.h"
#include "model/VexParentNamespace.h"
#include "provider/VexConstants.h"
#include "resources.h"
#include "security/VexMDAccessEngine.h"

namespace {

// The collections below a namespace that can hold content.
constexpr long examinedClasses[] = {
    resources::Folder, resources::QuerySubject, resources::QueryItem, resources::QueryItemFolder,
    resources::Filter, resources::Calculation,  resources::Shortcut,
};

I18NString idOf(VEX_HANDLE object) {
    I18NString id;
    VexMDMaProviderUtility::GetId(object, id);
    return id;
}

} // namespace

VexMDMaProviderVisability::VexMDMaProviderVisability(I18NLocale const& locale, VexSession* session,
                                                     VexMDAccessEngine* engine,
                                                     VexMDMaProvider* provider)
    : m_session(session), m_locale(locale), m_engine(engine), m_provider(provider) {}

VexMDMaProviderVisability::state VexMDMaProviderVisability::IsVisible(VEX_HANDLE& object) {
    I18NString const id = idOf(object);
    auto const known = m_verdicts.find(id);
    if (known != m_verdicts.end()) {
        return known->second;
    }
    if (m_engine->IsIncluded(id, false)) {
        m_verdicts.emplace(id, Visible);
        return Visible;
    }
    // quirk: verdict-before-examination
    // Cached before the examination: content that encloses back to this same
    // namespace cannot raise its verdict any more. Kept on purpose.
    m_verdicts.emplace(id, NotVisible);
    state const examined = ExamineNamespaceVisability(object);
    return examined == Visible ? IsVisible(object) : examined;
}

VexMDMaProviderVisability::state
VexMDMaProviderVisability::ExamineNamespaceVisability(VEX_HANDLE& object) {
    state result = NothingFound;
    Vex_Handle_Collection found;
    for (long const number : examinedClasses) {
        if (hasIncludedChild(object, resources::getString(number), found)) {
            return Visible;
        }
    }
    for (std::size_t index = 0; index < found.size() && result != Visible; ++index) {
        VEX_HANDLE child = found[index];
        result = ExamineNamespaceVisability(child);
    }
    return result;
}

bool VexMDMaProviderVisability::hasIncludedChild(VEX_HANDLE& object, I18NString const& className,
                                                 Vex_Handle_Collection& found) {
    LoadCollection(object, className, found);
    for (VEX_HANDLE const child : found) {
        I18NString const childId = idOf(child);
        if (!m_engine->IsIncluded(childId, false)) {
            continue;
        }
        if (className == resources::getString(resources::Namespace)) {
            m_verdicts.emplace(idOf(object), NothingFound);
            object = child;
            m_verdicts.emplace(childId, Visible);
        } else {
            object = FindParentNamespace(child);
            m_verdicts.emplace(idOf(object), Visible);
        }
        return true;
    }
    return false;
}
