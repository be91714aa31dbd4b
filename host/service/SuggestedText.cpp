#include "host/service/SuggestedText.h"

#include "VexObject.h"
#include "host/service/ObjectName.h"
#include "host/store/image/Budget.h"
#include "host/store/image/ReferenceText.h"
#include "resources.h"

#include <algorithm>

namespace vex {

namespace {
constexpr int longestShown = 1'000;
constexpr std::size_t charactersOfAStep = 16; // as long as an operation of the object model
} // namespace

SuggestedText joinNames(std::vector<VEX_HANDLE> named, I18NLocale const& locale) {
    SuggestedText made{{}, std::move(named)};
    for (VEX_HANDLE const each : made.named) {
        I18NString const name = nameIn(locale, each);
        if (name.length() > longestShown - made.text.length()) {
            made.text = {};
            break;
        }
        appendToReference(made.text, name.view());
        Budget::charge(1 + static_cast<std::size_t>(name.length()) / charactersOfAStep);
    }
    return made;
}

SuggestedText referenceTo(Model const& model, VEX_HANDLE element) {
    SuggestedText made = joinNames(model.namedByReference(element), model.defaultLocale());
    if (!made.text.empty() && model.GetObjectByReference(made.text, 0) != element) {
        made.text = {};
    }
    return made;
}

std::vector<VEX_HANDLE> pathStartsOf(VEX_HANDLE element) {
    std::vector<VEX_HANDLE> starts;
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        I18NString className;
        VexObject(at).GetName(className);
        if (className == resources::getString(resources::Namespace)) {
            starts.push_back(at);
        }
        Budget::charge();
    }
    return starts;
}

SuggestedText pathTo(VEX_HANDLE element, VEX_HANDLE start, I18NLocale const& locale) {
    std::vector<VEX_HANDLE> named{element};
    while (named.back() != start) {
        named.push_back(VexObject(named.back()).GetParent());
    }
    std::reverse(named.begin(), named.end());
    Budget::charge(named.size());
    return joinNames(std::move(named), locale);
}

} // namespace vex
