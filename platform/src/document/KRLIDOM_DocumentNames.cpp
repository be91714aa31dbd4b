#include "platform/src/document/KRLIDOM_DocumentNames.h"

#include "I18NHash.h"
#include "KRLException.h"

#include <string>
#include <string_view>

#include <xercesc/util/XMLString.hpp>

namespace {

[[noreturn]] void refuse(std::string const& what, std::size_t most) {
    throw KRLLimitException(what + " (" + std::to_string(most + 1) + "; at most " +
                            std::to_string(most) +
                            " allowed). Ask for fewer properties at a time.");
}

} // namespace

void KRLIDOM_DocumentNames::add(char16_t const* name, std::size_t length) {
    std::uint64_t const hash = I18NHashText(std::u16string_view(name, length), I18NHashSeed());
    std::uint64_t& recent = m_recent[hash % m_recent.size()];
    if (hash == recent) {
        return;
    }
    if (m_known.find(hash) != m_known.end()) {
        recent = hash;
        return;
    }
    if (m_known.size() == Most) {
        refuse("The document has too many different names", Most);
    }
    std::uint16_t& inPlace = m_inPlace[xercesc::XMLString::hash(name, places)];
    if (inPlace == MostInOnePlace) {
        refuse("Too many names in the document are so much alike that the XML library finds "
               "them slowly",
               MostInOnePlace);
    }
    m_known.insert(hash);
    ++inPlace;
    recent = hash;
}
