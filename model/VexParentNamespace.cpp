#include "model/VexParentNamespace.h"

#include "model/VexClassNames.h"
#include "model/VexMDMaProviderUtility.h"
#include "provider/VexConstants.h"

VEX_HANDLE FindParentNamespace(VEX_HANDLE element) {
    VEX_HANDLE above = VexMDMaProviderUtility::GetParent(element);
    I18NString className;
    VexMDMaProviderUtility::GetName(above, className);
    while (above.IsNotNull() && className != VexClass::Namespace) {
        above = VexMDMaProviderUtility::GetParent(above);
        VexMDMaProviderUtility::GetName(above, className);
    }
    return above;
}
