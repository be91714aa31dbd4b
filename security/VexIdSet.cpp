#include "security/VexIdSet.h"

#include "provider/VexConstants.h"

#include <algorithm>
#include <bit>

namespace {

constexpr std::size_t smallestTable = 16;
constexpr std::size_t wordBits = 64;
constexpr std::size_t filterBitsPerSlot = 8;

std::uint64_t bitOf(std::size_t number) {
    return std::uint64_t{1} << (number % wordBits);
}

// At least twice what there was: room that is made many times over for a little costs
// in the end as much as room that is made once.
template <class Container> void makeRoom(Container& container, std::size_t more) {
    std::size_t const needed = container.size() + more;
    if (needed > container.capacity()) {
        container.reserve(std::max(needed, 2 * container.capacity()));
    }
}

} // namespace

void VexIdSet::insert(std::u16string_view id) {
    m_entries.push_back(
        {static_cast<std::uint32_t>(m_texts.size()), static_cast<std::uint32_t>(id.size())});
    m_hashes.push_back(hashOf(id));
    m_texts.append(id);
    m_table.clear();
}

std::uint32_t VexIdSet::hashOf(std::u16string_view id) const {
    return static_cast<std::uint32_t>(I18NHashText(id, m_seed));
}

bool VexIdSet::contains(I18NString const& id) const {
    if (m_entries.empty()) {
        return false;
    }
    std::u16string_view const wanted = id.view();
    std::uint32_t const hash = hashOf(wanted);
    if (!m_table.empty()) {
        return searchTable(hash, wanted);
    }
    if (++m_questions <= FewQuestions) {
        return searchHashes(hash, wanted);
    }
    makeTable();
    return searchTable(hash, wanted);
}

void VexIdSet::reserveMore(std::size_t count) {
    constexpr std::size_t usualLength = 8;
    makeRoom(m_entries, count);
    makeRoom(m_hashes, count);
    makeRoom(m_texts, count * usualLength);
}

bool VexIdSet::searchHashes(std::uint32_t hash, std::u16string_view id) const {
    // Blocks of a fixed size without a way out, so that many hashes are compared
    // at a time.
    constexpr std::size_t blockSize = 64;
    std::uint32_t const* const hashes = m_hashes.data();
    std::size_t const count = m_hashes.size();
    for (std::size_t block = 0; block < count; block += blockSize) {
        std::size_t const end = std::min(block + blockSize, count);
        std::uint32_t equal = 0;
        for (std::size_t entry = block; entry < end; ++entry) {
            equal |= static_cast<std::uint32_t>(hashes[entry] == hash);
        }
        for (std::size_t entry = block; equal != 0 && entry < end; ++entry) {
            if (hashes[entry] == hash && isAt(entry, id)) {
                return true;
            }
        }
    }
    return false;
}

bool VexIdSet::searchTable(std::uint32_t hash, std::u16string_view id) const {
    if (m_nextEntry < m_hashes.size() && m_hashes[m_nextEntry] == hash && isAt(m_nextEntry, id)) {
        ++m_nextEntry;
        return true;
    }
    std::size_t const bit = hash & (m_filter.size() * wordBits - 1);
    if ((m_filter[bit / wordBits] & bitOf(bit)) == 0) {
        return false;
    }
    std::size_t const mask = m_table.size() - 1;
    for (std::size_t at = hash & mask; m_table[at] != 0; at = (at + 1) & mask) {
        std::size_t const entry = m_table[at] - 1;
        if (m_hashes[entry] == hash && isAt(entry, id)) {
            m_nextEntry = entry + 1;
            return true;
        }
    }
    return false;
}

std::size_t VexIdSet::longestSearch() const {
    std::size_t longest = 0;
    std::size_t taken = 0; // slots without a free one between them
    for (std::size_t slot = 0; slot < 2 * m_table.size();
         ++slot) { // the last ones go on at the first
        taken = m_table[slot & (m_table.size() - 1)] == 0 ? 0 : taken + 1;
        longest = std::max(longest, taken);
    }
    return longest;
}

void VexIdSet::makeTable() const {
    std::vector<std::uint32_t> table(std::bit_ceil(std::max(smallestTable, 2 * m_entries.size())));
    std::vector<std::uint64_t> filter(table.size() * filterBitsPerSlot / wordBits);
    std::size_t const mask = table.size() - 1;
    std::size_t const bits = filter.size() * wordBits - 1;
    for (std::size_t entry = 0; entry < m_hashes.size(); ++entry) {
        std::size_t const bit = m_hashes[entry] & bits;
        filter[bit / wordBits] |= bitOf(bit);
        std::size_t at = m_hashes[entry] & mask;
        while (table[at] != 0 && !isRepeated(table[at] - 1, entry)) {
            at = (at + 1) & mask;
        }
        // One slot for an id, however often it was inserted: many of one id would
        // stand in each other's way.
        if (table[at] == 0) {
            table[at] = static_cast<std::uint32_t>(entry + 1);
        }
    }
    m_filter.swap(filter);
    m_table.swap(table); // last: it says that both are there
}
