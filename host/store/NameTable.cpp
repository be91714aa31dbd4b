#include "NameTable.h"

namespace vex {

NameTable::NameTable() : m_seed(hashSeed()) {}

Atom NameTable::add(std::u16string_view name, TextTableBuilder& texts) {
    std::uint32_t const hash = hashOf(name);
    Atom const found = find(name, hash, texts);
    if (found != NoAtom) {
        return found;
    }
    Atom const atom = static_cast<Atom>(m_names.size());
    m_names.push_back({texts.add(name), static_cast<std::uint32_t>(name.size())});
    m_found.add(hash, atom);
    return atom;
}

} // namespace vex
