#pragma once

#include <string>

namespace vex {

class ImportWork;

/// What an import writes.
struct ImportedDocuments {
    std::string model;
    std::string catalogue;
};

/// Makes the two documents of what a kind has drafted: users for roles that nobody holds,
/// an owner where nobody sees anything, ids, the model through `ModelWriter`; reads what it
/// wrote, as anybody would. Raises `SourceReport::Stop` when the work has an error then.
ImportedDocuments finishImport(ImportWork& work);

/// True for a name that files and model paths can bear: UTF-8, no separators and control
/// characters, not hidden.
bool canNameImport(std::string const& name);

} // namespace vex
