#include "host/insight/StatedView.h"

#include "VexObject.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectText.h"
#include "resources.h"

#include <algorithm>
#include <cstdlib>

namespace vex {

namespace {

constexpr resources::Word setKinds[StatedView::SetCount] = {resources::Included,
                                                            resources::Excluded, resources::Hidden};

class ViewReader {
public:
    explicit ViewReader(Model const& model) : m_model(model) {}

    StatedView read(VEX_HANDLE view) const {
        StatedView stated;
        stated.id = idOf(view);
        stated.isRoleBased = saysYes(valueOf(view, resources::RoleBased));
        addNames(view, stated);
        for (VEX_HANDLE const member : below(view, resources::ViewMember)) {
            stated.members.push_back(valueOf(member, resources::MemberRole));
        }
        for (VEX_HANDLE const set : ModelFindings::elementsBelow(view, "set")) {
            addSet(set, stated);
        }
        return stated;
    }

private:
    static I18NString valueOf(VEX_HANDLE object, resources::Word property) {
        return ModelFindings::valueOf(object, resources::getString(property), nullptr);
    }
    static Vex_Handle_Collection below(VEX_HANDLE object, resources::Word className) {
        return ModelFindings::elementsBelow(object, resources::getString(className));
    }

    /// In the languages that the model lists, and for all.
    void addNames(VEX_HANDLE view, StatedView& stated) const {
        std::vector<I18NLocale> locales{I18NLocale()};
        locales.insert(locales.end(), m_model.locales().begin(), m_model.locales().end());
        if (std::find(locales.begin(), locales.end(), m_model.defaultLocale()) == locales.end()) {
            locales.push_back(m_model.defaultLocale());
        }
        I18NString const& property = resources::getString(resources::Name);
        for (I18NLocale const& locale : locales) {
            VexObject const name(VexObject(view).GetPropertyByName(property, &locale));
            I18NLocale const* const found = name.GetLocale();
            I18NString text;
            bool const isItsOwn = found == nullptr ? locale == I18NLocale() : *found == locale;
            if (isItsOwn && name.GetValue(text, true) && !text.empty()) {
                stated.names.emplace_back(locale, text);
            }
        }
    }

    void addSet(VEX_HANDLE set, StatedView& stated) const {
        I18NString const kind = valueOf(set, resources::SetKind);
        std::size_t number = 0;
        while (number < StatedView::SetCount && kind != resources::getString(setKinds[number])) {
            ++number;
        }
        if (number == StatedView::SetCount) {
            stated.withoutEffect.push_back("a set of the kind " + inQuotes(kind));
            return;
        }
        for (VEX_HANDLE const entry : below(set, resources::SetEntry)) {
            I18NString id;
            VexObject(entry).GetValue(id, true);
            if (m_model.findById(id).IsNotNull()) {
                stated.listed[number].insert(id);
            } else {
                stated.withoutEffect.push_back("the entry " + inQuotes(id) +
                                               ", an id that no object has");
            }
        }
    }

    Model const& m_model;
};

} // namespace

std::vector<StatedView> statedViews(Model const& model) {
    ViewReader const reader(model);
    std::vector<StatedView> views;
    for (VEX_HANDLE const view : ModelFindings::elementsBelow(
             model.GetRootObject(), resources::getString(resources::SecurityView))) {
        views.push_back(reader.read(view));
    }
    return views;
}

bool saysYes(I18NString const& text) {
    return text == "true" || std::strtol(text.c_str(), nullptr, 10) != 0;
}

} // namespace vex
