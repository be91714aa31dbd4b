#pragma once

#include "host/import/draft/SourceEntries.h"
#include "host/import/tabular/TabularModel.h"

namespace vex {

/// Reads the roles of a model: a view for each that may read, without what its permissions hide
/// and what names that; its members as users.
void readRoles(SourceEntries& model, TabularModel const& parts, ImportWork& work);

} // namespace vex
