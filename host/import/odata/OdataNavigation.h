#pragma once

#include "host/import/odata/CsdlDocument.h"
#include "host/import/odata/OdataSubjects.h"

namespace vex {

/// What becomes of navigation properties.
enum class OdataNavigationForm { Relationship, Shortcut };

/// Makes relationships or shortcuts of the navigation properties of all query subjects, and
/// tells the account of them, of their constraints and of the bindings of sets.
void makeNavigation(CsdlDocument const& document, OdataSubjects& subjects, OdataNavigationForm form,
                    ImportWork& work);

} // namespace vex
