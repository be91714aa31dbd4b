#include "host/service/ObjectName.h"

#include "VexObject.h"
#include "resources.h"

namespace vex {

I18NString nameIn(I18NLocale const& locale, VEX_HANDLE element) {
    I18NString name;
    VexObject(VexObject(element).GetPropertyByName(resources::getString(resources::Name), &locale))
        .GetValue(name, true);
    return name;
}

} // namespace vex
