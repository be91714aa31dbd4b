#pragma once

#include "host/import/draft/ImportAccount.h"
#include "host/import/draft/ImportDraft.h"
#include "host/store/build/ModelWriter.h"
#include "host/store/build/SourceReport.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vex {

/// What an import may read and make.
struct ImportLimits {
    ModelLimits model{};
    std::size_t sourceBytes = std::size_t{64} << 20U;
    std::size_t sourceValues = 2'000'000; // of a tree of values, such as JSON
    std::size_t sourceDepth = 256;
    /// Objects in views, and the steps that find out what belongs in them: views name each
    /// object, so they grow by roles times objects.
    std::size_t viewEntries = 5'000'000;
};

/// What is asked of an import.
struct ImportRequest {
    std::string source;        // a file, "-" for standard input; a kind may take something else
    std::string shownSource{}; // in its place in messages, when it may hold what is secret
    std::string name;          // of what is written
    /// The language of a source that does not say its own.
    std::string language = "en_US";
    /// Who sees everything. Without a name, that is somebody only when nobody sees anything.
    std::string owner{};
    /// Roles that nobody holds get a user of their own name.
    bool hasStandIns = true;
    /// What the kind alone has: the values given for an option, by its name without "--".
    std::map<std::string, std::vector<std::string>> options{};
    ImportLimits limits{};

    /// The source for messages.
    std::string sourceName() const {
        return !shownSource.empty() ? shownSource : source == "-" ? "standard input" : source;
    }
};

/// An import at work. Its kind reads the request's source, fills the draft and tells the
/// account of everything; the rest is the same for every kind.
class ImportWork {
public:
    explicit ImportWork(ImportRequest request);
    ImportWork(ImportWork const&) = delete;
    ImportWork& operator=(ImportWork const&) = delete;

    ImportRequest const request;
    ImportDraft draft;
    ImportAccount account;
    Diagnostics found;

    /// Of a source that is several files: the one that is read from here on, for messages, the
    /// account and the draft; "" for the source as a whole.
    void enterFile(std::string const& file);

    /// Ends the import: the source cannot be used. The text says what is wrong and what to do
    /// about it.
    [[noreturn]] void refuse(std::string text, DocumentPosition at = {});

    /// Counts what an import makes beside what it reads, where a source may say once what stands
    /// in many places: so many values and bytes may be made as may be read. Refuses past that.
    void countMade(std::size_t values, std::size_t bytes, DocumentPosition at);

    /// Takes steps from the limit of what views may take; refuses past it.
    void spendOnViews(std::size_t steps);

private:
    std::string m_file; // for messages
    std::size_t m_spentOnViews = 0;
    std::size_t m_madeValues = 0;
    std::size_t m_madeBytes = 0;
};

} // namespace vex
