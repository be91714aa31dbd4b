#pragma once

#include "host/service/Service.h"

#include <string>

/// A caller with a model text, and the plug-in.
class HostileSession {
public:
    /// With a catalogue, the user "ann" asks on the path "/content/m"; without,
    /// nobody is restricted.
    explicit HostileSession(std::string const& model, std::string const& catalogue = "");

    /// Limits of the calls that follow.
    vex::ActionLimits limits;

    vex::MetadataAnswer call(std::string const& request);
    /// The response as text; ends the test when the call did not return.
    std::string ask(std::string const& request);
    /// What the host or the plug-in says when it refuses; "answered" otherwise.
    std::string complaint(std::string const& request);
    bool isIncluded(char const* id);

private:
    static vex::Service& service();

    vex::Visit m_visit;
};

/// `text` so many times in a row.
std::string repeated(std::string const& text, std::size_t count);

/// How large a test makes its model: `usual`, or the number in the environment
/// variable VEX_HOSTILE_SIZE.
std::size_t hostileSize(std::size_t usual);
