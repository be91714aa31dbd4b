#include "host/catalogue/PolicyFindings.h"

#include "host/store/build/SourceReport.h"

#include <algorithm>
#include <utility>

namespace vex {

namespace {

std::string nameOf(PolicyView const& view) {
    return "the view " + inQuotes(view.id.view());
}

/// Of views that are not role based only what they include counts, of one without members
/// what it excludes too.
bool isSetIgnored(PolicyView const& view, PolicyRule::Kind kind) {
    return (kind == PolicyRule::Kind::Exclude && !view.isRoleBased) ||
           (kind == PolicyRule::Kind::Hide && (!view.isRoleBased || view.members.empty()));
}

} // namespace

void PolicyFindings::refuseId(PolicyView const& view) {
    m_report.report({Severity::Error, "policy-view-twice", m_policy.file, view.place.line,
                     view.place.column,
                     "the model has the id " + inQuotes(view.id.view()) +
                         " already; give the view another one"});
}

void PolicyFindings::stopTooLarge(std::string text) {
    YamlPlace const at = m_policy.views.empty() ? YamlPlace{1, 1} : m_policy.views.front().place;
    m_report.stop(
        {Severity::Error, "policy-too-large", m_policy.file, at.line, at.column, std::move(text)});
}

void PolicyFindings::checkRule(PolicyView const& view, PolicyRule const& rule,
                               RuleOutcome const& outcome) {
    // What spreads may matter although it is not included itself.
    bool const isIdle =
        rule.kind == PolicyRule::Kind::Except && !outcome.takesAway && !view.spreads;
    if (!outcome.isMet) {
        tellWithoutMatch(rule);
    } else if (!outcome.hasId) {
        tellWithoutEffect(rule.place,
                          "no view can list what is meant by " + rule.text + ", for it has no id");
    } else if (isIdle) {
        tellWithoutEffect(rule.place, "nothing that " + nameOf(view) +
                                          " includes is taken away by " + rule.text);
    } else if (isSetIgnored(view, rule.kind)) {
        tellWithoutEffect(rule.place,
                          nameOf(view) +
                              (view.isRoleBased
                                   ? " has no members, and such a view hides nothing"
                                   : " is not role based, and only such a view excludes and hides; "
                                     "write \"roleBased: true\""));
    }
}

void PolicyFindings::checkSpread(PolicyView const& view) {
    bool const hasSource =
        std::any_of(view.rules.begin(), view.rules.end(), [](PolicyRule const& rule) {
            return rule.kind == PolicyRule::Kind::Except || rule.kind == PolicyRule::Kind::Exclude;
        });
    if (view.spreads && !hasSource) {
        tellWithoutEffect(view.place,
                          nameOf(view) + " excepts and excludes nothing that could spread");
    }
}

void PolicyFindings::tellWithoutMatch(PolicyRule const& rule) {
    add("policy-selector-without-match", rule.place,
        "no object of the model is meant by " + rule.text);
}

void PolicyFindings::tellWithoutEffect(YamlPlace const& at, std::string text) {
    add("policy-rule-without-effect", at, std::move(text));
}

void PolicyFindings::add(char const* rule, YamlPlace const& at, std::string text) {
    add(rule, m_policy.file, at, std::move(text));
}

void PolicyFindings::add(char const* rule, std::string const& file, YamlPlace const& at,
                         std::string text) {
    if (++m_counts[rule] <= MostOfARule) {
        m_report.report({Severity::Warning, rule, file, at.line, at.column, std::move(text)});
    }
}

void PolicyFindings::tellObject(std::u16string_view className, std::u16string_view name,
                                DocumentPosition const& at) {
    add("object-without-rule", m_report.file(), {at.line, at.column},
        "no rule of " + m_policy.file + " speaks of " + I18NString(className).toUtf8() + ' ' +
            inQuotes(name) + "; include or except it");
}

void PolicyFindings::tellRest() {
    for (auto const& [rule, count] : m_counts) {
        if (count > MostOfARule) {
            m_report.report({Severity::Warning, rule, m_policy.file, 1, 1,
                             "there are " + std::to_string(count - MostOfARule) +
                                 " more like those that are told"});
        }
    }
}

} // namespace vex
