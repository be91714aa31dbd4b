#pragma once

#include "host/store/image/LocaleNumbers.h"
#include "host/store/image/Model.h"
#include "host/store/image/ShapeTable.h"
#include "host/store/image/StoreIndex.h"

#include <vector>

namespace vex {

/// The number of an element: its index in document order, the root at 0.
using ElementNumber = std::uint32_t;

/// What is asked about an element is asked together: it lies together.
struct ElementRecord {
    ElementNumber parent;
    ElementNumber end; // the first element behind everything below
    std::uint32_t shape;
    std::uint32_t firstValue;
};

/// A `DocumentPosition` as it is kept; what is past the last line or column that it can
/// tell is the last one.
struct KeptPosition {
    std::uint32_t line;
    std::uint32_t column;
};

/// A property that has properties of its own, which is rare.
struct PropertyOwner {
    std::uint32_t value; // the index of the property among all values
    std::uint32_t shape;
    std::uint32_t firstValue;
};

/// What a value belongs to, an element or a property.
struct ValueOwner {
    std::uint32_t shape;
    std::uint32_t firstValue;
    std::uint32_t number; // of the element, or the index of the property among all values
    bool isElement;
};

/// A loaded model as arrays, read only. Elements stand in document order, so that
/// the first child of an element is the next one and everything below it is a
/// range. The values of elements stand in the same order, behind them those of
/// properties with properties of their own. Numbers stand for "none" as
/// `NotFound`.
///
/// An image of a model consists of these arrays as they lie here, a section
/// each: none holds an address, and nothing that only building needs is among
/// them.
///
/// | sections | hold |
/// |---|---|
/// | texts | UTF-16, each text once with a zero behind it, padded at the end |
/// | names, their hash slots | a text and its length for each `Atom` |
/// | shapes, their entries, what they list, their entries by name | see `Shape` |
/// | elements, their values | a record each; a `TextRef` each |
/// | firsts of class, marks of owners, owners among properties | to find one's way |
/// | classes, ids, references | what is looked up, as element numbers |
/// | positions | a line and a column for each element, or nothing |
/// | locales | by name: the default one, the supported ones, those of values |
/// | header | `hashSeed`, `elementValueCount`, the names that the store knows |
struct StoreData {
    static constexpr std::uint32_t ValuesPerOwnerMark = 16;

    std::uint64_t hashSeed = 0; // of all its hashes

    TextTable texts;
    NameTable names;
    ShapeTable shapes;

    CompactArray<ElementRecord> elements;
    std::uint32_t elementValueCount = 0;
    BitArray firstOfClass; // by element: the first of its class among its siblings

    CompactArray<TextRef> values;
    CompactArray<ElementNumber> ownerMarks;     // the owner of every 16th value of an element
    CompactArray<PropertyOwner> propertyOwners; // ascending by `value` and by `firstValue`

    ClassIndex classes;
    FixedHash ids;
    FixedHash references;

    CompactArray<KeptPosition> positions; // by element; empty when not kept

    I18NLocale defaultLocale;
    std::vector<I18NLocale> locales; // the entries of `locales`, each once
    LocaleNumbers usedLocales;       // of values: an entry of a shape names its locale by these

    /// What the arrays lie in when they are not owned.
    std::shared_ptr<void const> image;

    // Names that the store itself knows.
    Atom idName = NoAtom;
    Atom nameName = NoAtom;
    Atom namespaceName = NoAtom;
    Atom folderName = NoAtom;
    Atom queryItemFolderName = NoAtom;

    ElementNumber elementCount() const { return static_cast<ElementNumber>(elements.size()); }
    Shape const& shapeOf(ElementNumber element) const { return shapes[elements[element].shape]; }
    Atom classOf(ElementNumber element) const { return shapeOf(element).cls; }
    bool hasChildren(ElementNumber element) const { return elements[element].end != element + 1; }

    ValueOwner ownerOf(std::uint32_t value) const;
    ShapeEntry const& entryOf(std::uint32_t value) const {
        ValueOwner const owner = ownerOf(value);
        return shapes.entries(shapes[owner.shape])[value - owner.firstValue];
    }

    /// The owner record of a property with sub-properties, or null.
    PropertyOwner const* findPropertyOwner(std::uint32_t value) const;

    /// The offset of the simple property's value that a locale finds, or
    /// `NotFound`. Null finds what is not localised, else the default locale's
    /// value, else the first.
    std::uint32_t findOffset(Shape const& owner, Atom name, I18NLocale const* locale) const {
        std::span<std::uint32_t const> const named = shapes.named(owner, name);
        return named.empty() ? NotFound : chooseOffset(owner, named, locale);
    }
    /// The same among the offsets of the name's values, which are not none.
    std::uint32_t chooseOffset(Shape const& owner, std::span<std::uint32_t const> named,
                               I18NLocale const* locale) const {
        // Mostly the first value is it.
        return locale != nullptr &&
                       shapes.entries(owner)[named.front()].locale == usedLocales.of(*locale)
                   ? named.front()
                   : searchOffset(owner, named, locale);
    }
    std::uint32_t searchOffset(Shape const& owner, std::span<std::uint32_t const> named,
                               I18NLocale const* locale) const;

    /// An own value of an element; 0 when it has none.
    TextRef ownText(ElementNumber element, Own which) const {
        Shape const& of = shapeOf(element);
        return of.has(which) ? values[elements[element].firstValue + of.ownOffset(which)] : 0;
    }

    /// The name in the default locale; 0 without one.
    TextRef nameOf(ElementNumber element) const;

    /// True for what stands between a namespace and an element without being
    /// part of the element's reference.
    bool isLeftOutOfReferences(Atom cls) const {
        return cls == folderName || cls == queryItemFolderName;
    }

    /// The elements of a class below an element, in document order.
    std::span<ElementNumber const> below(ElementNumber element, Atom cls) const;

    /// True when there are at most `most` children; looks at no more than that.
    bool hasFewChildren(ElementNumber element, std::size_t most) const;

    /// The elements whose names make up the element's reference, innermost
    /// first; empty when it has none.
    std::vector<ElementNumber> referenceOf(ElementNumber element) const;

    std::size_t byteCount() const;

    /// Shows each array that an image holds, in its order.
    template <typename Self, typename Visit> static void visitArrays(Self& self, Visit& visit) {
        TextTable::visitArrays(self.texts, visit);
        NameTable::visitArrays(self.names, visit);
        ShapeTable::visitArrays(self.shapes, visit);
        visit(self.elements);
        visit(self.values);
        BitArray::visitArrays(self.firstOfClass, visit);
        visit(self.ownerMarks);
        visit(self.propertyOwners);
        ClassIndex::visitArrays(self.classes, visit);
        FixedHash::visitArrays(self.ids, visit);
        FixedHash::visitArrays(self.references, visit);
        visit(self.positions);
    }
};

/// What the reference index is keyed by: the names of a reference one by one,
/// the outermost first.
std::uint64_t firstReferenceHash(std::u16string_view name, std::uint64_t seed);
std::uint64_t nextReferenceHash(std::uint64_t before, std::u16string_view name, std::uint64_t seed);

} // namespace vex
