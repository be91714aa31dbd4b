#include "host/insight/NearestWord.h"

#include <algorithm>
#include <array>
#include <numeric>

#include <unicode/uchar.h>

namespace vex {

namespace {

constexpr std::size_t longestWord = 64; // what is longer was not typed
constexpr std::size_t shortWord = 4;
constexpr std::size_t mostSlips = 2;

std::size_t allowedSlips(std::size_t length) {
    constexpr std::size_t tooShort = 3;
    constexpr std::size_t middling = 5;
    return length <= tooShort ? 0 : length <= middling ? 1 : mostSlips;
}

std::u16string folded(std::u16string_view text) {
    std::u16string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char16_t unit) {
        return static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    });
    return lower;
}

/// The slips between two texts; more than `mostSlips` when they are many.
std::size_t countSlips(std::u16string const& a, std::u16string const& b) {
    using Row = std::array<std::size_t, longestWord + 1>;
    Row rows[3]; // the row at hand and the two above it
    std::iota(rows[0].begin(), rows[0].end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        Row& row = rows[i % 3];
        Row const& above = rows[(i - 1) % 3];
        Row const& second = rows[(i + 1) % 3];
        row[0] = i;
        std::size_t least = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            std::size_t const wrong = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({wrong, above[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], second[j - 2] + 1);
            }
            least = std::min(least, row[j]);
        }
        if (least > mostSlips) {
            return least;
        }
    }
    return rows[a.size() % 3][b.size()];
}

/// A wrong letter makes another word of a short one: rule and role, mind and kind.
bool isOtherShortWord(std::u16string a, std::u16string b) {
    if (a.size() != b.size() || a.size() > shortWord) {
        return false;
    }
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a != b;
}

} // namespace

std::optional<std::size_t> slipsBetween(std::u16string_view word, std::u16string_view known) {
    auto const [shorter, longer] = std::minmax({word.size(), known.size()});
    std::size_t const allowed = allowedSlips(known.size());
    if (longer > longestWord || longer - shorter > allowed) {
        return std::nullopt;
    }
    std::u16string const left = folded(word);
    std::u16string const right = folded(known);
    std::size_t const slips = countSlips(left, right);
    if (slips > allowed || isOtherShortWord(left, right)) {
        return std::nullopt;
    }
    return slips;
}

I18NString const* nearestWord(I18NString const& word, std::span<I18NString const> known) {
    I18NString const* nearest = nullptr;
    std::size_t least = mostSlips + 1;
    for (I18NString const& candidate : known) {
        if (candidate == word) {
            return nullptr;
        }
        auto const slips = slipsBetween(word.view(), candidate.view());
        if (slips && *slips < least) {
            least = *slips;
            nearest = &candidate;
        }
    }
    return nearest;
}

std::string nearestWord(std::string const& word, std::span<std::string_view const> known) {
    std::vector<I18NString> words;
    for (std::string_view const each : known) {
        words.push_back(I18NString::fromUtf8(each));
    }
    I18NString const* const nearest = nearestWord(I18NString::fromUtf8(word), words);
    return nearest == nullptr ? "" : nearest->toUtf8();
}

std::string didYouMean(std::string const& word) {
    return word.empty() ? "" : "; did you mean " + word + '?';
}

} // namespace vex
