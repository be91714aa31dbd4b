#pragma once

#include "apps/vexma/Workplace.h"
#include "host/insight/AnsweredTree.h"

#include <optional>

namespace vex {

/// The trees from all namespaces that a request can start at, one after the
/// other, with what stands behind shortcuts.
struct ModelTrees {
    AnsweredTree objects;
    std::optional<CallEnd> refusal; // of the first tree that was not answered
};
ModelTrees askForTrees(Workplace& workplace, I18NString const& view = {});

/// One tree.
struct TreeAnswer {
    AnsweredTree objects;
    CallEnd end;
};
TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question);

} // namespace vex
