#include "host/insight/AskedStart.h"

#include "host/insight/ObjectText.h"
#include "host/service/NamesOnTheWay.h"
#include "host/store/image/ReferenceText.h"

#include <algorithm>

namespace vex {

std::optional<AskedStart> AskedStart::of(MetadataRequest const& request) {
    std::vector<std::u16string> names;
    I18NString const& text = request.startText();
    if (request.functions || !splitReference(text, names) || names.empty()) {
        return std::nullopt;
    }
    return AskedStart{text, I18NString(names.back()), !request.reference.empty()};
}

MetadataRequest startAloneOf(MetadataRequest request) {
    request.depth = 1;
    return request;
}

void StartObserver::report(VexTreeReport const& report) {
    if (report.container == VexTreeReport::None && !m_start.IsNotNull()) {
        m_start = report.object;
        m_isBehindShortcut = report.passesOverViewLists;
    }
}

bool bearsName(Model const& model, I18NLocale const& locale, VEX_HANDLE object,
               I18NString const& name) {
    std::vector<I18NLocale> const& listed = model.locales();
    auto const bears = [&](I18NLocale const& each) { return nameIn(each, object) == name; };
    return bears(locale) || bears(model.defaultLocale()) ||
           std::any_of(listed.begin(), listed.end(), bears);
}

bool standsOnTheWay(Model const& model, I18NLocale const& locale, StartObserver const& found,
                    AskedStart const& asked) {
    return asked.isReference || found.isBehindShortcut() ||
           NamesOnTheWay(model, asked.text, locale).leadTo(found.start());
}

} // namespace vex
