#include "host/service/EditDistance.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include <unicode/uchar.h>

namespace vex {

std::u16string foldCase(std::u16string_view text) {
    std::u16string folded;
    folded.reserve(text.size());
    for (char16_t const unit : text) {
        folded += static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    }
    return folded;
}

std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit) {
    std::size_t const difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    if (difference > limit) {
        return limit + 1;
    }
    std::u16string const left = foldCase(a);
    std::u16string const right = foldCase(b);
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t before = row[0]; // of the row above, one to the left
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            std::size_t const above = row[j + 1];
            std::size_t const exchanged = before + (left[i] == right[j] ? 0 : 1);
            row[j + 1] = std::min({exchanged, above + 1, row[j] + 1});
            before = above;
        }
        if (*std::min_element(row.begin(), row.end()) > limit) {
            return limit + 1;
        }
    }
    return std::min(row.back(), limit + 1);
}

} // namespace vex
