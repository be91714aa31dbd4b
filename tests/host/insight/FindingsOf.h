#pragma once

#include "host/import/xml/ModelLoader.h"
#include "host/insight/ModelChecks.h"

namespace vex {

/// What the checks find in a model of these elements, from line 2 on, whose
/// languages are English, German and Japanese.
inline Diagnostics findingsOf(std::string const& elements) {
    LoadOptions options;
    options.keepPositions = true;
    auto const model =
        loadModelText("<model defaultLocale='en'><locales><locale>en</locale><locale>de</locale>"
                      "<locale>ja</locale></locales>\n" +
                          elements + "\n</model>",
                      "m.xml", options);
    Diagnostics found;
    checkModel(*model, "m.xml", found);
    return found;
}

/// "rule@line" of those of a severity, but for names that paths cannot reach.
inline std::vector<std::string> linesOf(std::string const& elements, Severity severity) {
    std::vector<std::string> lines;
    for (Diagnostic const& each : findingsOf(elements)) {
        if (each.severity == severity && each.rule != "unreachable-by-path" &&
            each.rule != "astray-name") {
            lines.push_back(each.rule + '@' + std::to_string(each.line));
        }
    }
    return lines;
}

inline std::vector<std::string> warningsOf(std::string const& elements) {
    return linesOf(elements, Severity::Warning);
}

inline std::vector<std::string> notesOf(std::string const& elements) {
    return linesOf(elements, Severity::Note);
}

} // namespace vex
