#pragma once

#include <string_view>

namespace vex {

class ImportWork;

/// Reads an Ossie document, YAML of the core specification 0.2: semantic models with their
/// datasets, fields, relationships and metrics.
void importOssie(ImportWork& work);

/// The same of a text; the request's source stands for it in messages.
void importOssieText(std::string_view yaml, ImportWork& work);

} // namespace vex
