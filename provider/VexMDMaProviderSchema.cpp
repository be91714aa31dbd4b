// What an object is made of, as the provider's interface offers it.

#include "model/VexCollections.h"
#include "provider/VexConstants.h"
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
    LoadCollection(object, collectionName, found);
}

void VexMDMaProvider::getAllAttributes(Vex_Handle_Collection& properties,
                                       std::list<I18NString>& names) {
    ListAttributes(properties, names);
}

void VexMDMaProvider::getAllCollections(Vex_Handle_Collection& properties,
                                        std::list<I18NString>& names) {
    ListCollections(properties, names);
}
