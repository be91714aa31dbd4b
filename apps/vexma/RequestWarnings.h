#pragma once

#include "apps/vexma/CommandSyntax.h"
#include "apps/vexma/Console.h"

#include <string>
#include <vector>

namespace vex {

/// The option that takes a doubtful request for a refused one.
class StrictOption {
public:
    void addTo(CommandSyntax& command);
    bool isGiven() const { return m_isGiven; }

private:
    bool m_isGiven = false;
};

/// What is doubtful about a request that is answered all the same: collected while a
/// command works, told when it ends.
class RequestWarnings {
public:
    explicit RequestWarnings(StrictOption const& strict) : m_isStrict(strict.isGiven()) {}

    /// A sentence without its end, UTF-8: "the option \"Dept\" means nothing". It must
    /// name nothing that the user may not see. One that was added before is told once.
    void add(std::string text);

    /// Complains about each, in the order of adding. Gives the status to end with:
    /// `status`, or `Refused` where warnings are errors and it was `Done`.
    int finish(Console& console, int status) const;

private:
    bool m_isStrict;
    std::vector<std::string> m_texts;
};

} // namespace vex
