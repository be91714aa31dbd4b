#pragma once

#include "tests/apps/vexma/ToolRun.h"

/// Runs a command on the sample model, as a user of its catalogue.
inline ToolResult runOnSample(std::string const& command, std::string const& user,
                              std::vector<std::string> const& more = {}) {
    std::string const samples = std::string(VEX_SOURCE_DIR) + "/samples/";
    std::vector<std::string> arguments{command, "--catalog", samples + "retail.catalog.xml",
                                       "--model", "/content/retail"};
    if (!user.empty()) {
        arguments.insert(arguments.end(), {"--user", user});
    }
    arguments.insert(arguments.end(), more.begin(), more.end());
    return ToolFolder().Run(arguments);
}
