#pragma once

#include "Vex_Handle_Collection.h"
#include "apps/vexma/SourceOptions.h"
#include "host/service/NameSuggestion.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// Objects named on a command line, ids or references, behind a MODEL.xml when
/// there is no catalogue.
class ObjectArguments {
public:
    /// Takes the arguments that the options left over: a list option would take
    /// a text in brackets apart. Raises `UsageException` when no object is
    /// among them.
    ObjectArguments(std::vector<std::string> arguments, SourceOptions& source);

    std::vector<std::string> const& texts() const { return m_texts; }
    /// Raises `HostException` for the first one that names nothing; what that suggests
    /// may be named.
    Vex_Handle_Collection findIn(Model const& model, MayBeNamed const& mayBeNamed = {}) const;

private:
    std::vector<std::string> m_texts;
};

} // namespace vex
