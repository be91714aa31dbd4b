#include "host/content/UnknownName.h"

#include "host/store/image/HostException.h"

#include <string>

namespace vex {

void refuseUnknownName(char const* what, I18NString const& asked,
                       std::vector<I18NString> const& known) {
    constexpr std::size_t shown = 10;
    std::string text = std::string("unknown ") + what + " \"" + asked.toUtf8() + '"';
    if (known.empty()) {
        throw HostException(text + "; the catalogue has none");
    }
    text += "; the catalogue has ";
    for (std::size_t index = 0; index < known.size() && index < shown; ++index) {
        text += (index == 0 ? "\"" : ", \"") + known[index].toUtf8() + '"';
    }
    throw HostException(known.size() > shown ? text + ", ..." : text);
}

} // namespace vex
