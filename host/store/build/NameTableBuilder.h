#pragma once

#include "host/store/build/GrowingHash.h"
#include "host/store/build/TextTableBuilder.h"
#include "host/store/image/NameTable.h"

namespace vex {

/// Collects names; what was added before is not added again.
class NameTableBuilder {
public:
    explicit NameTableBuilder(std::uint64_t seed) { m_table.m_seed = seed; }

    /// Adds the name unless it is there; its text goes to `texts`.
    Atom add(std::u16string_view name, TextTableBuilder& texts) {
        std::uint32_t const hash = static_cast<std::uint32_t>(hashText(name, m_table.m_seed));
        Atom const known =
            m_found.find(hash, [&](Atom atom) { return isSameText(view(atom, texts), name); });
        if (known != NoAtom) {
            return known;
        }
        Atom const atom = static_cast<Atom>(m_table.m_names.size());
        m_table.m_names.push_back({texts.add(name), static_cast<std::uint32_t>(name.size())});
        m_found.add(hash, atom);
        return atom;
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
    NameTable m_table;
    GrowingHash m_found;
};

} // namespace vex
