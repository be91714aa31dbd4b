#pragma once

#include "host/store/build/Diagnostic.h"
#include "host/store/build/ModelSource.h"

#include <string>
#include <string_view>

namespace vex {

/// Takes down what is wrong with a source, each with where it was found. An
/// importer and the `ModelWriter` that it fills share one.
class SourceReport {
public:
    /// Raised to end a reading that cannot go on; the reason was reported. The
    /// importer catches it where its reading began.
    struct Stop {};

    static constexpr std::size_t MostKept = 1'000;

    /// `file` names the source in messages. All three are the caller's and
    /// outlive the report; what is found is appended to `found`.
    SourceReport(std::string const& file, ModelSource const& source, Diagnostics& found)
        : m_file(file), m_source(source), m_found(found) {}

    /// Reports the breach of a rule where the reading stands. Raises `Stop` with
    /// the error that makes them `MostKept`; a warning or note past that many
    /// is dropped.
    void report(char const* rule, std::string text, Severity severity = Severity::Error);

    /// Reports an error that the reading cannot go on after, and raises `Stop`.
    [[noreturn]] void stop(char const* rule, std::string text);
    [[noreturn]] void stop(char const* rule, std::string text, SourcePosition const& at);

    /// @{
    /// The same of another file that the model is made with.
    void report(Diagnostic found);
    [[noreturn]] void stop(Diagnostic found);
    /// @}

    bool hasErrors() const { return m_hasErrors; }

    std::string const& file() const { return m_file; }
    ModelSource const& source() const { return m_source; }

private:
    void keep(Severity severity, char const* rule, std::string text, SourcePosition const& at);
    void keep(Diagnostic found);
    bool isFull(Severity severity) const {
        return severity != Severity::Error && m_kept >= MostKept;
    }

    std::string const& m_file;
    ModelSource const& m_source;
    Diagnostics& m_found;
    std::size_t m_kept = 0;
    bool m_hasErrors = false;
};

/// The text in quotes, for messages; of a long one its beginning.
std::string inQuotes(std::u16string_view text);

} // namespace vex
