#pragma once

#include "host/store/build/GrowingHash.h"
#include "host/store/image/LocaleNumbers.h"
#include "host/store/image/ShapeTable.h"

#include <cstdint>
#include <span>

namespace vex {

/// Collects the shapes of a model; one that was added before is not added again.
class ShapeTableBuilder {
public:
    explicit ShapeTableBuilder(std::uint64_t seed) : m_seed(seed) {}

    /// The shape of an owner with these simple properties. `ownNames` names the
    /// own values.
    std::uint32_t add(Atom cls, std::uint8_t own, std::span<ShapeEntry const> simple,
                      Atom const (&ownNames)[OwnCount]);

    /// The shapes so far; only their entries can be asked for.
    ShapeTable const& table() const { return m_table; }

    /// Ends the building: numbers locales as the model does, among which are those of all
    /// entries, and works out what each shape lists. The default locale decides which value
    /// of a localised property is shown; `nameName` is the property "name".
    ShapeTable finish(LocaleNumbers const& locales, I18NLocale defaultLocale, Atom nameName) &&;

private:
    bool equals(Shape const& shape, Atom cls, std::uint8_t own,
                std::span<ShapeEntry const> simple) const;
    void sortByName(Shape const& shape);
    void list(Shape& shape, std::uint32_t defaultLocale);

    ShapeTable m_table;
    GrowingHash m_found;
    std::uint64_t m_seed;
};

} // namespace vex
