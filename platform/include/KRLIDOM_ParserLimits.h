#pragma once

#include "KRLIDOM_Node.h"
#include "VexExport.h"

#include <cstddef>
#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class XMLScanner;
XERCES_CPP_NAMESPACE_END

/// How many bytes whoever reads with the XML library gives it at a time, to look in between
/// at what it does with them.
constexpr std::size_t KRLIDOM_BytesAtATime = 16'384;

/// The most attributes that a tag of the document had so far; of the tag that the library is
/// in, those it has read. It compares each with others before it tells of the tag, so a
/// reader that is to stay in proportion asks this before each piece. Threads: that of the
/// document.
VEX_PLATFORM_API std::size_t KRLIDOM_AttributesSoFar(xercesc::XMLScanner const& scanner);

/// Tells when the names of a document were chosen to stand in each other's way: the XML
/// library finds names in tables with a hash that everybody knows. Threads: one at a time.
class VEX_PLATFORM_API KRLIDOM_NameSpread {
public:
    /// The most names in one place of a table. Ten thousand names that nobody chose for that
    /// have fewer than a hundred in any place.
    static constexpr std::size_t MostInOnePlace = 256;

    /// Adds a name, which ends with a zero and was not added before. False when there are too
    /// many others in its place.
    bool add(char16_t const* name);

private:
    struct Table {
        explicit Table(std::size_t places) : names(places) {}
        bool add(std::size_t hash) { return ++names[hash % names.size()] <= MostInOnePlace; }
        std::vector<std::size_t> names; // how many, by their place
    };

    std::vector<std::size_t> m_hashes;
    Table m_elements{29};  // of a parser; grows with its names
    Table m_document{257}; // of a document
};
