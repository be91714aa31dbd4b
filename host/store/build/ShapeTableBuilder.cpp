#include "host/store/build/ShapeTableBuilder.h"

#include "I18NHash.h"

#include <algorithm>
#include <bit>
#include <tuple>
#include <vector>

namespace vex {

namespace {

constexpr unsigned halfBits = 32;

std::uint32_t hashOf(Atom cls, std::uint8_t own, std::span<ShapeEntry const> simple,
                     std::uint64_t seed) {
    std::uint64_t hash = I18NMixHash(0, (std::uint64_t{cls} << halfBits) | own, seed);
    for (ShapeEntry const& entry : simple) {
        hash = I18NMixHash(hash, (std::uint64_t{entry.name} << halfBits) | entry.locale, seed);
        hash += entry.role;
    }
    return static_cast<std::uint32_t>(I18NMixHash(hash, simple.size(), seed));
}

bool same(ShapeEntry const& a, ShapeEntry const& b) {
    return a.name == b.name && a.locale == b.locale && a.role == b.role;
}

} // namespace

std::uint32_t ShapeTableBuilder::add(Atom cls, std::uint8_t own, std::span<ShapeEntry const> simple,
                                     Atom const (&ownNames)[OwnCount]) {
    std::uint32_t const hash = hashOf(cls, own, simple, m_seed);
    std::uint32_t const found = m_found.find(hash, [&](std::uint32_t shape) {
        return equals(m_table.m_shapes[shape], cls, own, simple);
    });
    if (found != NotFound) {
        return found;
    }
    std::uint32_t const number = static_cast<std::uint32_t>(m_table.size());
    Shape shape{};
    shape.cls = cls;
    shape.firstEntry = static_cast<std::uint32_t>(m_table.m_entries.size());
    shape.own = own;
    shape.ownCount = static_cast<std::uint8_t>(std::popcount(static_cast<unsigned>(own)));
    shape.entryCount = static_cast<std::uint32_t>(shape.ownCount + simple.size());
    for (unsigned which = 0; which < OwnCount; ++which) {
        if ((own >> which & 1U) != 0) {
            m_table.m_entries.push_back({ownNames[which], 0, 0});
        }
    }
    m_table.m_entries.append(simple.data(), simple.size());
    m_table.m_shapes.push_back(shape);
    m_found.add(hash, number);
    return number;
}

ShapeTable ShapeTableBuilder::finish(LocaleNumbers const& locales, I18NLocale defaultLocale,
                                     Atom nameName) && {
    m_found = {};
    for (ShapeEntry& entry : std::span(m_table.m_entries.data(), m_table.m_entries.size())) {
        entry.locale = locales.ofNumber(entry.locale);
    }
    m_table.m_byName.assign(m_table.m_entries.size(), 0); // those of own values stay unused
    for (std::uint32_t number = 0; number < m_table.size(); ++number) {
        Shape& shape = m_table.m_shapes[number];
        sortByName(shape);
        std::span<std::uint32_t const> const named = m_table.named(shape, nameName);
        shape.firstName = static_cast<std::uint32_t>(named.data() - m_table.m_byName.data());
        shape.nameCount = static_cast<std::uint32_t>(named.size());
        list(shape, locales.of(defaultLocale));
    }
    m_table.shrink();
    return std::move(m_table);
}

bool ShapeTableBuilder::equals(Shape const& shape, Atom cls, std::uint8_t own,
                               std::span<ShapeEntry const> simple) const {
    if (shape.cls != cls || shape.own != own ||
        shape.entryCount != shape.ownCount + simple.size()) {
        return false;
    }
    ShapeEntry const* const entry = m_table.m_entries.data() + shape.firstEntry + shape.ownCount;
    return std::equal(simple.begin(), simple.end(), entry, same);
}

void ShapeTableBuilder::sortByName(Shape const& shape) {
    std::uint32_t* const first = m_table.m_byName.data() + shape.firstEntry;
    std::uint32_t* last = first;
    for (std::uint32_t offset = shape.ownCount; offset < shape.entryCount; ++offset) {
        *last++ = offset;
    }
    ShapeEntry const* const entry = m_table.m_entries.data() + shape.firstEntry;
    std::sort(first, last, [entry](std::uint32_t a, std::uint32_t b) {
        return std::tuple(entry[a].name, entry[a].locale, a) <
               std::tuple(entry[b].name, entry[b].locale, b);
    });
}

// A name with a value that is not localised is listed by all of those; another
// one once, where its first value stands, by the default locale's value or the
// first.
void ShapeTableBuilder::list(Shape& shape, std::uint32_t defaultLocale) {
    struct Listed {
        std::uint32_t offset; // where it stands in the list
        std::uint32_t shown;
    };
    std::vector<Listed> listed;
    std::span<std::uint32_t const> const all = m_table.byName(shape);
    ShapeEntry const* const entry = m_table.m_entries.data() + shape.firstEntry;
    for (std::size_t first = 0; first < all.size();) {
        std::uint32_t firstOffset = all[first];
        std::uint32_t shown = NotFound;
        std::size_t const unlocalisedBefore = listed.size();
        std::size_t last = first;
        for (; last < all.size() && entry[all[last]].name == entry[all[first]].name; ++last) {
            std::uint32_t const offset = all[last];
            firstOffset = std::min(firstOffset, offset);
            if (entry[offset].locale == 0) {
                listed.push_back({offset, offset});
            } else if (entry[offset].locale == defaultLocale) {
                shown = offset;
            }
        }
        if (listed.size() == unlocalisedBefore) {
            listed.push_back({firstOffset, shown == NotFound ? firstOffset : shown});
        }
        first = last;
    }
    std::sort(listed.begin(), listed.end(),
              [](Listed const& a, Listed const& b) { return a.offset < b.offset; });
    shape.firstListed = static_cast<std::uint32_t>(m_table.m_listed.size());
    shape.listedCount = static_cast<std::uint32_t>(listed.size());
    for (Listed const& each : listed) {
        m_table.m_listed.push_back(each.shown);
    }
}

} // namespace vex
