#include "host/import/odata/OdataTargets.h"

#include "host/import/odata/CsdlTables.h"

namespace vex {

OdataTargets::OdataTargets(CsdlDocument const& document, std::vector<OdataSubject> const& subjects)
    : m_document(document), m_model(document.model), m_subjects(subjects),
      m_bindings(document.model.sets.size()) {
    for (std::size_t number = 0; number < subjects.size(); ++number) {
        OdataSubject const& subject = subjects[number];
        if (subject.set == OdataSubject::None) {
            m_subjectOfType.emplace(subject.type, number);
            continue;
        }
        CsdlSet const& set = m_model.sets[subject.set];
        CsdlContainer const& container = m_model.containers[set.container];
        m_subjectOfSet.emplace(
            m_model.schemas[container.schema].name + '.' + container.name + '/' + set.name, number);
        if (!set.isSingleton) {
            m_holders[subject.type].push_back(number);
        }
    }
    for (std::size_t number = 0; number < m_model.sets.size(); ++number) {
        auto const& bindings = m_model.sets[number].bindings;
        for (std::size_t each = 0; each < bindings.size(); ++each) {
            m_bindings[number].emplace(document.names.qualifiedPath(bindings[each].path),
                                       std::pair(each, false));
        }
    }
}

std::size_t OdataTargets::setNamed(std::size_t container, std::string const& target) const {
    std::string path = target;
    if (path.find('/') == std::string::npos) {
        CsdlContainer const& own = m_model.containers[container];
        path = m_model.schemas[own.schema].name + '.' + own.name + '/' + path;
    } else {
        path = m_document.names.qualifiedPath(path);
    }
    auto const found = m_subjectOfSet.find(path);
    return found == m_subjectOfSet.end() ? OdataSubject::None : found->second;
}

std::size_t OdataTargets::bound(OdataSubject const& subject, CsdlNavigation const& navigation) {
    if (subject.set == OdataSubject::None) {
        return OdataSubject::None;
    }
    CsdlSet const& set = m_model.sets[subject.set];
    Bindings& bindings = m_bindings[subject.set];
    auto binding = bindings.find(navigation.name);
    if (binding == bindings.end()) {
        binding = bindings.find(m_model.qualifiedName(m_model.types[subject.type]) + '/' +
                                navigation.name);
    }
    if (binding == bindings.end()) {
        return OdataSubject::None;
    }
    std::size_t const target = setNamed(set.container, set.bindings[binding->second.first].target);
    binding->second.second = binding->second.second || target != OdataSubject::None;
    return target;
}

OdataTarget OdataTargets::find(std::size_t subject, CsdlNavigation const& navigation) {
    std::size_t const target = bound(m_subjects[subject], navigation);
    if (target != OdataSubject::None) {
        return {target};
    }
    std::size_t const type = m_model.findType(navigation.type);
    if (type == CsdlType::None) {
        return {OdataSubject::None, m_document.names.isOfOther(navigation.type)
                                        ? csdlReasons::OtherType
                                        : "the document lacks its type"};
    }
    auto const holders = m_holders.find(type);
    if (holders != m_holders.end()) {
        if (holders->second.size() == 1) {
            return {holders->second.front()};
        }
        return {OdataSubject::None, "several sets hold its type, and no binding says which"};
    }
    auto const own = m_subjectOfType.find(type);
    if (own == m_subjectOfType.end()) {
        return {OdataSubject::None, "only a singleton holds its type, and no binding leads there"};
    }
    return {own->second};
}

void OdataTargets::tellBindings(ImportWork& work) const {
    constexpr char const* kind = "NavigationPropertyBinding";
    for (std::size_t number = 0; number < m_bindings.size(); ++number) {
        std::vector<CsdlBinding> const& bindings = m_model.sets[number].bindings;
        std::vector<bool> isFollowed(bindings.size());
        for (auto const& [path, binding] : m_bindings[number]) {
            isFollowed[binding.first] = binding.second;
        }
        for (std::size_t each = 0; each < bindings.size(); ++each) {
            if (isFollowed[each]) {
                work.account.mapped(kind);
            } else {
                work.account.leftOut(kind,
                                     "no object has a navigation property by this path, or no set "
                                     "is its target",
                                     {bindings[each].path, bindings[each].position});
            }
        }
    }
}

} // namespace vex
