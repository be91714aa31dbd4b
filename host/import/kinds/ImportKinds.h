#pragma once

#include "host/import/draft/FinishedImport.h"
#include "host/import/draft/ImportAccount.h"
#include "host/import/draft/ImportWork.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vex {

/// An option that some kinds of import have.
struct ImportOption {
    char const* name; // without "--"
    char const* word; // what stands behind it, for people
    char const* help;
    std::span<char const* const> choices = {}; // when only these may stand
};

/// A form of source that can be imported.
struct ImportKind {
    char const* name;
    char const* help;
    /// The source is a file, after which the import is named unless it is told otherwise.
    bool isFile;
    std::span<ImportOption const> options;
    /// Fills the work's draft and account. Raises `SourceReport::Stop` through `refuse`, and
    /// `KRLDocumentException` for a source that cannot be read.
    void (*read)(ImportWork& work);
    /// A source for messages and reports; null when it may be shown as it was given.
    std::string (*shown)(std::string const& source) = nullptr;
};

std::span<ImportKind const> importKinds();

/// Null without one of that name.
ImportKind const* findImportKind(std::string_view name);

/// What came of an import.
struct ImportOutcome {
    std::optional<ImportedDocuments> documents; // nothing when an error was found
    ImportAccount account;
    Diagnostics found;
};

/// Reads a source and makes the documents of it; writes nothing. Raises
/// `KRLDocumentException` when the source cannot be read, `KRLLimitException`,
/// `std::bad_alloc`.
ImportOutcome runImport(ImportKind const& kind, ImportRequest const& request);

} // namespace vex
