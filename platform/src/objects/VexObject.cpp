#include "VexObject.h"

#include <algorithm>

std::size_t VexObject::FindPropertyValue(std::span<VEX_HANDLE const> objects,
                                         I18NString const& name, I18NLocale const* locale,
                                         I18NString const& text, VexTextMatch& match) {
    // More and more at once: a model may look ahead among them, and for a search
    // that ends soon that is to be few.
    constexpr std::size_t mostAtOnce = 32;
    std::size_t before = 0;
    for (std::size_t atOnce = 1; before != objects.size();
         atOnce = std::min(2 * atOnce, mostAtOnce)) {
        VexObject const first(objects[before]);
        if (!first.usable()) {
            match = VexTextMatch::NoText;
            return before;
        }
        auto const next = objects.subspan(before, std::min(atOnce, objects.size() - before));
        auto const last = std::find_if(next.begin() + 1, next.end(), [&](VEX_HANDLE const object) {
            return !VexObject(object).hasModel(first.m_model);
        });
        auto const count = static_cast<std::size_t>(last - next.begin());
        std::size_t const different =
            first.m_model->FindPropertyValue(next.first(count), name, locale, text, match);
        before += different;
        if (different != count) {
            return before;
        }
    }
    match = VexTextMatch::Different;
    return before;
}

void VexObject::FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                   I18NLocale const* locale, I18NString const& text,
                                   I18NString const& tag, Vex_Handle_Collection& found) {
    while (!objects.empty()) {
        VexObject const first(objects.front());
        if (!first.usable()) {
            objects = objects.subspan(1);
            continue;
        }
        VexObjectModel const& model = *first.m_model;
        auto const last =
            std::find_if(objects.begin() + 1, objects.end(),
                         [&model](VEX_HANDLE const object) { return !model.Holds(object); });
        auto const count = static_cast<std::size_t>(last - objects.begin());
        model.FindElementsWithin(objects.first(count), name, locale, text, tag, found);
        objects = objects.subspan(count);
    }
}
