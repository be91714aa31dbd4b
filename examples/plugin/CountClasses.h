#pragma once

#include "I18NString.h"

#include <vector>

class VexSession;

/// What the count plug-in can do beside its action; plug-in and host both include
/// this header.
struct CountClasses {
    static constexpr char const* Id = "example.count-classes/1";

    /// The classes of the objects below the model's root, each once.
    std::vector<I18NString> (*list)(VexSession& session);
};
