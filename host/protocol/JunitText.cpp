#include "host/protocol/JunitText.h"

namespace vex {

std::string junitText(std::string const& text) {
    std::string result;
    for (char const character : text) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\n': // in an attribute it would be read as a blank
            result += "&#10;";
            break;
        default: {
            bool const isControl = static_cast<unsigned char>(character) < 0x20;
            result += isControl && character != '\t' ? "\xEF\xBF\xBD" : std::string(1, character);
        }
        }
    }
    return result;
}

} // namespace vex
