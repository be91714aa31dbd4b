#include "provider/start/VexObjectStart.h"

#include "VexSession.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"
#include "provider/request/VexBracketedName.h"
#include "provider/start/VexStartPath.h"
#include "resources.h"

#include <algorithm>

namespace {

// Properties have parents, too, and are no members of them.
bool isMember(VEX_HANDLE object, VEX_HANDLE parent) {
    I18NString className;
    VexMDMaProviderUtility::GetName(object, className);
    Vex_Handle_Collection members;
    VexMDMaProviderUtility::childObjects(parent, members, &className, nullptr);
    return std::find(members.begin(), members.end(), object) != members.end();
}

VexMDMaModelElementInfo recordOf(VEX_HANDLE element, I18NLocale const* locale) {
    VexMDMaModelElementInfo record;
    I18NString key = resources::getString(resources::Name);
    VexMDMaProviderUtility::GetStringPropertyValue(element, key, record.name, locale);
    VexMDMaProviderUtility::GetName(element, record.className);
    return record;
}

} // namespace

bool IsElementOfModel(VexSession const& session, VEX_HANDLE object) {
    VEX_HANDLE const root = session.GetObjectStore().GetRootObject();
    VEX_HANDLE const parent = VexMDMaProviderUtility::GetParent(object);
    VEX_HANDLE above = parent;
    while (above.IsNotNull() && above != root) {
        above = VexMDMaProviderUtility::GetParent(above);
    }
    return above.IsNotNull() && isMember(object, parent);
}

VexFoundStart StartAtObject(I18NLocale const* locale, VEX_HANDLE object, I18NString& pathText) {
    VexFoundStart start{{}, {}, {}, false, false};
    start.objects.push_back(object);
    VEX_HANDLE above = VexMDMaProviderUtility::GetParent(object);
    for (VEX_HANDLE element = object; above.IsNotNull(); // the root has no place in a path
         element = above, above = VexMDMaProviderUtility::GetParent(above)) {
        start.path.push_back(recordOf(element, locale));
    }
    start.className = start.path.front().className;
    for (auto record = start.path.rbegin(); record != start.path.rend(); ++record) {
        I18NString doubled;
        SearchAndReplace(record->name, "]", "]]", doubled);
        AppendBracketedName(pathText, doubled.view(), !pathText.empty());
    }
    return start;
}
