#pragma once

#include "I18NHash.h"
#include "I18NString.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// A set of object ids: the texts one after another in one block, found by their
/// hashes. Sets of a hundred thousand ids are read for one request and often
/// asked about a single object, so filling costs little: the first questions go
/// through the hashes, and the table that finds them faster is made when more
/// are asked. The hashes are those of this process alone: no ids can be chosen to
/// stand in each other's way.
///
/// Threads: one at a time, questions too.
class VexIdSet {
public:
    /// Adds an id; one that is already there may be kept twice.
    void insert(std::u16string_view id);
    void insert(I18NString const& id) { insert(id.view()); }
    bool contains(I18NString const& id) const;

    bool empty() const { return m_entries.empty(); }
    /// Makes room for `count` more ids. Many calls for a few ids cost as little as one
    /// for all of them.
    void reserveMore(std::size_t count);

    /// How many entries the slowest question looks at, once the table was made; 0 before.
    std::size_t longestSearch() const;

private:
    struct Entry {
        std::uint32_t start;
        std::uint32_t length;
    };
    /// How many questions may be answered without the table.
    static constexpr unsigned FewQuestions = 32;

    std::uint32_t hashOf(std::u16string_view id) const;
    bool isAt(std::size_t entry, std::u16string_view id) const {
        Entry const& at = m_entries[entry];
        return at.length == id.size() &&
               std::memcmp(m_texts.data() + at.start, id.data(), id.size() * sizeof(char16_t)) == 0;
    }
    bool isRepeated(std::size_t entry, std::size_t later) const {
        Entry const& at = m_entries[later];
        return m_hashes[entry] == m_hashes[later] &&
               isAt(entry, std::u16string_view(m_texts).substr(at.start, at.length));
    }
    bool searchHashes(std::uint32_t hash, std::u16string_view id) const;
    bool searchTable(std::uint32_t hash, std::u16string_view id) const;
    void makeTable() const;

    std::uint64_t m_seed = I18NHashSeed();
    std::u16string m_texts;
    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_hashes; // of each entry

    mutable unsigned m_questions = 0;
    /// The numbers of entries plus 1, 0 for a free slot; a power of two of them,
    /// at most half taken. Empty until it is made, and after an insertion.
    mutable std::vector<std::uint32_t> m_table;
    /// A bit for each of many hashes, set when an entry has it: most ids that
    /// are not there end here, in little memory. Made with the table.
    mutable std::vector<std::uint64_t> m_filter;
    /// Lists and questions follow the model's order, so the next entry is tried
    /// first.
    mutable std::size_t m_nextEntry = 0;
};
