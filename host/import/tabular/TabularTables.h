#pragma once

#include "host/import/draft/SourceEntries.h"
#include "host/import/tabular/DisplayFolders.h"
#include "host/import/tabular/TabularModel.h"

namespace vex {

/// Reads the tables of a model with all that stands in them: into the draft, and as parts.
void readTables(SourceEntries& model, TabularModel& parts, DisplayFolders& folders,
                ImportWork& work);

/// Reads the relationships between columns, once the tables were read.
void readRelationships(SourceEntries& model, TabularModel& parts, ImportWork& work);

} // namespace vex
