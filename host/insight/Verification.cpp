#include "host/insight/Verification.h"

#include <algorithm>

namespace vex {

std::size_t UserVerification::requiredDifferences() const {
    return static_cast<std::size_t>(
        std::count_if(differences.begin(), differences.end(),
                      [](ToldDifference const& each) { return isRequired(each.cause); }));
}

std::size_t UserVerification::unexplainedDifferences() const {
    return differences.size() - requiredDifferences();
}

bool UserVerification::isClean() const {
    return unfinished.empty() && (refusal.empty() || isRefusedByBoth) && leaks.empty() &&
           unexplainedDifferences() == 0;
}

bool Verification::isClean() const {
    return std::all_of(users.begin(), users.end(),
                       [](UserVerification const& user) { return user.isClean(); });
}

bool Verification::isFinished() const {
    return std::all_of(users.begin(), users.end(),
                       [](UserVerification const& user) { return user.unfinished.empty(); });
}

UserVerification tellCheck(std::string user, TreeCheck const& check, Model const& model,
                           I18NLocale const& locale) {
    auto const label = [&](VEX_HANDLE object) { return labelOf(model, object, locale); };
    UserVerification told;
    told.user = std::move(user);
    told.objects = check.objects;
    for (Leak const& leak : check.leaks) {
        told.leaks.push_back({label(leak.object), leak.property.toUtf8(), leak.reference.toUtf8(),
                              label(leak.named)});
    }
    for (TreeDifference const& difference : check.differences) {
        told.differences.push_back({label(difference.object), difference.inTree, difference.cause});
    }
    return told;
}

UserVerification tellUnfinished(std::string user, std::string text) {
    UserVerification told;
    told.user = std::move(user);
    told.unfinished = std::move(text);
    return told;
}

UserVerification tellRefusal(std::string user, bool both, std::string text) {
    UserVerification told;
    told.user = std::move(user);
    told.refusal = std::move(text);
    told.isRefusedByBoth = both;
    return told;
}

} // namespace vex
