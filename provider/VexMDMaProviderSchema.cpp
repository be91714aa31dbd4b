// What an object is made of: its collections and its plain attributes.

#include "model/VexMDMaProviderUtility.h"
#include "model/VexMembers.h"
#include "provider/VexMDMaProvider.h"
#include "resources.h"

void VexMDMaProvider::getClassName(I18NString const& name, I18NString& className) {
    // quirk: suffix-cut-unchecked
    // What is cut off is not compared with the suffix.
    int const suffix = resources::getString(resources::CollectionSuffix).length();
    className = name.substring(0, name.length() - suffix);
}

void VexMDMaProvider::loadCollection(VEX_HANDLE object, I18NString const& collectionName,
                                     Vex_Handle_Collection& found) {
    VexMembers members;
    members.read(object);
    members.appendOfClass(collectionName, found);
}

void VexMDMaProvider::getAllAttributes(Vex_Handle_Collection& properties,
                                       std::list<I18NString>& names) {
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

void VexMDMaProvider::getAllCollections(Vex_Handle_Collection& properties,
                                        std::list<I18NString>& names) {
    for (VEX_HANDLE const property : properties) {
        if (VexMDMaProviderUtility::hasChildObjects(property)) {
            I18NString name;
            VexMDMaProviderUtility::GetName(property, name);
            names.push_back(name);
        }
    }
}
