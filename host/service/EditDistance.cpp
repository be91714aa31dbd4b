#include "host/service/EditDistance.h"

#include "host/store/image/Budget.h"

#include <algorithm>
#include <vector>

#include <unicode/uchar.h>

namespace vex {

namespace {
constexpr std::size_t cellsOfAStep = 16; // as long as an operation of the object model
}

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
    std::size_t const tooFar = limit + 1;
    if (difference > limit) {
        return tooFar;
    }
    Budget::charge(1 + (a.size() + b.size()) / cellsOfAStep);
    std::u16string const left = foldCase(a);
    std::u16string const right = foldCase(b);
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j) {
        row[j] = std::min(j, tooFar);
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        // What lies further from the diagonal than the limit is too far anyhow.
        std::size_t const first = i > limit ? i - limit : 0;
        std::size_t const end = std::min(right.size(), i + tooFar);
        std::size_t before = row[first]; // of the row above, one to the left
        row[first] = first == 0 ? std::min(i + 1, tooFar) : tooFar;
        std::size_t least = row[first];
        for (std::size_t j = first; j < end; ++j) {
            std::size_t const above = j + 1 == i + tooFar ? tooFar : row[j + 1];
            std::size_t const exchanged = before + (left[i] == right[j] ? 0 : 1);
            before = above;
            row[j + 1] = std::min({exchanged, above + 1, row[j] + 1, tooFar});
            least = std::min(least, row[j + 1]);
        }
        if (least > limit) {
            return tooFar;
        }
        Budget::charge(1 + (end - first) / cellsOfAStep);
    }
    return std::min(row.back(), tooFar);
}

} // namespace vex
