#include "apps/vexma/InputSizes.h"

namespace vex {

void InputSizes::addModelTo(CommandSyntax& command) {
    command.add({.name = "--max-model",
                 .into = &m_model,
                 .help = "Bytes that a model file may have",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
}

void InputSizes::addTo(CommandSyntax& command) {
    addModelTo(command);
    command.add({.name = "--max-catalog",
                 .into = &m_catalogue,
                 .help = "Bytes that a catalogue may have",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
    command.add({.name = "--max-policy",
                 .into = &m_policy,
                 .help = "Bytes that a policy may have",
                 .word = "N",
                 .group = "Limits",
                 .showsDefault = true,
                 .isPositive = true});
}

} // namespace vex
