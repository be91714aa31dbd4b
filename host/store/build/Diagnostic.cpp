#include "host/store/build/Diagnostic.h"

namespace vex {

char const* toString(Severity severity) {
    constexpr char const* words[] = {"error", "warning", "note"};
    return words[static_cast<std::size_t>(severity)];
}

std::string placeOf(Diagnostic const& diagnostic) {
    std::string shown = diagnostic.file;
    if (diagnostic.line != 0) {
        shown += ':' + std::to_string(diagnostic.line);
        if (diagnostic.column != 0) {
            shown += ':' + std::to_string(diagnostic.column);
        }
    }
    if (!shown.empty()) {
        shown += ": ";
    }
    if (!diagnostic.part.empty()) {
        shown += diagnostic.part + ": ";
    }
    return shown;
}

std::string toString(Diagnostic const& diagnostic) {
    return placeOf(diagnostic) + toString(diagnostic.severity) + ": " + diagnostic.text;
}

} // namespace vex
