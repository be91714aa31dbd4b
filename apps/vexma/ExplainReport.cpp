#include "apps/vexma/ExplainReport.h"

#include "apps/vexma/Console.h"

namespace vex {

void writeExplanation(std::ostream& out, Explanation const& explanation) {
    auto const line = [&](char const* indent, std::string const& text) {
        out << indent << printable(text, false) << '\n';
    };
    for (ToldObject const& object : explanation.objects) {
        line("", describeObject(object.label));
        line("  ", object.verdict);
        for (std::string const& sentence : object.tree) {
            line("  in the tree: ", sentence);
        }
        for (ToldMention const& mention : object.mentions) {
            line("  ", mention.text);
        }
        out << '\n';
    }
    out << (explanation.views.empty() ? "no view was considered\n"
                                      : "the views of the model, for this user:\n");
    for (ToldView const& view : explanation.views) {
        line("  ", view.title + ": " + view.part);
    }
}

} // namespace vex
