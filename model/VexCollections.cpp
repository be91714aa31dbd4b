#include "model/VexCollections.h"

#include "model/VexMDMaProviderUtility.h"
#include "model/VexMembers.h"
#include "provider/VexConstants.h"

void LoadCollection(VEX_HANDLE object, I18NString const& collectionName,
                    Vex_Handle_Collection& found) {
    VexMembers members;
    members.read(object);
    members.appendOfClass(collectionName, found);
}

void ListAttributes(Vex_Handle_Collection const& properties, std::list<I18NString>& names) {
    names.emplace_back("ID");
    for (VEX_HANDLE const property : properties) {
        if (!VexMDMaProviderUtility::hasChildObjects(property) &&
            !VexMDMaProviderUtility::hasProperties(property)) {
            I18NString name;
            VexMDMaProviderUtility::GetName(property, name);
            names.push_back(name);
        }
    }
}

void ListCollections(Vex_Handle_Collection const& properties, std::list<I18NString>& names) {
    for (VEX_HANDLE const property : properties) {
        if (VexMDMaProviderUtility::hasChildObjects(property)) {
            I18NString name;
            VexMDMaProviderUtility::GetName(property, name);
            names.push_back(name);
        }
    }
}
