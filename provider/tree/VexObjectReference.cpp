#include "provider/tree/VexObjectReference.h"

#include "provider/VexConstants.h"
#include "provider/request/VexBracketedName.h"

void BuildObjectReference(std::list<I18NString> const& parts, I18NString& reference) {
    for (I18NString const& part : parts) {
        AppendBracketedName(reference, part.view(), !reference.empty());
    }
}
