#include "VexObject.h"
#include "host/insight/KnownWords.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "resources.h"

#include <algorithm>

namespace vex {

namespace {

/// In any language.
bool hasName(Model const& model, VEX_HANDLE element) {
    I18NString const& name = resources::getString(resources::Name);
    auto const hasText = [&](I18NLocale const* locale) {
        return !ModelFindings::valueOf(element, name, locale).empty();
    };
    std::vector<I18NLocale> const& locales = model.locales();
    return hasText(nullptr) || std::any_of(locales.begin(), locales.end(),
                                           [&](I18NLocale const& each) { return hasText(&each); });
}

} // namespace

void checkIdentities(ModelFindings& findings) {
    Model const& model = findings.getModel();
    bool const hasViews =
        findings.elementsOf(resources::getString(resources::SecurityView)).size() != 0;
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        I18NString const cls = classOf(element);
        if (!isAskedFor(cls)) {
            continue;
        }
        if (!hasName(model, element)) {
            findings.add("object-without-name", element, [&] {
                return "the " + cls.toUtf8() +
                       " has no name: where only names are asked for, it "
                       "is left out with all that stands in it";
            });
        }
        if (hasViews && idOf(element).empty()) {
            findings.add("object-without-id", element, [&] {
                return cls.toUtf8() + ' ' + findings.nameOf(element) +
                       " has no id, so no view can list it";
            });
        }
    }
}

} // namespace vex
