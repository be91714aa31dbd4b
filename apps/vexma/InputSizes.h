#pragma once

#include "apps/vexma/CommandSyntax.h"
#include "host/import/xml/FileText.h"

namespace vex {

/// The options that say how long the files may be that a command reads.
class InputSizes {
public:
    void addTo(CommandSyntax& command);

    InputLimit model() const { return {m_model, "--max-model"}; }
    InputLimit catalogue() const { return {m_catalogue, "--max-catalog"}; }

private:
    std::size_t m_model = modelLimit.bytes;
    std::size_t m_catalogue = catalogueLimit.bytes;
};

} // namespace vex
