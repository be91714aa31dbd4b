#include "provider/tree/VexReducedTree.h"

#include "KRLIDOM_Document.h"
#include "KRLIDOM_Helper.h"
#include "Vex_Handle_Collection.h"
#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "resources.h"

#include <algorithm>

namespace {

constexpr char const* leftOut[] = {VexClass::Relationship, VexClass::SecurityViews};
constexpr char const* containers[] = {VexClass::Namespace,     VexClass::Folder,
                                      VexClass::QuerySubject,  VexClass::DataSources,
                                      VexClass::ParameterMaps, VexClass::Packages};

template <std::size_t Count>
bool isOneOf(I18NString const& className, char const* const (&classes)[Count]) {
    return std::any_of(std::begin(classes), std::end(classes),
                       [&](char const* candidate) { return className == candidate; });
}

} // namespace

void WriteReducedTree(VEX_HANDLE object, I18NLocale const* locale, KRLIDOM_Node const& parent) {
    Vex_Handle_Collection children;
    VexMDMaProviderUtility::childObjects(object, children, nullptr, nullptr);
    for (VEX_HANDLE const child : children) {
        WriteReducedSubtree(child, locale, KRLIDOM_Element(parent.getFirstChild()));
    }
}

void WriteReducedSubtree(VEX_HANDLE object, I18NLocale const* locale,
                         KRLIDOM_Element const& parent) {
    I18NString className;
    VexMDMaProviderUtility::GetName(object, className);
    if (isOneOf(className, leftOut) || !KRLIDOM_Helper::isName(className)) {
        return; // a class that is no XML name can name no element
    }
    I18NString id;
    VexMDMaProviderUtility::GetId(object, id);
    I18NString parentId; // asked for and not used
    VexMDMaProviderUtility::GetParentId(object, parentId);
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
            WriteReducedSubtree(child, locale, element);
        }
    }
    parent.appendChild(element);
}
