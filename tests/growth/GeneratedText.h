#pragma once

#include <cstddef>
#include <functional>
#include <string>

/// The texts for 0, 1, 2, ..., one behind the other.
inline std::string textOfEach(std::size_t count,
                              std::function<std::string(std::string const& number)> const& text) {
    std::string whole;
    for (std::size_t number = 0; number < count; ++number) {
        whole += text(std::to_string(number));
    }
    return whole;
}

inline std::string repeated(std::string const& text, std::size_t times) {
    return textOfEach(times, [&](std::string const& /*number*/) { return text; });
}
