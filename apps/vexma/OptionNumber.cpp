#include "apps/vexma/OptionNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

namespace vex {

namespace {

/// The number that the whole text is; nothing when it is none, or not in range.
template <class Number> std::optional<Number> numberOf(std::string const& text) {
    Number number{};
    char const* const end = text.data() + text.size();
    auto const [stop, problem] = std::from_chars(text.data(), end, number);
    return problem == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Calls `take` with a number of the target's kind; gives what that gives, and `otherwise`
/// for a target of another kind.
template <class Result, class Take>
Result withKind(OptionTarget const& target, Result otherwise, Take const& take) {
    return std::visit(
        [&](auto const into) -> Result {
            using Target = std::remove_const_t<decltype(into)>;
            if constexpr (std::is_same_v<Target, long*> || std::is_same_v<Target, std::size_t*>) {
                return take(into, *into);
            } else if constexpr (std::is_same_v<Target, std::optional<long>*>) {
                return take(into, long{});
            } else if constexpr (std::is_same_v<Target, std::optional<double>*>) {
                return take(into, double{});
            } else {
                return otherwise;
            }
        },
        target);
}

} // namespace

bool takesNumber(OptionTarget const& target) {
    return withKind(target, false, [](auto /*into*/, auto /*number*/) { return true; });
}

std::string complaintAboutNumber(OptionSyntax const& option, std::string const& text) {
    std::string const wrong = '"' + text + "\" is not ";
    return withKind(option.into, std::string(), [&](auto /*into*/, auto kind) -> std::string {
        using Number = decltype(kind);
        auto const number = numberOf<Number>(text);
        if constexpr (std::is_same_v<Number, double>) {
            bool const isRight = number && std::isfinite(*number) &&
                                 (option.isPositive ? *number > 0 : *number >= 0);
            return isRight ? ""
                           : wrong + "a number " + (option.isPositive ? "above 0" : "of 0 or more");
        } else {
            auto const least = static_cast<Number>(
                std::max<std::size_t>(option.least.value_or(0), option.isPositive ? 1 : 0));
            return number && *number >= least
                       ? ""
                       : wrong + "a whole number from " + std::to_string(least) + " to " +
                             std::to_string(std::numeric_limits<Number>::max());
        }
    });
}

void setNumber(OptionTarget const& target, std::string const& text) {
    withKind(target, false, [&](auto into, auto kind) {
        *into = *numberOf<decltype(kind)>(text);
        return true;
    });
}

} // namespace vex
