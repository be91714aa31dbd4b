#pragma once

#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// What an import did with its source. A kind is a word for things of the source,
/// "measure", or for what is said of them, "measure.formatString". Whatever was read is
/// told here once: as mapped, or as left out with the reason.
class ImportAccount {
public:
    struct Place {
        std::string name; // of the thing; may be empty
        DocumentPosition position{};
        std::string file{}; // see `enterFile`
    };

    /// Things of one kind that were left out for one reason.
    struct Omission {
        std::string kind;
        std::string reason;
        std::size_t count = 0;
        std::vector<Place> places{}; // the first `MostPlaces` of them
    };

    struct Row {
        std::string kind;
        std::size_t read = 0;
        std::size_t mapped = 0;
    };

    /// Something that was mapped and that one should know about all the same.
    struct Note {
        std::string text;
        DocumentPosition position{};
        std::string file{};
    };

    static constexpr std::size_t MostPlaces = 10;
    /// A source may have as many keys that nobody knows as it has bytes: past so many kinds
    /// what comes new is counted as "other kinds", and past so many notes they are counted.
    static constexpr std::size_t MostKinds = 10'000;
    static constexpr std::size_t MostNotes = 10'000;

    /// Of a source that is several files: the one that what is told from here on stands in.
    void enterFile(std::string file) { m_file = std::move(file); }

    void mapped(std::string_view kind, std::size_t count = 1);
    void leftOut(std::string_view kind, std::string_view reason, Place place,
                 std::size_t count = 1);
    void note(std::string text, DocumentPosition position = {});

    /// Each in the order in which it came first.
    std::vector<Row> const& rows() const { return m_rows; }
    std::vector<Omission> const& omissions() const { return m_omissions; }
    std::vector<Note> const& notes() const { return m_notes; }
    std::size_t notesLeftOut() const { return m_notesLeftOut; }

    std::size_t readOf(std::string_view kind) const;
    std::size_t mappedOf(std::string_view kind) const;

private:
    /// The kind itself, or what it is counted as.
    std::string_view counted(std::string_view kind) const;
    Row& rowOf(std::string_view kind);

    std::vector<Row> m_rows;
    std::map<std::string, std::size_t, std::less<>> m_rowOfKind;
    std::vector<Omission> m_omissions;
    std::map<std::string, std::size_t, std::less<>> m_omissionOf; // by kind and reason
    std::vector<Note> m_notes;
    std::size_t m_notesLeftOut = 0;
    std::string m_file;
};

} // namespace vex
