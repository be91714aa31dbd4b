#include "KRLIDOM_ParserLimits.h"

#include <limits>

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLString.hpp>

namespace {

// The list is there for the library's own kinds of scanner.
class Scanner : public xercesc::XMLScanner {
public:
    static xercesc::RefVectorOf<xercesc::XMLAttr> const& attributesOf(XMLScanner const& scanner) {
        return *(scanner.*&Scanner::fAttrList);
    }
};

} // namespace

std::size_t KRLIDOM_AttributesSoFar(xercesc::XMLScanner const& scanner) {
    return Scanner::attributesOf(scanner).size();
}

bool KRLIDOM_NameSpread::add(char16_t const* name) {
    constexpr std::size_t namesForEachPlace = 4; // then the library makes its table larger
    std::size_t const hash =
        xercesc::XMLString::hash(name, std::numeric_limits<std::size_t>::max());
    bool isSpread = true;
    if (m_hashes.size() >= namesForEachPlace * m_elements.names.size()) {
        m_elements = Table(2 * m_elements.names.size() + 1);
        for (std::size_t const known : m_hashes) {
            isSpread = m_elements.add(known) && isSpread;
        }
    }
    m_hashes.push_back(hash);
    isSpread = m_elements.add(hash) && isSpread;
    return m_document.add(hash) && isSpread;
}
