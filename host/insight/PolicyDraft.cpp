#include "host/insight/PolicyDraft.h"

#include "host/catalogue/PolicyViews.h"
#include "host/import/xml/ModelLoader.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/RuleCover.h"
#include "host/insight/StatedView.h"

#include <algorithm>
#include <set>
#include <utility>

namespace vex {

namespace {

constexpr std::size_t longestLine = 96;

/// What YAML does not hold as it stands, or takes for the end of a line.
bool mustBeEscaped(char16_t unit) {
    constexpr char16_t byteOrderMark = 0xFEFF;
    return unit < 0x20 || (unit >= 0x7F && unit <= 0xA0) || unit == u'\u2028' ||
           unit == u'\u2029' || unit == byteOrderMark;
}

/// In the double quotes of YAML.
std::string quoted(std::string const& text) {
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    I18NString const whole = I18NString::fromUtf8(text);
    std::u16string made = u"\"";
    for (char16_t const unit : whole.view()) {
        if (mustBeEscaped(unit)) {
            made += u"\\u";
            for (int shift = 12; shift >= 0; shift -= 4) {
                made += digits[unit >> shift & 0xF];
            }
            continue;
        }
        made += unit == u'"' || unit == u'\\' ? u"\\" : u"";
        made += unit;
    }
    return I18NString(made + u'"').toUtf8();
}

/// A list behind a key of a view, in one line where it fits.
std::string listOf(char const* key, std::vector<std::string> const& texts) {
    std::string line = std::string("    ") + key + ": ";
    std::string lines = std::string("    ") + key + ":\n";
    line += texts.size() == 1 ? "" : "[";
    for (std::size_t at = 0; at < texts.size(); ++at) {
        line += (at == 0 ? "" : ", ") + quoted(texts[at]);
        lines += "      - " + quoted(texts[at]) + '\n';
    }
    line += texts.size() == 1 ? "\n" : "]\n";
    return texts.empty() ? "" : line.size() <= longestLine || texts.size() == 1 ? line : lines;
}

class DraftWriter {
public:
    DraftWriter(Model const& model, bool hasTraits)
        : m_model(model), m_outline(model), m_hasTraits(hasTraits) {}

    PolicyDraft draft() {
        std::vector<StatedView> const views = statedViews(m_model);
        if (views.empty()) {
            m_made.problem = "the model has no views that rules could stand for";
        }
        m_made.text = "views:\n";
        for (StatedView const& view : views) {
            add(view);
            if (!m_made.problem.empty()) {
                m_made.text.clear();
                return m_made;
            }
        }
        m_made.views = views.size();
        return m_made;
    }

private:
    void add(StatedView const& view) {
        std::string const name = "the view " + inQuotes(view.id);
        if (view.id.empty()) {
            m_made.problem = "a view has no id, and rules have their view's; give it one";
            return;
        }
        for (std::string const& each : view.withoutEffect) {
            m_made.leftOut.push_back(name + " has " + each);
        }
        m_made.text += "  " + quoted(view.id.toUtf8()) + ":\n";
        addNames(view);
        if (view.isRoleBased) {
            m_made.text += "    roleBased: true\n";
        } else if (!view.members.empty()) {
            m_made.leftOut.push_back(name + " has members, but is not role based");
        }
        addMembers(view, name);
        RuleMeans const freely{.hasContainers = true, .hasTraits = m_hasTraits};
        RuleMeans const plainly{.hasContainers = false, .hasTraits = m_hasTraits};
        RuleCover const included = cover(view.listed[0], freely, name);
        addRules("include", included.include);
        addRules("except", included.except);
        addRules("exclude", cover(view.listed[1], plainly, name).include);
        addRules("hide", cover(view.listed[2], plainly, name).include);
    }

    void addNames(StatedView const& view) {
        bool const isOne = view.names.size() == 1 && view.names[0].first == I18NLocale();
        if (isOne) {
            m_made.text += "    name: " + quoted(view.names[0].second.toUtf8()) + '\n';
            return;
        }
        std::string names;
        for (auto const& [locale, text] : view.names) {
            if (locale == I18NLocale()) {
                m_made.leftOut.push_back("the view " + inQuotes(view.id) +
                                         " has a name without a language beside others");
                continue;
            }
            names += (names.empty() ? "" : ", ") + locale.getName().toUtf8() + ": " +
                     quoted(text.toUtf8());
        }
        m_made.text += names.empty() ? "" : "    name: {" + names + "}\n";
    }

    void addMembers(StatedView const& view, std::string const& name) {
        std::vector<std::string> roles;
        for (I18NString const& role : view.members) {
            if (role.empty()) {
                m_made.problem = name + " has a member without a role; remove it";
            }
            roles.push_back(role.toUtf8());
        }
        m_made.text += view.isRoleBased ? listOf("members", roles) : "";
    }

    void addRules(char const* key, std::vector<std::string> const& selectors) {
        m_made.selectors += selectors.size();
        m_made.text += listOf(key, selectors);
    }

    RuleCover cover(std::set<I18NString> const& ids, RuleMeans means, std::string const& view) {
        std::vector<bool> listed(m_outline.size());
        for (I18NString const& id : ids) {
            std::size_t const element = numberOf(m_model, m_model.findById(id));
            if (m_outline.isOutside[element]) {
                m_made.problem = view + " lists " + inQuotes(id) +
                                 ", the model itself or part of its views, which rules do not "
                                 "mean; remove the entry";
                return {};
            }
            listed[element] = true;
        }
        m_made.entries += ids.size();
        return coverByRules(m_outline, listed, means);
    }

    Model const& m_model;
    ModelOutline const m_outline;
    bool m_hasTraits;
    PolicyDraft m_made;
};

/// The policy with ids for its views that the model has not.
Policy renamed(Policy policy, Model const& model) {
    std::string prefix = "rules of ";
    auto const isTaken = [&](PolicyView const& view) {
        return model.findById(I18NString::fromUtf8(prefix + view.id.toUtf8())).IsNotNull();
    };
    while (std::any_of(policy.views.begin(), policy.views.end(), isTaken)) {
        prefix += "the ";
    }
    for (PolicyView& view : policy.views) {
        view.id = I18NString::fromUtf8(prefix + view.id.toUtf8());
    }
    return policy;
}

} // namespace

PolicyDraft draftPolicy(Model const& model, bool hasTraits) {
    return DraftWriter(model, hasTraits).draft();
}

std::string findDifference(Model const& model, std::string const& modelFile,
                           std::string const& draft, LoadOptions options) {
    Policy const policy = renamed(*readPolicyText(draft, "the draft"), model);
    PolicyViews views(policy);
    options.addition = &views;
    auto const governed = loadModel(modelFile, options);
    std::vector<StatedView> const wanted = statedViews(model);
    std::vector<StatedView> const all = statedViews(*governed);
    if (all.size() != 2 * wanted.size() || !std::equal(wanted.begin(), wanted.end(), all.begin())) {
        return "the model changed meanwhile; try again";
    }
    for (std::size_t number = 0; number < wanted.size(); ++number) {
        StatedView const& made = all[wanted.size() + number];
        StatedView expected = wanted[number];
        if (!expected.isRoleBased) {
            expected.members.clear(); // which have no effect
        }
        if (expected.names.size() > 1 && expected.names.front().first == I18NLocale()) {
            expected.names.erase(expected.names.begin()); // was left out
        }
        if (!made.isLike(expected)) {
            return "the rules drafted for the view " + inQuotes(expected.id) +
                   " do not come to what it lists";
        }
    }
    return {};
}

} // namespace vex
