#include "host/catalogue/PolicyViews.h"

#include "host/catalogue/ElementSet.h"
#include "host/catalogue/NamingGraph.h"
#include "host/catalogue/PolicyFindings.h"
#include "host/catalogue/PolicySteps.h"
#include "host/catalogue/SelectorPass.h"
#include "host/store/build/ModelWriter.h"
#include "host/store/build/SourceReport.h"
#include "host/store/build/WrittenModel.h"
#include "resources.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>

namespace vex {

namespace {

constexpr std::size_t kindCount = 4;
using Elements = std::vector<ElementNumber>;

std::u16string_view word(resources::Word number) {
    return resources::getString(number).view();
}

/// What the rules of a view mean in a model.
struct MeantByView {
    std::array<Elements, kindCount> byKind; // each once, in document order

    Elements& of(PolicyRule::Kind kind) { return byKind[static_cast<std::size_t>(kind)]; }
};

struct NumberedRule {
    std::size_t view;
    PolicyRule const* rule;
    std::uint32_t number; // in its view
    RuleOutcome outcome{};
};

/// A selector of an expectation.
struct ExpectedRule {
    PolicyRule const* rule;
    bool isMet = false;
    Elements elements{}; // for who looks at them
};

class PolicyWork {
public:
    PolicyWork(Policy const& policy, PolicyTrace* trace, PolicyViews::Limits limits,
               WrittenModel& model, ModelWriter& writer, SourceReport& report)
        : m_policy(policy), m_trace(trace), m_model(model), m_writer(writer), m_report(report),
          m_findings(policy, report), m_limits(limits), m_steps(limits.steps),
          m_pass(model, m_steps), m_meant(policy.views.size()), m_included(model.elementCount()),
          m_excepted(model.elementCount()), m_seen(model.elementCount()) {}

    void run() {
        checkIds();
        if (m_report.hasErrors()) {
            return;
        }
        try {
            findAndWrite();
        } catch (PolicySteps::Exhausted const&) {
            m_findings.stopTooLarge("finding out what the rules mean takes more than " +
                                    std::to_string(m_limits.steps) +
                                    " steps; write fewer rules, or rules that mean less");
        }
    }

private:
    void findAndWrite() {
        for (std::size_t view = 0; view < m_policy.views.size(); ++view) {
            std::uint32_t number = 0;
            for (PolicyRule const& rule : m_policy.views[view].rules) {
                m_pass.add(rule.selector, rule.kind == PolicyRule::Kind::Include);
                m_rules.push_back({view, &rule, number++});
            }
        }
        addExpectations();
        m_pass.run([&](ElementNumber element, std::span<std::size_t const> found) {
            auto const rules = static_cast<std::size_t>(
                std::lower_bound(found.begin(), found.end(), m_rules.size()) - found.begin());
            if (rules != 0) {
                take(element, found.first(rules));
            }
            for (std::size_t const expected : found.subspan(rules)) {
                m_expected[expected - m_rules.size()].isMet = true;
                if (m_trace != nullptr) {
                    m_expected[expected - m_rules.size()].elements.push_back(element);
                    admitEntry();
                }
            }
        });
        if (!m_policy.views.empty()) {
            writeViews();
        }
        reportExpectations();
        m_findings.tellRest();
        finishTrace();
    }

    void writeViews() {
        reportRules();
        m_writer.openObject(m_writer.name(u"securityViews"));
        for (std::size_t view = 0; view < m_policy.views.size(); ++view) {
            writeView(view, m_meant[view]);
            m_meant[view] = {};
        }
        m_writer.closeObject();
        reportObjects();
    }

    /// Where positions are kept, somebody wants to know what is wrong.
    bool isChecked() const { return m_model.position(0).line != 0; }

    /// Their selectors are numbered behind the rules.
    void addExpectations() {
        if (m_trace == nullptr && !isChecked()) {
            return;
        }
        for (PolicyExpectation const& expectation : m_policy.expectations) {
            for (auto const* const list : {&expectation.sees, &expectation.seesNot}) {
                for (PolicyRule const& rule : *list) {
                    m_pass.add(rule.selector, list == &expectation.sees);
                    m_expected.push_back({&rule});
                }
            }
        }
    }

    void decide(std::size_t view, ElementNumber element, PolicyTrace::Decision::Kind kind,
                PolicyRule::Kind does, std::uint32_t by) {
        if (m_trace != nullptr) {
            m_trace->decisions.push_back(
                {element, static_cast<std::uint32_t>(view), kind, does, by});
            admitEntry();
        }
    }

    void finishTrace() {
        if (m_trace == nullptr) {
            return;
        }
        std::stable_sort(m_trace->decisions.begin(), m_trace->decisions.end(),
                         [](auto const& a, auto const& b) { return a.element < b.element; });
        std::size_t next = 0;
        for (PolicyExpectation const& expectation : m_policy.expectations) {
            PolicyTrace::Expected expected;
            for (std::size_t number = 0; number < expectation.sees.size(); ++number) {
                expected.sees.push_back(std::move(m_expected[next++].elements));
            }
            for (std::size_t number = 0; number < expectation.seesNot.size(); ++number) {
                expected.seesNot.push_back(std::move(m_expected[next++].elements));
            }
            m_trace->expected.push_back(std::move(expected));
        }
    }

    void checkIds() {
        for (PolicyView const& view : m_policy.views) {
            if (m_model.isId(m_model.numberOf(view.id.view()))) {
                m_findings.refuseId(view);
            }
        }
    }

    // The rules of a view are numbered one after the other.
    void take(ElementNumber element, std::span<std::size_t const> found) {
        m_seen.insert(element);
        for (std::size_t at = 0; at < found.size();) {
            std::size_t const view = m_rules[found[at]].view;
            bool isIncluded = false;
            std::size_t const first = at;
            for (; at < found.size() && m_rules[found[at]].view == view; ++at) {
                NumberedRule& rule = m_rules[found[at]];
                rule.outcome.isMet = true;
                rule.outcome.hasId = rule.outcome.hasId || m_model.idOf(element) != 0;
                decide(view, element, PolicyTrace::Decision::Kind::Rule, rule.rule->kind,
                       rule.number);
                isIncluded = isIncluded || rule.rule->kind == PolicyRule::Kind::Include;
                Elements& elements = m_meant[view].of(rule.rule->kind);
                if (elements.empty() || elements.back() != element) {
                    elements.push_back(element);
                    admitEntry();
                }
            }
            for (std::size_t again = first; isIncluded && again < at; ++again) {
                m_rules[found[again]].outcome.takesAway = true;
            }
        }
    }

    void admitEntry() { admitEntries(1); }
    void admitEntries(std::size_t count) {
        m_entries += count;
        if (m_entries > m_limits.entries) {
            m_findings.stopTooLarge(
                "the rules mean more than " + std::to_string(m_limits.entries) +
                " objects, each counted as often as it is meant; make fewer views");
        }
    }

    void reportRules() {
        for (NumberedRule const& each : m_rules) {
            m_findings.checkRule(m_policy.views[each.view], *each.rule, each.outcome);
        }
        for (PolicyView const& view : m_policy.views) {
            m_findings.checkSpread(view);
        }
    }

    void reportExpectations() {
        for (ExpectedRule const& each : m_expected) {
            if (!each.isMet) {
                m_findings.tellWithoutMatch(*each.rule);
            }
        }
    }

    /// Leaves what the rules of a kind mean in `m_excepted`, and what that spreads to.
    void findWithSpread(std::size_t number, PolicyRule::Kind kind, MeantByView& meant) {
        m_excepted.clear();
        for (ElementNumber const element : meant.of(kind)) {
            m_excepted.insert(element);
        }
        if (!m_policy.views[number].spreads || meant.of(kind).empty()) {
            return;
        }
        if (m_names == nullptr) {
            m_names = std::make_unique<NamingGraph>(m_model, m_steps);
        }
        using Why = PolicyTrace::Decision::Kind;
        m_names->spread(m_excepted, [&](ElementNumber reader, ElementNumber by, bool isWithin) {
            decide(number, reader, isWithin ? Why::Within : Why::Spread, kind, by);
        });
    }

    /// What a view excludes, in document order.
    Elements const& excluded(std::size_t number, MeantByView& meant) {
        Elements& elements = meant.of(PolicyRule::Kind::Exclude);
        if (m_policy.views[number].spreads && !elements.empty()) {
            findWithSpread(number, PolicyRule::Kind::Exclude, meant);
            elements.clear();
            m_excepted.forEach([&](ElementNumber element) {
                m_seen.insert(element);
                elements.push_back(element);
            });
        }
        return elements;
    }

    /// Leaves the view's included elements in `m_included`, their containers among them.
    void include(std::size_t number, MeantByView& meant) {
        m_included.clear();
        findWithSpread(number, PolicyRule::Kind::Except, meant);
        for (ElementNumber const element : meant.of(PolicyRule::Kind::Include)) {
            if (m_excepted.contains(element)) {
                continue;
            }
            // Excepted containers are climbed past: theirs are containers too.
            for (ElementNumber at = element; at != 0 && m_included.insert(at);) {
                if (at != element && !m_excepted.contains(at)) {
                    decide(number, at, PolicyTrace::Decision::Kind::Container,
                           PolicyRule::Kind::Include, element);
                }
                at = m_model.parent(at);
            }
        }
        m_included.forEach([&](ElementNumber element) {
            if (m_excepted.contains(element)) {
                m_included.erase(element);
            } else {
                m_seen.insert(element);
            }
        });
    }

    void writeView(std::size_t number, MeantByView& meant) {
        PolicyView const& view = m_policy.views[number];
        m_writer.openObject(m_writer.name(word(resources::SecurityView)));
        m_writer.setId(view.id.view());
        for (auto const& [locale, name] : view.names) {
            if (locale == I18NLocale()) {
                m_writer.addProperty({m_writer.name(word(resources::Name))}, name.view());
            } else {
                m_writer.addProperty({m_writer.name(word(resources::Name)),
                                      m_writer.locale(locale.getName().view())},
                                     name.view());
            }
        }
        if (view.isRoleBased) {
            m_writer.addProperty({m_writer.name(word(resources::RoleBased))}, u"true");
        }
        for (PolicyWord const& role : view.members) {
            m_writer.openObject(m_writer.name(word(resources::ViewMember)));
            m_writer.addProperty({m_writer.name(word(resources::MemberRole))}, role.text.view());
            m_writer.closeObject();
        }
        include(number, meant);
        Elements included;
        m_included.forEach([&](ElementNumber element) { included.push_back(element); });
        writeSet(resources::Included, included);
        writeSet(resources::Excluded, excluded(number, meant));
        writeSet(resources::Hidden, meant.of(PolicyRule::Kind::Hide));
        m_writer.closeObject();
    }

    void writeSet(resources::Word kind, Elements const& elements) {
        if (elements.empty()) {
            return;
        }
        admitEntries(elements.size()); // containers among them, and what was found by spreading
        ModelWriter::Name const entry = m_writer.name(word(resources::SetEntry));
        m_writer.openObject(m_writer.name(u"set"));
        m_writer.addProperty({m_writer.name(word(resources::SetKind))}, word(kind));
        for (ElementNumber const element : elements) {
            if (TextRef const id = m_model.idOf(element); id != 0) {
                m_writer.openObject(entry);
                m_writer.setKnownText(id);
                m_writer.closeObject();
            }
        }
        m_writer.closeObject();
    }

    // What references can name, views decide about; shortcuts are shown without a test.
    void reportObjects() {
        if (!isChecked() || m_rules.empty()) {
            return;
        }
        ElementSet inNamespaces(m_model.elementCount());
        for (ElementNumber element = 1; element < m_model.elementCount(); ++element) {
            std::u16string_view const cls = m_model.className(element);
            bool const isInside =
                cls == word(resources::Namespace) || inNamespaces.contains(m_model.parent(element));
            if (!isInside) {
                continue;
            }
            inNamespaces.insert(element);
            if (!m_seen.contains(element) && cls != word(resources::Shortcut)) {
                m_findings.tellObject(cls, m_model.text(m_model.nameOf(element)),
                                      m_model.position(element));
            }
        }
    }

    Policy const& m_policy;
    PolicyTrace* m_trace;
    WrittenModel& m_model;
    ModelWriter& m_writer;
    SourceReport& m_report;
    PolicyFindings m_findings;
    PolicyViews::Limits m_limits;
    PolicySteps m_steps;
    SelectorPass m_pass;
    std::vector<NumberedRule> m_rules; // by their numbers in the pass
    std::vector<MeantByView> m_meant;  // by view
    std::vector<ExpectedRule> m_expected;
    std::size_t m_entries = 0;
    ElementSet m_included;
    ElementSet m_excepted;
    ElementSet m_seen; // by any rule
    std::unique_ptr<NamingGraph> m_names;
};

} // namespace

void PolicyViews::addTo(WrittenModel& model, ModelWriter& writer, SourceReport& report) {
    if (!m_policy.views.empty() || !m_policy.expectations.empty()) {
        PolicyWork(m_policy, m_trace, m_limits, model, writer, report).run();
    }
}

} // namespace vex
