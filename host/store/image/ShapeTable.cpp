#include "host/store/image/ShapeTable.h"

#include <algorithm>

namespace vex {

std::span<std::uint32_t const> ShapeTable::named(Shape const& shape, Atom name) const {
    constexpr std::size_t fewEntries = 16; // looking through these is faster than searching
    std::span<std::uint32_t const> const all = byName(shape);
    ShapeEntry const* const entry = m_entries.data() + shape.firstEntry;
    std::size_t first = 0;
    if (all.size() <= fewEntries) {
        while (first < all.size() && entry[all[first]].name != name) {
            ++first;
        }
    } else {
        first =
            static_cast<std::size_t>(std::lower_bound(all.begin(), all.end(), name,
                                                      [entry](std::uint32_t offset, Atom wanted) {
                                                          return entry[offset].name < wanted;
                                                      }) -
                                     all.begin());
    }
    std::size_t last = first;
    while (last < all.size() && entry[all[last]].name == name) {
        ++last;
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
