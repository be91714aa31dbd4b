#pragma once

#include "apps/vexma/CommandSyntax.h"
#include "host/catalogue/Policy.h"
#include "host/import/xml/FileText.h"

namespace vex {

/// The options that say how long the files may be that a command reads.
class InputSizes {
public:
    void addTo(CommandSyntax& command);
    /// For a command that reads nothing but a model.
    void addModelTo(CommandSyntax& command);

    InputLimit model() const { return {m_model, "--max-model"}; }
    InputLimit catalogue() const { return {m_catalogue, "--max-catalog"}; }
    InputLimit policy() const { return {m_policy, "--max-policy"}; }

private:
    std::size_t m_model = modelLimit.bytes;
    std::size_t m_catalogue = catalogueLimit.bytes;
    std::size_t m_policy = PolicyLimits::bytes;
};

} // namespace vex
