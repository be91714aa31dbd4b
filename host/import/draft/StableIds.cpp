#include "host/import/draft/StableIds.h"

#include "host/import/draft/ModelDraft.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>

namespace vex {

namespace {

constexpr std::size_t longestTag = 64;
constexpr std::size_t longestId = 300;

/// Tags are what programs make; anything else could pass for a path, or break in a list.
bool isUsable(std::string_view tag) {
    return !tag.empty() && tag.size() <= longestTag &&
           std::all_of(tag.begin(), tag.end(), [](char unit) {
               return (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'z') ||
                      (unit >= 'A' && unit <= 'Z') || unit == '-' || unit == '_';
           });
}

// FNV-1a: the number stands in ids, so it is the same on every machine and for good. Whoever
// makes two paths alike on purpose has them numbered.
std::string numberOf(std::string_view text) {
    std::uint64_t number = 14'695'981'039'346'656'037ULL;
    for (char const unit : text) {
        number = (number ^ static_cast<unsigned char>(unit)) * 1'099'511'628'211ULL;
    }
    constexpr char const* digits = "0123456789abcdef";
    std::string written;
    for (int shift = 60; shift >= 0; shift -= 4) {
        written += digits[(number >> static_cast<unsigned>(shift)) & 0xFU];
    }
    return written;
}

/// Without half a character at its end.
std::string_view cut(std::string_view text, std::size_t length) {
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        --length;
    }
    return text.substr(0, length);
}

std::string idOfPath(DraftKey const& key) {
    std::string id = key.kind + (key.path.empty() ? "" : ":") + key.path;
    return id.size() <= longestId ? id : std::string(cut(id, longestId)) + "...#" + numberOf(id);
}

} // namespace

std::vector<std::string> stableIds(std::vector<DraftKey const*> const& keys) {
    std::map<std::string, std::size_t> tags;
    auto const tagged = [](DraftKey const& key) { return key.kind + ":" + key.tag; };
    for (DraftKey const* const key : keys) {
        if (isUsable(key->tag)) {
            ++tags[tagged(*key)];
        }
    }
    std::vector<std::string> ids;
    ids.reserve(keys.size());
    std::set<std::string> given;
    std::map<std::string, std::size_t> numbers;
    for (DraftKey const* const key : keys) {
        bool const hasTag = isUsable(key->tag) && tags[tagged(*key)] == 1;
        std::string id = hasTag ? tagged(*key) : idOfPath(*key);
        if (!given.insert(id).second) {
            std::size_t& number = numbers.try_emplace(id, 1).first->second;
            std::string numbered;
            do {
                numbered = id + "~" + std::to_string(++number);
            } while (!given.insert(numbered).second);
            id = std::move(numbered);
        }
        ids.push_back(std::move(id));
    }
    return ids;
}

} // namespace vex
