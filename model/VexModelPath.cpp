#include "model/VexModelPath.h"

#include "provider/VexConstants.h"
#include "resources.h"

namespace {

// quirk: path-mark-cut-by-count
// The count is fixed: it does not follow the length of the mark.
constexpr int markLength = 5;

} // namespace

VexModelPath ReadModelPath(I18NString const& modelPath) {
    if (modelPath.find(resources::getString(resources::PathMark), 0) == 0) {
        return {modelPath.substring(markLength, -1), false};
    }
    static I18NString const content("/content/");
    return {modelPath, modelPath.substring(0, content.length()) != content};
}
