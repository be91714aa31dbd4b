#include "apps/vexma/ExplainReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/ExpansionNote.h"
#include "apps/vexma/TextColours.h"

#include <algorithm>

namespace vex {

void writeExplanation(std::ostream& out, Explanation const& explanation, bool colour) {
    TextColours const& colours = textColours(colour);
    constexpr std::size_t mostWays = 20;
    auto const line = [&](char const* indent, std::string const& text, char const* style = "") {
        out << indent << style << printable(text, false) << (*style == '\0' ? "" : colours.end)
            << '\n';
    };
    for (ToldObject const& object : explanation.objects) {
        line("", describeObject(object.label), colours.name);
        line("  ", object.verdict, object.accessible ? colours.good : colours.bad);
        std::size_t const shown = std::min(mostWays, object.tree.size());
        for (std::size_t number = 0; number < shown; ++number) {
            line("  in the tree: ", object.tree[number]);
        }
        if (shown < object.tree.size()) {
            line("  ",
                 "and " + std::to_string(object.tree.size() - shown) + " more; --json has them");
        }
        for (ToldMention const& mention : object.mentions) {
            line("  ", mention.text);
        }
        for (std::string const& rule : object.rules) {
            line("  by the policy, ", rule);
        }
        out << '\n';
    }
    out << (explanation.views.empty() ? "no view was considered\n"
                                      : "the views of the model, for this user:\n");
    for (ToldView const& view : explanation.views) {
        line("  ", view.title + ": " + view.part, view.inForce ? "" : colours.detail);
    }
    if (std::string const note = expansionNote(explanation.notGoneIntoAgain); !note.empty()) {
        out << '\n';
        line("", note);
    }
}

} // namespace vex
