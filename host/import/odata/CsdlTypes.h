#pragma once

#include "host/import/odata/CsdlAnnotations.h"
#include "host/import/odata/CsdlElement.h"
#include "host/import/odata/CsdlModel.h"
#include "host/import/odata/CsdlNames.h"

namespace vex {

/// Reads the types of schemas: of entities, complex ones, enumerations and definitions.
class CsdlTypes {
public:
    CsdlTypes(CsdlModel& model, CsdlNames const& names, CsdlAnnotations& annotations,
              ImportWork& work)
        : m_model(model), m_names(names), m_annotations(annotations), m_work(work) {}

    /// False for an element that is no type.
    bool read(ElementTree const& tree, ElementTree::Element element, std::size_t schema);

    /// Finds the types that others derive from, once all of them were read.
    void findBases();

private:
    void readBase(CsdlElement& element, CsdlType& type);
    void readInside(ElementTree const& tree, ElementTree::Element element, CsdlElement& around,
                    CsdlType& type);
    void readKey(ElementTree const& tree, ElementTree::Element element, CsdlType& type);
    void readProperty(ElementTree const& tree, ElementTree::Element element, CsdlType& type);
    void readNavigation(ElementTree const& tree, ElementTree::Element element, CsdlType& type);
    void readConstraint(ElementTree const& tree, ElementTree::Element element,
                        CsdlNavigation& navigation);
    void readMember(ElementTree const& tree, ElementTree::Element element, CsdlType& type);
    void annotate(CsdlElement const& around, ElementTree::Element inside, CsdlSaid& said,
                  std::string_view name);
    void checkNames(CsdlType const& type);
    void checkCircles();

    CsdlModel& m_model;
    CsdlNames const& m_names;
    CsdlAnnotations& m_annotations;
    ImportWork& m_work;
};

} // namespace vex
