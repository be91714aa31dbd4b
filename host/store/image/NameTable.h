#pragma once

#include "host/store/image/HashSlots.h"
#include "host/store/image/SameText.h"
#include "host/store/image/TextHash.h"
#include "host/store/image/TextTable.h"

namespace vex {

/// Names one class or property name of a model: its place in the name table.
using Atom = std::uint32_t;
constexpr Atom NoAtom = NotFound;

/// The class and property names of a model, each once.
class NameTable {
public:
    NameTable() : m_seed(hashSeed()) {}

    /// The name's atom, or `NoAtom`. `Texts` is what the names lie in: a
    /// `TextTable` or the builder of one.
    template <typename Texts> Atom find(std::u16string_view name, Texts const& texts) const {
        return m_found.find(hashOf(name),
                            [&](Atom atom) { return isSameText(texts.view(text(atom)), name); });
    }

    /// Adds the name unless it is there; its text goes to `texts`, the builder of
    /// a `TextTable`.
    template <typename Builder> Atom add(std::u16string_view name, Builder& texts) {
        std::uint32_t const hash = hashOf(name);
        Atom const known = find(name, hash, texts);
        if (known != NoAtom) {
            return known;
        }
        Atom const atom = static_cast<Atom>(m_names.size());
        m_names.push_back({texts.add(name), static_cast<std::uint32_t>(name.size())});
        m_found.add(hash, atom);
        return atom;
    }

    TextRef text(Atom atom) const { return m_names[atom].text; }
    std::size_t size() const { return m_names.size(); }
    std::size_t byteCount() const { return m_names.byteCount() + m_found.byteCount(); }

private:
    struct Name {
        TextRef text;
        std::uint32_t length;
    };

    template <typename Texts>
    Atom find(std::u16string_view name, std::uint32_t hash, Texts const& texts) const {
        return m_found.find(hash, [&](Atom atom) {
            return isSameText({texts.begin(text(atom)), m_names[atom].length}, name);
        });
    }

    std::uint32_t hashOf(std::u16string_view name) const {
        return static_cast<std::uint32_t>(hashText(name, m_seed));
    }

    CompactArray<Name> m_names; // by atom
    HashSlots m_found;
    std::uint64_t m_seed;
};

} // namespace vex
