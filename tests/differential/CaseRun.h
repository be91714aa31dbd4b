#pragma once

#include "Generator.h"
#include "PluginProxy.h"

#include <cstddef>
#include <string>

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

/// Runs a case through the plug-in, as a host calls it, and through the plain
/// evaluator. "" when every call came to the same; else what differed, in full.
/// A call that takes the plain evaluator more steps than `mostSteps` is not
/// compared, nor what comes after it.
std::string compareCase(vex::PluginProxy& plugin, naive::GeneratedCase const& generated,
                        CaseTally& tally,
                        std::size_t mostSteps = naive::SessionOptions().workBudget);
