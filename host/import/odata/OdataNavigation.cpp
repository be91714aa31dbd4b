#include "host/import/odata/OdataNavigation.h"

#include "host/import/odata/OdataTargets.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

namespace vex {

namespace {

constexpr char const* kind = "NavigationProperty";
constexpr char const* kindOfConstraint = "ReferentialConstraint";
constexpr char const* arrow = " \xE2\x86\x92 ";

constexpr std::size_t None = OdataSubject::None;

/// A navigation property of a query subject, and where it leads.
struct Way {
    std::size_t from;
    CsdlNavigation const* navigation;
    std::size_t to;
    std::size_t pair = None; // its other end, when that is one, too
};

char const* cardinalityOf(CsdlNavigation const& navigation) {
    return navigation.isCollection ? "0..n" : navigation.isNullable ? "0..1" : "1..1";
}

class NavigationMaker {
public:
    NavigationMaker(CsdlDocument const& document, OdataSubjects& subjects, OdataNavigationForm form,
                    ImportWork& work)
        : m_model(document.model), m_subjects(subjects), m_all(subjects.all()), m_form(form),
          m_work(work), m_targets(document, m_all) {}

    void make() {
        findWays();
        findPairs();
        for (Way const& way : m_ways) {
            if (m_form == OdataNavigationForm::Shortcut) {
                makeShortcut(way);
            } else if (leads(way)) {
                makeRelationship(way, way.pair == None ? nullptr : &m_ways[way.pair]);
            }
        }
        m_targets.tellBindings(m_work);
        tell();
    }

private:
    ModelDraft& draft() { return m_work.draft.model; }

    void findWays() {
        for (std::size_t subject = 0; subject < m_all.size(); ++subject) {
            for (CsdlNavigation const* const navigation : m_all[subject].navigations) {
                OdataTarget const target = m_targets.find(subject, *navigation);
                if (target.problem == nullptr) {
                    m_wayOf.emplace(std::pair(subject, std::string_view(navigation->name)),
                                    m_ways.size());
                    m_ways.push_back(
                        {.from = subject, .navigation = navigation, .to = target.subject});
                    m_problemOf[navigation] = nullptr;
                } else {
                    m_problemOf.emplace(navigation, target.problem);
                }
            }
        }
    }

    /// Two ways are the ends of one when one of them names the other as its partner, and the
    /// other one names none or it.
    void findPairs() {
        for (std::size_t number = 0; number < m_ways.size(); ++number) {
            Way& way = m_ways[number];
            auto const found = m_wayOf.find({way.to, way.navigation->partner});
            if (way.navigation->partner.empty() || found == m_wayOf.end()) {
                continue;
            }
            Way& back = m_ways[found->second];
            std::string const& partner = back.navigation->partner;
            bool const isBack = back.to == way.from && back.pair == None && way.pair == None &&
                                (partner.empty() || partner == way.navigation->name);
            if (isBack) {
                way.pair = found->second;
                back.pair = number;
            }
        }
    }

    /// Of the two ends of a relationship that one stands for both which leads to one thing,
    /// else that which says what is joined, else the first by name.
    bool leads(Way const& way) const {
        auto const rank = [&](Way const& each) {
            return std::tuple(each.navigation->isCollection, each.navigation->constraints.empty(),
                              std::string_view(m_all[each.from].path),
                              std::string_view(each.navigation->name));
        };
        return way.pair == None || rank(way) <= rank(m_ways[way.pair]);
    }

    DraftKey keyOf(Way const& way) const {
        DraftKey key{"navigation", m_all[way.from].path};
        appendToPath(key.path, way.navigation->name);
        return key;
    }

    void makeRelationship(Way const& way, Way const* back) {
        OdataSubject const& from = m_all[way.from];
        OdataSubject const& to = m_all[way.to];
        CsdlNavigation const& navigation = *way.navigation;
        std::size_t const object =
            draft().add(from.space, "relationship", keyOf(way), navigation.position);
        draft().set(object, "name", from.name + '.' + navigation.name + arrow + to.name);
        draft().set(object, "left", from.reference);
        draft().set(object, "leftCardinality",
                    back == nullptr ? "0..n" : cardinalityOf(*back->navigation));
        draft().set(object, "right", to.reference);
        draft().set(object, "rightCardinality", cardinalityOf(navigation));
        std::string expression;
        for (CsdlConstraint const& each : navigation.constraints) {
            join(expression, {from, each.property}, {to, each.referenced}, each);
        }
        if (back != nullptr && back != &way) {
            for (CsdlConstraint const& each : back->navigation->constraints) {
                join(expression, {from, each.referenced}, {to, each.property}, each);
            }
        }
        draft().set(object, "expression", expression);
        sayAll(object, navigation, expression.size());
    }

    struct End {
        OdataSubject const& subject;
        std::string const& property;
    };

    std::optional<std::string> referenceTo(End const& end) const {
        auto const item = end.subject.items.find(end.property);
        if (item == end.subject.items.end()) {
            return std::nullopt;
        }
        std::string reference = end.subject.reference;
        appendToPath(reference, item->second);
        return reference;
    }

    void join(std::string& expression, End const& left, End const& right,
              CsdlConstraint const& constraint) {
        auto const one = referenceTo(left);
        auto const other = referenceTo(right);
        if (one && other) {
            expression += (expression.empty() ? "" : " and ") + *one + " = " + *other;
            m_isJoined[&constraint] = true;
            m_subjects.spend(one->size() + other->size(), constraint.position);
        }
    }

    void makeShortcut(Way const& way) {
        OdataSubject const& from = m_all[way.from];
        CsdlNavigation const& navigation = *way.navigation;
        std::size_t const object =
            draft().add(from.object, "shortcut", keyOf(way), navigation.position);
        draft().set(object, "name", navigation.name);
        draft().set(object, "refobj", m_all[way.to].reference);
        draft().set(object, "cardinality", cardinalityOf(navigation));
        sayAll(object, navigation, m_all[way.to].reference.size());
    }

    void sayAll(std::size_t object, CsdlNavigation const& navigation, std::size_t bytes) {
        constexpr std::size_t bytesOfObject = 500;
        m_subjects.spend(bytesOfObject + bytes, navigation.position);
        for (auto const& [property, value] : navigation.said.values) {
            m_subjects.spend(property.size() + value.size(), navigation.position);
            draft().set(object, property, value);
        }
    }

    void tell() const {
        for (CsdlType const& type : m_model.types) {
            for (CsdlNavigation const& navigation : type.navigations) {
                auto const known = m_problemOf.find(&navigation);
                // Every subject of the type may have one of its own in its place.
                char const* const problem = known == m_problemOf.end()
                                                ? "types that derive from its own say it again"
                                                : known->second;
                tellOne(kind, problem, type.name + '/' + navigation.name, navigation.position);
                for (CsdlConstraint const& each : navigation.constraints) {
                    char const* const reason =
                        problem != nullptr ? "its navigation property was left out"
                        : m_form == OdataNavigationForm::Shortcut
                            ? "a shortcut says where it leads, not what is joined"
                            : "one of the properties that it joins is none of its type";
                    tellOne(kindOfConstraint, m_isJoined.contains(&each) ? nullptr : reason,
                            type.name + '/' + navigation.name, each.position);
                }
            }
        }
    }

    void tellOne(char const* thing, char const* problem, std::string name,
                 DocumentPosition at) const {
        if (problem == nullptr) {
            m_work.account.mapped(thing);
        } else {
            m_work.account.leftOut(thing, problem, {std::move(name), at});
        }
    }

    CsdlModel const& m_model;
    OdataSubjects& m_subjects;
    std::vector<OdataSubject> const& m_all;
    OdataNavigationForm m_form;
    ImportWork& m_work;
    OdataTargets m_targets;
    std::vector<Way> m_ways;
    std::map<std::pair<std::size_t, std::string_view>, std::size_t> m_wayOf;
    std::map<CsdlNavigation const*, char const*> m_problemOf; // null: it leads somewhere
    std::map<CsdlConstraint const*, bool> m_isJoined;
};

} // namespace

void makeNavigation(CsdlDocument const& document, OdataSubjects& subjects, OdataNavigationForm form,
                    ImportWork& work) {
    NavigationMaker(document, subjects, form, work).make();
}

} // namespace vex
