#include "VexObject.h"

#include <algorithm>

void VexObject::MatchPropertyValues(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                    I18NLocale const* locale, I18NString const& text,
                                    VexTextMatch* matches) {
    while (!objects.empty()) {
        VexObject const first(objects.front());
        if (!first.usable()) {
            *matches++ = VexTextMatch::NoText;
            objects = objects.subspan(1);
            continue;
        }
        auto const last =
            std::find_if(objects.begin() + 1, objects.end(), [&](VEX_HANDLE const object) {
                return !VexObject(object).hasModel(first.m_model);
            });
        auto const count = static_cast<std::size_t>(last - objects.begin());
        first.m_model->MatchPropertyValues(objects.first(count), name, locale, text, matches);
        matches += count;
        objects = objects.subspan(count);
    }
}
