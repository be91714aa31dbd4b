#include "apps/vexma/VerifyReport.h"

#include "apps/vexma/Console.h"

namespace vex {

namespace {

std::string counted(std::size_t count, char const* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void writeUser(std::ostream& out, UserVerification const& user) {
    auto const line = [&](std::string const& text) { out << printable(text, false) << '\n'; };
    std::string const who = user.user.empty() ? "everybody" : user.user;
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
    out << counted(leaks, "leak") << ", " << counted(unexplained, "unexplained difference") << '\n';
}

} // namespace vex
