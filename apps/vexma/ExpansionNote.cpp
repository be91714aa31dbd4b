#include "apps/vexma/ExpansionNote.h"

#include <algorithm>

namespace vex {

std::string expansionNote(std::vector<ObjectLabel> const& notGoneIntoAgain) {
    constexpr std::size_t named = 3;
    if (notGoneIntoAgain.empty()) {
        return {};
    }
    std::string text = "shortcuts lead to the same objects in too many ways to go all of them: "
                       "what stands behind a shortcut was gone into once. Not gone into again: ";
    for (std::size_t index = 0; index < std::min(named, notGoneIntoAgain.size()); ++index) {
        text += (index == 0 ? "the " : ", the ") + describeObject(notGoneIntoAgain[index]);
    }
    return notGoneIntoAgain.size() <= named
               ? text
               : text + " and " + std::to_string(notGoneIntoAgain.size() - named) + " more";
}

} // namespace vex
