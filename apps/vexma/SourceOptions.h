#pragma once

#include "apps/vexma/CommandSyntax.h"
#include "apps/vexma/InputSizes.h"
#include "host/service/ActionCall.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace vex {

/// The command line asks for something that cannot be; the text says what to
/// write instead.
class UsageException final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The options that say where a command reads from and for whom, the same for
/// every command that calls the plug-in.
struct SourceOptions {
    std::string modelFile; // alone, or
    std::string catalogFile;
    std::string modelPath;
    std::string user;
    std::string replacingFile;    // is read in the place of the catalogue's, when given
    bool forAllUsers = false;     // no user needs to be given
    bool keepPositions = false;   // of the model's elements
    bool keepPolicyTrace = false; // what the rules of its policy meant

    std::string locale;
    std::string pluginFile;
    bool verbose = false;
    bool noCache = false; // of images
    bool trace = false;   // the plug-in's trace is shown
    InputSizes sizes;
    KRLIDOM_Limits response;
    std::optional<double> deadlineSeconds;

    void addTo(CommandSyntax& command);
    /// The one alone that says that documents are read.
    void addCacheTo(CommandSyntax& command);
    /// Those alone that say what may be used up.
    void addLimitsTo(CommandSyntax& command);
    /// The place of the model file among the positional arguments.
    void addModelFileTo(CommandSyntax& command);

    /// Raises `UsageException` unless they name one source.
    void check() const;
};

/// How long a request document may be.
struct RequestSize {
    std::size_t bytes = 1U << 20U;

    void addTo(CommandSyntax& command);
    InputLimit limit() const { return {bytes, "--max-request"}; }
};

} // namespace vex
