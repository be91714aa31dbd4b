// The reduced tree: every object with the same four attributes. No request of
// the plug-in's own writes it; it belongs to the provider's interface.

#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexMDMaProvider.h"
#include "resources.h"

#include <algorithm>

namespace {

constexpr char const* leftOut[] = {"relationship", "securityViews"};
constexpr char const* containers[] = {VexClass::Namespace, "folder",        VexClass::QuerySubject,
                                      "dataSources",       "parameterMaps", "packages"};

template <std::size_t Count>
bool isOneOf(I18NString const& className, char const* const (&classes)[Count]) {
    return std::any_of(std::begin(classes), std::end(classes),
                       [&](char const* candidate) { return className == candidate; });
}

} // namespace

void VexMDMaProvider::GetReducedElementTree(VEX_HANDLE object, I18NLocale const* locale,
                                            KRLIDOM_Node parent) {
    Vex_Handle_Collection children;
    VexMDMaProviderUtility::childObjects(object, children, nullptr, nullptr);
    for (VEX_HANDLE const child : children) {
        AddSubtree(child, locale, KRLIDOM_Element(parent.getFirstChild()));
    }
}

void VexMDMaProvider::AddSubtree(VEX_HANDLE object, I18NLocale const* locale,
                                 KRLIDOM_Element parent) {
    I18NString className;
    VexMDMaProviderUtility::GetName(object, className);
    if (isOneOf(className, leftOut)) {
        return;
    }
    I18NString id;
    VexMDMaProviderUtility::GetId(object, id);
    I18NString role;
    VexMDMaProviderUtility::GetRole(object, role);
    I18NString classAttribute;
    VexMDMaProviderUtility::GetClass(object, classAttribute);
    I18NString nameKey = resources::getString(resources::Name);
    I18NString name;
    VexMDMaProviderUtility::GetStringPropertyValue(object, nameKey, name, locale);

    KRLIDOM_Element const element = parent.getOwnerDocument().createElement(className);
    element.setAttribute("ID", id);
    element.setAttribute(nameKey, name);
    element.setAttribute("role", role);
    element.setAttribute("class", classAttribute);
    if (isOneOf(className, containers)) {
        Vex_Handle_Collection children;
        VexMDMaProviderUtility::childObjects(object, children, nullptr, nullptr);
        for (VEX_HANDLE const child : children) {
            AddSubtree(child, locale, element);
        }
    }
    parent.appendChild(element);
}
