#include "host/protocol/SarifLog.h"

#include <cctype>

#include <nlohmann/json.hpp>

namespace vex {

std::string toUri(std::string_view path) {
    constexpr char const* digits = "0123456789ABCDEF";
    constexpr std::string_view unescaped = "-._~/";
    std::string uri;
    for (char const character : path) {
        auto const byte = static_cast<unsigned char>(character);
        bool const isPlain = byte < 0x80 && (std::isalnum(byte) != 0 ||
                                             unescaped.find(character) != std::string_view::npos);
        if (isPlain) {
            uri += character;
        } else {
            uri += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        }
    }
    return uri;
}

Json sarifPlace(std::string_view file, unsigned long line, unsigned long column) {
    Json place{{"artifactLocation", {{"uri", toUri(file)}}}};
    if (line != 0) {
        place["region"]["startLine"] = line;
    }
    if (line != 0 && column != 0) {
        place["region"]["startColumn"] = column;
    }
    return place;
}

SarifLog::SarifLog(std::ostream& out, Json const& rules, std::string_view version) : m_json(out) {
    m_json.beginObject();
    m_json.member("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
    m_json.member("version", "2.1.0");
    m_json.beginList("runs");
    m_json.beginObject();
    m_json.beginObject("tool");
    m_json.member("driver",
                  {{"name", "vexma"}, {"version", std::string(version)}, {"rules", rules}});
    m_json.end();
    m_json.member("columnKind", "utf16CodeUnits");
    m_json.beginList("results");
}

void SarifLog::finish() {
    m_json.end(); // of the results
    m_json.end();
    m_json.end(); // of the runs
    m_json.end();
}

} // namespace vex
