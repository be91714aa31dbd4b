#pragma once

#include "host/store/build/GrowingHash.h"
#include "host/store/build/TextTableBuilder.h"
#include "host/store/image/NameTable.h"

#include <array>

namespace vex {

/// Collects names; what was added before is not added again.
class NameTableBuilder {
public:
    explicit NameTableBuilder(std::uint64_t seed) {
        m_table.m_seed = seed;
        m_recent.fill(NoAtom);
    }

    /// Adds the name unless it is there; its text goes to `texts`.
    Atom add(std::u16string_view name, TextTableBuilder& texts) {
        Atom& recent = m_recent[recentSlot(name)];
        if (recent == NoAtom || !isSameText(view(recent, texts), name)) {
            recent = addHashed(name, texts);
        }
        return recent;
    }

    /// The number of a name that was added, or `NoAtom`.
    Atom find(std::u16string_view name, TextTableBuilder const& texts) const {
        return findHashed(name, hashOf(name), texts);
    }

    std::u16string_view view(Atom atom, TextTableBuilder const& texts) const {
        NameTable::Name const& name = m_table.m_names[atom];
        return {texts.begin(name.text), name.length};
    }

    NameTable finish() && {
        m_table.m_names.shrink();
        m_table.m_found = std::move(m_found).finish();
        return std::move(m_table);
    }

private:
    static constexpr std::size_t RecentCount = 64;

    // A source says the same few names over and over. Length and ends tell most
    // of them apart, so few need a hash worked out.
    static std::size_t recentSlot(std::u16string_view name) {
        if (name.empty()) {
            return 0;
        }
        return (name.size() * 5 + name.front() * 3U + name.back()) % RecentCount;
    }

    std::uint32_t hashOf(std::u16string_view name) const {
        return static_cast<std::uint32_t>(I18NHashText(name, m_table.m_seed));
    }

    Atom findHashed(std::u16string_view name, std::uint32_t hash,
                    TextTableBuilder const& texts) const {
        return m_found.find(hash, [&](Atom atom) { return isSameText(view(atom, texts), name); });
    }

    Atom addHashed(std::u16string_view name, TextTableBuilder& texts) {
        std::uint32_t const hash = hashOf(name);
        Atom const known = findHashed(name, hash, texts);
        if (known != NoAtom) {
            return known;
        }
        Atom const atom = static_cast<Atom>(m_table.m_names.size());
        m_table.m_names.push_back({texts.add(name), static_cast<std::uint32_t>(name.size())});
        m_found.add(hash, atom);
        return atom;
    }

    NameTable m_table;
    GrowingHash m_found;
    std::array<Atom, RecentCount> m_recent; // by `recentSlot`
};

} // namespace vex
