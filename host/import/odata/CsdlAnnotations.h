#pragma once

#include "host/import/odata/CsdlModel.h"
#include "host/import/odata/CsdlNames.h"
#include "host/import/xml/ElementTree.h"

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace vex {

class ImportWork;

/// Reads annotations: what their terms say of a thing, as properties.
class CsdlAnnotations {
public:
    CsdlAnnotations(ElementTree const& tree, CsdlNames const& names, ImportWork& work)
        : m_tree(tree), m_names(names), m_work(work) {}

    /// An element `Annotation` that describes the thing called `name`.
    void read(ElementTree::Element annotation, CsdlSaid& said, std::string_view name);

    /// Elements `Annotations`, which name what they describe, once all of it was read.
    void readTargets(std::vector<ElementTree::Element> const& targets, CsdlModel& model,
                     std::set<std::string, std::less<>> const& omitted);

private:
    using Targets = std::map<std::string, CsdlSaid*, std::less<>>;
    static Targets targetsOf(CsdlModel& model);

    void leaveOut(ElementTree::Element annotation, char const* reason, std::string_view name);
    void say(ElementTree::Element said, std::string const& kind, std::string_view term,
             std::string_view part, CsdlSaid& into, std::string_view name);
    std::string termOf(ElementTree::Element annotation) const;
    void readRecord(ElementTree::Element record, std::string const& term, CsdlSaid& said,
                    std::string_view name);

    ElementTree const& m_tree;
    CsdlNames const& m_names;
    ImportWork& m_work;
};

} // namespace vex
