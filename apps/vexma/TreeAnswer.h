#pragma once

#include "apps/vexma/Workplace.h"
#include "host/insight/AnsweredTree.h"

#include <optional>

namespace vex {

/// The trees from all namespaces that a request can start at, one after the
/// other, with what stands behind shortcuts: by every way that leads there, or, where
/// the ways multiply beyond a few times the model, once (`TreeExtent`).
struct ModelTrees {
    AnsweredTree objects;
    std::optional<CallEnd> refusal{}; // of the first tree that was not answered
};

/// As the plug-in reports them; no answer is built.
ModelTrees askForTrees(Workplace& workplace, I18NString const& view = {});
/// As the answers show them: each is matched with the model (`matchAnswer`), so that
/// the plug-in's own word is not needed. Where the ways multiply, the answers are
/// those of the extension that can leave out what was gone into.
ModelTrees matchTrees(Workplace& workplace);

/// One tree, as the plug-in reports it; at the object with that id or reference unless
/// that is "".
struct TreeAnswer {
    AnsweredTree objects;
    CallEnd end;
};
TreeAnswer askForTree(Workplace& workplace, TreeQuestion const& question, I18NString const& id);

} // namespace vex
