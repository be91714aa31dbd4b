#pragma once

#include "host/import/odata/CsdlModel.h"
#include "host/import/odata/CsdlNames.h"
#include "host/import/xml/ElementTree.h"

namespace vex {

class ImportWork;

/// What a service description holds, checked: names that stand twice, types that derive from
/// themselves and types that nothing tells of are refused.
struct CsdlDocument {
    CsdlNames names;
    CsdlModel model;
};

CsdlDocument readCsdl(ElementTree const& tree, ImportWork& work);

} // namespace vex
