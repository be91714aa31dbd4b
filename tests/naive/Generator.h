#pragma once

#include "tests/naive/GeneratorSupport.h"
#include "tests/naive/NaiveSession.h"

#include <cstdint>
#include <memory>

namespace naive {

/// One line of a session: a notification, or an action with its parameters.
struct SessionStep {
    std::optional<int> notification;
    Value action;
    std::vector<Value> in;
};

/// What a session is held on: a model, who asks and in which language, as texts.
struct GeneratedWorld {
    std::string model;
    std::shared_ptr<PlainModel const> plainModel; ///< the same, as the plain evaluator has it
    std::string catalogue;                        ///< "" when the model is given alone
    Text modelPath; ///< where the catalogue has the model; "" without one
    Text user;
    Text locale; ///< asked for; "" asks for the model's default locale
};

/// A world and one session held on it.
struct GeneratedCase {
    GeneratedWorld world;
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

/// The world that the next choices make.
GeneratedWorld generateWorld(Random& random, CaseSize size);

/// The session that the next choices make, of requests that fit the world.
std::vector<SessionStep> generateSession(Random& random, GeneratedWorld const& world,
                                         CaseSize size);

/// World and session as text, for people.
std::string described(GeneratedWorld const& world, std::vector<SessionStep> const& steps);

} // namespace naive
