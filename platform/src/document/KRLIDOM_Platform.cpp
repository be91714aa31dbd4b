#include "KRLIDOM_Platform.h"

#include <mutex>

#include <xercesc/util/PlatformUtils.hpp>

void KRLIDOM_Initialize() {
    // Xerces-C's own counter of initialisations is not safe between threads.
    static std::once_flag once;
    std::call_once(once, [] { xercesc::XMLPlatformUtils::Initialize(); });
}
