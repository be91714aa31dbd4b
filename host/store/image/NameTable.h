#pragma once

#include "I18NHash.h"
#include "host/store/image/HashSlots.h"
#include "host/store/image/SameText.h"
#include "host/store/image/TextTable.h"

namespace vex {

/// Names one class or property name of a model: its index in the name table.
using Atom = std::uint32_t;
constexpr Atom NoAtom = NotFound;

/// The class and property names of a model, each once.
class NameTable {
public:
    /// The name's atom, or `NoAtom`. The names' texts lie in `texts`.
    Atom find(std::u16string_view name, TextTable const& texts) const {
        std::uint32_t const hash = static_cast<std::uint32_t>(I18NHashText(name, m_seed));
        return m_found.find(hash, [&](Atom atom) {
            return isSameText({texts.begin(text(atom)), m_names[atom].length}, name);
        });
    }

    TextRef text(Atom atom) const { return m_names[atom].text; }
    std::size_t size() const { return m_names.size(); }
    std::size_t byteCount() const { return m_names.byteCount() + m_found.byteCount(); }

    /// Says what is wrong with a table that was read; null when it can be used.
    char const* complaint(TextTable const& texts) const;

    /// Shows each array to who writes or reads them.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        visit(self.m_names);
        HashSlots::visitArrays(self.m_found, visit);
    }
    void setSeed(std::uint64_t seed) { m_seed = seed; }

private:
    friend class NameTableBuilder;

    struct Name {
        TextRef text;
        std::uint32_t length;
    };

    CompactArray<Name> m_names; // by atom
    HashSlots m_found;
    std::uint64_t m_seed = 0; // of the hashes
};

} // namespace vex
