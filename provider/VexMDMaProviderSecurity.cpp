// The session's security information, and the classes that it covers.

#include "KRLThreadMutex.h"
#include "provider/VexConstants.h"
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
    m_security.retrieve();
}

std::set<I18NString>& VexMDMaProvider::GetSecuredObjectsSet() {
    static std::set<I18NString> theSecuredObjectsSet;
    static std::atomic<bool> filled{false};
    // A caller may have emptied it: then it is filled again.
    if (filled.load(std::memory_order_acquire) && !theSecuredObjectsSet.empty()) {
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
