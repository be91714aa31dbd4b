#include "apps/vexma/VerifyReport.h"

#include "apps/vexma/Console.h"
#include "apps/vexma/ExpansionNote.h"

#include <algorithm>

namespace vex {

namespace {

std::string counted(std::size_t count, char const* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void writeUser(std::ostream& out, UserVerification const& user) {
    auto const line = [&](std::string const& text) { out << printable(text, false) << '\n'; };
    std::string const who = user.user.empty() ? "everybody" : user.user;
    if (!user.unfinished.empty()) {
        line(who + ": not finished, so nothing is known: " + user.unfinished);
        return;
    }
    if (!user.refusal.empty()) {
        line(who +
             (user.isRefusedByBoth ? ": every request is refused: "
                                   : ": tree and check differ, one is refused: ") +
             user.refusal);
        return;
    }
    line(who + ": " + counted(user.objects, "object") + " compared, " +
         counted(user.unexplainedDifferences(), "unexplained difference") + ", " +
         std::to_string(user.requiredDifferences()) + " required, " +
         counted(user.leaks.size(), "leak"));
    if (std::string const note = expansionNote(user.notGoneIntoAgain); !note.empty()) {
        line("  " + note);
    }
    for (ToldLeak const& leak : user.leaks) {
        line("  leak: the " + describeObject(leak.object) + " names " + leak.reference +
             " in its " + leak.property + ", and the " + describeObject(leak.named) + " is hidden");
    }
    for (ToldDifference const& difference : user.differences) {
        line(std::string(isRequired(difference.cause) ? "  required: " : "  unexplained: ") +
             (difference.inTree ? "in the tree, not accessible: "
                                : "accessible, not in the tree: ") +
             describeObject(difference.object) + ": " + textOf(difference.cause));
    }
}

} // namespace

void writeVerification(std::ostream& out, Verification const& verification) {
    std::size_t leaks = 0;
    std::size_t unexplained = 0;
    for (UserVerification const& user : verification.users) {
        writeUser(out, user);
        leaks += user.leaks.size();
        unexplained += user.unexplainedDifferences();
    }
    auto const compared = static_cast<std::size_t>(
        std::count_if(verification.users.begin(), verification.users.end(),
                      [](UserVerification const& user) { return user.isCompared(); }));
    if (!verification.isFinished()) {
        out << "not finished: compared for " << compared << " of "
            << counted(verification.users.size(), "user") << '\n';
    }
    if (compared != 0) {
        out << counted(leaks, "leak") << ", " << counted(unexplained, "unexplained difference")
            << '\n';
    }
}

} // namespace vex
