#include "host/store/image/ShapeTable.h"

#include <algorithm>

namespace vex {

std::span<std::uint32_t const> ShapeTable::named(Shape const& shape, Atom name) const {
    constexpr std::size_t fewEntries = 16; // looking through these is faster than searching
    std::span<std::uint32_t const> const all = byName(shape);
    ShapeEntry const* const entry = m_entries.data() + shape.firstEntry;
    std::size_t first = 0;
    std::size_t last = all.size();
    if (all.size() <= fewEntries) {
        while (first < all.size() && entry[all[first]].name != name) {
            ++first;
        }
        last = first;
        while (last < all.size() && entry[all[last]].name == name) {
            ++last;
        }
    } else {
        auto const begin = std::lower_bound(
            all.begin(), all.end(), name,
            [entry](std::uint32_t offset, Atom wanted) { return entry[offset].name < wanted; });
        auto const end =
            std::upper_bound(begin, all.end(), name, [entry](Atom wanted, std::uint32_t offset) {
                return wanted < entry[offset].name;
            });
        first = static_cast<std::size_t>(begin - all.begin());
        last = static_cast<std::size_t>(end - all.begin());
    }
    return all.subspan(first, last - first);
}

void ShapeTable::shrink() {
    m_shapes.shrink();
    m_entries.shrink();
    m_listed.shrink();
    m_byName.shrink();
}

std::size_t ShapeTable::byteCount() const {
    return m_shapes.byteCount() + m_entries.byteCount() + m_listed.byteCount() +
           m_byName.byteCount();
}

} // namespace vex
