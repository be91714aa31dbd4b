#pragma once

#include "NaiveSession.h"

#include <cstdint>
#include <memory>
#include <span>

namespace naive {

/// One line of a session: a notification, or an action with its parameters.
struct SessionStep {
    std::optional<int> notification;
    Value action;
    std::vector<Value> in;
};

/// A model, who asks, and what is asked, all as texts.
struct GeneratedCase {
    std::uint64_t seed = 0;
    std::string model;
    std::shared_ptr<const PlainModel> plainModel; ///< the same, as the plain evaluator has it
    std::string catalogue;                        ///< "" when the model is given alone
    Text modelPath; ///< where the catalogue has the model; "" without one
    Text user;
    Text locale; ///< asked for; "" asks for the model's default locale
    std::vector<SessionStep> steps;
};

/// The most that a case holds.
struct CaseSize {
    int objects = 60;
    int requests = 6;
    int checks = 12; ///< accessibility requests in a session of those
};

/// The same seed gives the same case, on every machine.
GeneratedCase generateCase(std::uint64_t seed);

/// The case that these choices make; the same ones give the same case.
GeneratedCase generateCase(std::span<const std::uint8_t> choices, CaseSize size);

/// The case as text, for people.
std::string described(const GeneratedCase& generated);

} // namespace naive
