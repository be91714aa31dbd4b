#pragma once

#include <string_view>

namespace vex {

class ImportWork;

/// Reads the description of an OData service of version 4, CSDL in XML, into a draft: entity
/// sets, singletons and types that none of them holds as query subjects, properties as query
/// items, navigation properties as relationships or shortcuts.
void importOdata(ImportWork& work);

/// The same for a description in memory.
void importOdataText(std::string_view csdl, ImportWork& work);

} // namespace vex
