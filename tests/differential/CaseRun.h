#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/service/HostSession.h"
#include "host/service/PluginProxy.h"
#include "tests/naive/Generator.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What a run of cases came to, call by call.
struct CaseTally {
    std::size_t calls = 0;
    std::size_t trees = 0;      // metadata requests that wrote at least one object
    std::size_t raised = 0;     // ended by a failure, the same one on both sides
    std::size_t shortcuts = 0;  // requests on models with shortcuts
    std::size_t restricted = 0; // requests of a catalogue's user
    std::size_t references = 0; // requests that start at a reference
    std::size_t givenUp = 0;    // too large for the plain evaluator, not compared
};

/// A world as both sides have it, read once for any number of sessions.
class LoadedWorld {
public:
    /// Raises `std::runtime_error` when the host refuses the catalogue.
    explicit LoadedWorld(naive::GeneratedWorld generated);

    naive::GeneratedWorld const& Generated() const { return m_generated; }

    /// From now on the model has no set of ids ready that nobody has asked for yet: the
    /// plug-in reads what the views list.
    void useUpRoomForSets() const;

    vex::HostSession openSession() const;
    naive::NaiveSession OpenPlainSession(std::size_t mostSteps) const;

private:
    naive::GeneratedWorld m_generated;
    std::shared_ptr<vex::Model const> m_model;
    std::shared_ptr<vex::Catalogue const> m_catalogue;
    std::optional<naive::PlainCatalogue> m_plainCatalogue;
};

/// Runs a session through the plug-in, as a host calls it, and through the plain
/// evaluator. "" when every call came to the same; else what differed, in full.
/// A call that takes the plain evaluator more steps than `mostSteps` is not
/// compared, nor what comes after it.
std::string compareSession(vex::PluginProxy& plugin, LoadedWorld const& world,
                           std::vector<naive::SessionStep> const& steps, CaseTally& tally,
                           std::size_t mostSteps = naive::SessionOptions().workBudget);
