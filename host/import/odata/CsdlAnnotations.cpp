#include "host/import/odata/CsdlAnnotations.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlElement.h"
#include "host/import/odata/CsdlTables.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vex {

namespace {

constexpr std::array<std::string_view, 11> plainValues{
    "String", "Bool",   "Int",       "Decimal",        "Float",   "Date",
    "Guid",   "Binary", "TimeOfDay", "DateTimeOffset", "Duration"};
constexpr std::string_view enumerated = "EnumMember";

/// "Org.OData.Core.V1.Permission/Read" is "Read".
std::string membersOf(std::string_view written) {
    std::string members;
    while (!written.empty()) {
        std::size_t const end = std::min(written.find_first_of(" \t\r\n"), written.size());
        std::string_view member = written.substr(0, end);
        member.remove_prefix(std::min(member.rfind('/') + 1, member.size()));
        if (!member.empty()) {
            members.append(members.empty() ? "" : " ").append(member);
        }
        written.remove_prefix(std::min(end + 1, written.size()));
    }
    return members;
}

std::optional<std::string> valueNamed(std::string_view name, std::string_view value) {
    if (name == enumerated) {
        return membersOf(value);
    }
    bool const isPlain =
        std::find(plainValues.begin(), plainValues.end(), name) != plainValues.end();
    return isPlain ? std::optional(std::string(value)) : std::nullopt;
}

struct Said {
    std::optional<std::string> value{};
    bool isNone = true; // nothing at all is written
};

Said valueOf(ElementTree const& tree, ElementTree::Element element) {
    Said said;
    for (std::size_t each = 0; each < tree.attributeCount(element); ++each) {
        auto const [name, value] = tree.attributeOf(element, each);
        if (name == "Term" || name == "Property" || name == "Qualifier") {
            continue;
        }
        said.isNone = false;
        if (auto plain = valueNamed(name, value)) {
            said.value = std::move(plain);
            return said;
        }
    }
    for (auto each = tree.first(element); each != ElementTree::None; each = tree.next(each)) {
        if (tree.nameOf(each) == "Annotation") {
            continue;
        }
        said.isNone = false;
        if (auto plain = valueNamed(tree.nameOf(each), tree.textOf(each))) {
            said.value = std::move(plain);
            return said;
        }
    }
    return said;
}

ElementTree::Element recordIn(ElementTree const& tree, ElementTree::Element element) {
    auto each = tree.first(element);
    while (each != ElementTree::None && !isCsdl(tree, each, "Record")) {
        each = tree.next(each);
    }
    return each;
}

} // namespace

std::string CsdlAnnotations::termOf(ElementTree::Element annotation) const {
    auto const term = m_tree.find(annotation, "Term");
    if (!term || term->empty()) {
        m_work.refuse("the annotation has no Term; give it one", m_tree.positionOf(annotation));
    }
    return m_names.qualified(*term);
}

void CsdlAnnotations::leaveOut(ElementTree::Element annotation, char const* reason,
                               std::string_view name) {
    m_work.account.leftOut('@' + termOf(annotation), reason,
                           {std::string(name), m_tree.positionOf(annotation)});
}

void CsdlAnnotations::read(ElementTree::Element annotation, CsdlSaid& said, std::string_view name) {
    std::string const term = termOf(annotation);
    if (m_tree.find(annotation, "Qualifier")) {
        leaveOut(annotation, csdlReasons::Qualifier, name);
        return;
    }
    auto const record = recordIn(m_tree, annotation);
    if (record == ElementTree::None) {
        say(annotation, '@' + term, term, "", said, name);
    } else {
        readRecord(record, term, said, name);
    }
    for (auto each = m_tree.first(annotation); each != ElementTree::None;
         each = m_tree.next(each)) {
        if (isCsdl(m_tree, each, "Annotation")) {
            leaveOut(each, "it describes an annotation", name);
        }
    }
}

void CsdlAnnotations::readRecord(ElementTree::Element record, std::string const& term,
                                 CsdlSaid& said, std::string_view name) {
    auto const terms = csdlTerms();
    bool const isKnown = std::any_of(terms.begin(), terms.end(), [&](CsdlTerm const& row) {
        return !row.part.empty() &&
               term == std::string(row.vocabulary) + '.' + std::string(row.term);
    });
    if (!isKnown) {
        m_work.account.leftOut('@' + term, csdlReasons::UnknownTerm,
                               {std::string(name), m_tree.positionOf(record)});
        return;
    }
    m_work.account.mapped('@' + term);
    for (auto each = m_tree.first(record); each != ElementTree::None; each = m_tree.next(each)) {
        std::string const part(m_tree.find(each, "Property").value_or(m_tree.nameOf(each)));
        say(each, '@' + term + '/' + part, term, part, said, name);
    }
}

void CsdlAnnotations::say(ElementTree::Element element, std::string const& kind,
                          std::string_view term, std::string_view part, CsdlSaid& into,
                          std::string_view name) {
    auto const terms = csdlTerms();
    auto const row = std::find_if(terms.begin(), terms.end(), [&](CsdlTerm const& each) {
        return each.part == part && term.size() == each.vocabulary.size() + 1 + each.term.size() &&
               term.starts_with(each.vocabulary) && term.ends_with(each.term);
    });
    char const* problem = nullptr;
    if (row == terms.end()) {
        problem = csdlReasons::UnknownTerm;
    } else {
        Said said = valueOf(m_tree, element);
        if (said.isNone && row->withoutValue != nullptr) {
            said.value = row->withoutValue;
        }
        if (!said.value || said.value->empty()) {
            problem = csdlReasons::NoValue;
        } else if (row->whenTrue != nullptr && *said.value != "true") {
            problem = nullptr; // nothing stands for what is not so
        } else if (!into.say(row->property,
                             row->whenTrue == nullptr ? *said.value : row->whenTrue)) {
            problem = csdlReasons::SaidAlready;
        }
    }
    if (problem == nullptr) {
        m_work.account.mapped(kind);
    } else {
        m_work.account.leftOut(kind, problem, {std::string(name), m_tree.positionOf(element)});
    }
}

CsdlAnnotations::Targets CsdlAnnotations::targetsOf(CsdlModel& model) {
    Targets targets;
    for (CsdlSchema& schema : model.schemas) {
        targets.emplace(schema.name, &schema.said);
    }
    for (CsdlType& type : model.types) {
        std::string const name = model.qualifiedName(type);
        targets.emplace(name, &type.said);
        auto const addAll = [&](auto& parts) {
            for (auto& part : parts) {
                targets.emplace(name + '/' + part.name, &part.said);
            }
        };
        addAll(type.properties);
        addAll(type.navigations);
        addAll(type.members);
    }
    for (CsdlContainer& container : model.containers) {
        targets.emplace(model.schemas[container.schema].name + '.' + container.name,
                        &container.said);
    }
    for (CsdlSet& set : model.sets) {
        CsdlContainer const& container = model.containers[set.container];
        targets.emplace(model.schemas[container.schema].name + '.' + container.name + '/' +
                            set.name,
                        &set.said);
    }
    return targets;
}

void CsdlAnnotations::readTargets(std::vector<ElementTree::Element> const& elements,
                                  CsdlModel& model,
                                  std::set<std::string, std::less<>> const& omitted) {
    Targets const targets = targetsOf(model);
    for (ElementTree::Element const element : elements) {
        CsdlElement annotations(m_tree, element, m_work);
        std::string_view const written = annotations.required("Target");
        annotations.tellMapped();
        auto target = targets.find(written);
        if (target == targets.end()) {
            target = targets.find(m_names.qualifiedPath(written));
        }
        std::string const path = m_names.qualifiedPath(written);
        std::string_view const first = std::string_view(path).substr(0, path.find_first_of("/("));
        char const* const reason = annotations.attribute("Qualifier") ? csdlReasons::Qualifier
                                   : target != targets.end()          ? nullptr
                                   : omitted.contains(path) || omitted.contains(first)
                                       ? csdlReasons::OfOmitted
                                   : m_names.isOfOther(first) ? csdlReasons::OtherTarget
                                                              : csdlReasons::NoTarget;
        for (ElementTree::Element const each : annotations.inside()) {
            if (!isCsdl(m_tree, each, "Annotation")) {
                annotations.leaveOut(each, written);
            } else if (reason != nullptr) {
                leaveOut(each, reason, written);
            } else {
                read(each, *target->second, written);
            }
        }
        annotations.leaveOutRest(written);
    }
}

} // namespace vex
