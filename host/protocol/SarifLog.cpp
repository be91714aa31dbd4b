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

JsonListText sarifLog(Json rules, std::string_view version) {
    constexpr std::size_t depthOfResults = 3;
    Json const driver{
        {"name", "vexma"}, {"version", std::string(version)}, {"rules", std::move(rules)}};
    Json const run{{"tool", {{"driver", driver}}},
                   {"columnKind", "utf16CodeUnits"},
                   {"results", Json::array()}};
    return {Json{{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                 {"version", "2.1.0"},
                 {"runs", Json::array({run})}},
            "results", depthOfResults};
}

} // namespace vex
