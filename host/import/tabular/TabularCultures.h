#pragma once

#include "host/import/draft/SourceEntries.h"
#include "host/import/tabular/DisplayFolders.h"
#include "host/import/tabular/TabularModel.h"

namespace vex {

/// Reads the cultures of a model as languages: names, descriptions and folders, found by the
/// names in the source.
void readCultures(SourceEntries& model, TabularModel const& parts, DisplayFolders& folders,
                  ImportWork& work);

} // namespace vex
