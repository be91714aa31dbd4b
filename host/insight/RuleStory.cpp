#include "host/insight/RuleStory.h"

#include "host/insight/ObjectText.h"

#include <algorithm>

namespace vex {

namespace {

using Decision = PolicyTrace::Decision;

constexpr char const* verbs[] = {"included", "excepted", "excluded", "hidden"};

class RuleStory {
public:
    RuleStory(PolicyTrace const& trace, Model const& model, I18NLocale const& locale)
        : m_policy(*trace.policy), m_model(model), m_locale(locale) {}

    std::string sentence(Decision const& decision) const {
        PolicyView const& view = m_policy.views[decision.view];
        std::string const of = view.id.toUtf8() + ": ";
        std::string const does = verbs[static_cast<std::size_t>(decision.does)];
        switch (decision.kind) {
        case Decision::Kind::Rule: {
            PolicyRule const& rule = view.rules[decision.by];
            return of + does + " by " + rule.text + place(rule.place);
        }
        case Decision::Kind::Container:
            return of + "included as a container of " + describe(decision.by) + place(view.place);
        case Decision::Kind::Spread:
            return of + does + ", since it names " + describe(decision.by) + ", which is " + does +
                   place(view.place);
        case Decision::Kind::Within:
            return of + does + ", since it stands in " + describe(decision.by) + place(view.place);
        }
        return {};
    }

    std::string silence(PolicyView const& view) const {
        return view.id.toUtf8() + ": no rule speaks of it" + place(view.place);
    }

private:
    std::string place(YamlPlace const& at) const {
        return " (" + m_policy.file + ':' + std::to_string(at.line) + ':' +
               std::to_string(at.column) + ')';
    }
    std::string describe(ElementNumber element) const {
        return describeObject(labelOf(m_model, m_model.getElement(element), m_locale));
    }

    Policy const& m_policy;
    Model const& m_model;
    I18NLocale const& m_locale;
};

} // namespace

std::vector<std::string> tellRules(PolicyTrace const& trace, Model const& model,
                                   I18NLocale const& locale, VEX_HANDLE object,
                                   std::vector<I18NString> const* onlyViews) {
    RuleStory const story(trace, model, locale);
    ElementNumber const element = object.Number() - model.getElement(0).Number();
    std::span<Decision const> const decisions = trace.decisionsOf(element);
    std::vector<std::string> told;
    for (std::uint32_t number = 0; number < trace.policy->views.size(); ++number) {
        PolicyView const& view = trace.policy->views[number];
        if (onlyViews != nullptr &&
            std::find(onlyViews->begin(), onlyViews->end(), view.id) == onlyViews->end()) {
            continue;
        }
        std::size_t const before = told.size();
        for (Decision const& decision : decisions) {
            if (decision.view == number) {
                told.push_back(story.sentence(decision));
            }
        }
        if (told.size() == before) {
            told.push_back(story.silence(view));
        }
    }
    return told;
}

} // namespace vex
