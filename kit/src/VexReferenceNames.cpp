#include "VexReferenceNames.h"

#include "host/store/image/ReferenceText.h"

#include <string>

bool VexSplitReference(I18NString const& reference, std::vector<I18NString>& names) {
    std::vector<std::u16string> split;
    bool const isReference = vex::splitReference(reference, split);
    for (std::u16string const& name : split) {
        names.emplace_back(name);
    }
    return isReference;
}

void VexAppendToReference(I18NString& reference, I18NString const& name) {
    vex::appendToReference(reference, name.view());
}
