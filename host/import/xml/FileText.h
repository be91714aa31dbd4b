#pragma once

#include <cstddef>
#include <string>

namespace vex {

/// How long an input may be, and the option that changes it; "" where there is none.
struct InputLimit {
    constexpr InputLimit(std::size_t most, char const* raisedBy = "")
        : bytes(most), option(raisedBy) {}

    std::size_t bytes;
    char const* option;

    /// What is wrong with an input that is longer, for people.
    std::string problem() const;
};

/// @{
/// How long models and catalogues may be unless somebody says otherwise.
constexpr InputLimit modelLimit{std::size_t{1} << 30U};
constexpr InputLimit catalogueLimit{std::size_t{64} << 20U};
/// @}

/// The whole text of a file; "-" reads standard input. Raises
/// `KRLDocumentException` when it cannot be read or is longer than the limit; what is
/// longer is read no further.
std::string readFileText(std::string const& file, InputLimit const& limit = modelLimit);

} // namespace vex
