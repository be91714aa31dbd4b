#include "platform/src/document/KRLIDOM_Guard.h"

#include "KRLException.h"

namespace KRLIDOM {

void raiseStructure(xercesc::DOMException const& failure) {
    std::string const reason = text(failure.getMessage()).toUtf8();
    throw KRLDocumentException("", 0, 0,
                               failure.code == xercesc::DOMException::INVALID_CHARACTER_ERR
                                   ? "The document does not accept this name: " + reason
                                   : "The document's structure forbids the change: " + reason);
}

void raiseOutOfMemory(char const* limitName) {
    throw KRLLimitException("The machine has no memory left for the document. Ask for less with "
                            "\"Depth\" or a start path, or set a limit" +
                            withName(limitName));
}

std::string withName(char const* limitName) {
    return limitName == nullptr ? "." : std::string(" with ") + limitName + '.';
}

} // namespace KRLIDOM
