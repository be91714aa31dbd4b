// The session's security information, and the classes that it covers.

#include "KRLThreadMutex.h"
#include "VexSession.h"
#include "model/VexFailure.h"
#include "provider/VexMDMaProvider.h"
#include "resources.h"

#include <atomic>

namespace {

KRLThreadMutex GSecuredObjects(0);

constexpr long securedClasses[] = {
    resources::Namespace, resources::Folder,          resources::QuerySubject,
    resources::QueryItem, resources::QueryItemFolder, resources::Calculation,
    resources::Filter,    resources::Function,        resources::Shortcut,
};

} // namespace

void VexMDMaProvider::RetrieveSecurityInfo() {
    if (m_securityRetrieved) {
        return;
    }
    VexModelService* const service = m_session->GetModelService();
    m_securitySource = service != nullptr ? service->GetSecurityInfoSource(m_modelPath) : nullptr;
    if (m_securitySource == nullptr) {
        RaiseFailure(VexFailure::ProviderWithoutSource);
    }
    m_securitySource->GetAvailableViews(m_availableViews);
    if (m_availableViews.empty()) {
        RaiseFailure(VexFailure::ProviderWithoutViews);
    }
    m_securitySource->GetRoles(m_roles);
    // quirk: metadata-accepts-no-roles
    // The views are tested once more and the roles never: a user without roles
    // is accepted here, unlike in the accessibility action. Kept on purpose.
    if (m_availableViews.empty()) {
        RaiseFailure(VexFailure::ProviderWithoutViews);
    }
    m_securityRetrieved = true;
}

std::set<I18NString>& VexMDMaProvider::GetSecuredObjectsSet() {
    static std::set<I18NString> theSecuredObjectsSet;
    static std::atomic<bool> filled{false};
    if (filled.load(std::memory_order_acquire)) {
        return theSecuredObjectsSet;
    }
    KRLThreadGuard const guard(GSecuredObjects);
    if (theSecuredObjectsSet.empty()) {
        std::set<I18NString> classes;
        for (long const number : securedClasses) {
            classes.insert(resources::getString(number));
        }
        theSecuredObjectsSet.swap(classes);
        filled.store(true, std::memory_order_release);
    }
    return theSecuredObjectsSet;
}

bool VexMDMaProvider::IsObjectSecured(I18NString const& className) {
    return GetSecuredObjectsSet().contains(className);
}
