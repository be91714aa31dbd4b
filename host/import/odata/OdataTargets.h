#pragma once

#include "host/import/odata/CsdlDocument.h"
#include "host/import/odata/OdataSubjects.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vex {

/// Where a navigation property of a query subject leads to.
struct OdataTarget {
    std::size_t subject = OdataSubject::None;
    char const* problem = nullptr; // why it leads nowhere
};

/// Finds where navigation properties lead to: as the set's binding says, else to the only set
/// that holds the type, else to the type itself.
class OdataTargets {
public:
    OdataTargets(CsdlDocument const& document, std::vector<OdataSubject> const& subjects);

    OdataTarget find(std::size_t subject, CsdlNavigation const& navigation);

    /// Tells the account of the bindings: those that were followed, and the others.
    void tellBindings(ImportWork& work) const;

private:
    std::size_t bound(OdataSubject const& subject, CsdlNavigation const& navigation);
    std::size_t setNamed(std::size_t container, std::string const& target) const;

    using Bindings = std::map<std::string, std::pair<std::size_t, bool>>; // number, followed

    CsdlDocument const& m_document;
    CsdlModel const& m_model;
    std::vector<OdataSubject> const& m_subjects;
    std::map<std::string, std::size_t> m_subjectOfSet;         // by path, "NS.Container/Set"
    std::map<std::size_t, std::vector<std::size_t>> m_holders; // of a type
    std::map<std::size_t, std::size_t> m_subjectOfType;        // that no set holds
    std::vector<Bindings> m_bindings;                          // of each set, by path
};

} // namespace vex
