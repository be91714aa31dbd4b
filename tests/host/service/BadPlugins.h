#pragma once

#include <string>

/// The file of a plug-in that breaks the rules; CMake says which there are.
inline std::string badPluginFile(std::string const& name) {
    return std::string(VEX_BAD_PLUGIN_DIR) + '/' + name + ".vpl";
}
