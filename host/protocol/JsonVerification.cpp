#include "host/protocol/JsonVerification.h"

#include "host/protocol/JsonObjects.h"
#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json describe(ObjectLabel const& object) {
    return {{"id", object.key()}, {"class", object.className}, {"name", object.name}};
}

Json describe(ToldLeak const& leak) {
    return {{"object", describe(leak.object)},
            {"property", leak.property},
            {"reference", leak.reference},
            {"named", describe(leak.named)}};
}

Json describe(ToldDifference const& difference) {
    return {{"object", describe(difference.object)},
            {"inTree", difference.inTree},
            {"accessible", !difference.inTree},
            {"cause", codeOf(difference.cause)},
            {"required", isRequired(difference.cause)}};
}

Json describe(UserVerification const& user);

template <class Told> Json listOf(std::vector<Told> const& told) {
    Json list = Json::array();
    for (Told const& each : told) {
        list.push_back(describe(each));
    }
    return list;
}

Json describe(UserVerification const& user) {
    if (!user.unfinished.empty()) {
        return {{"user", user.user}, {"unfinished", user.unfinished}};
    }
    if (!user.refusal.empty()) {
        return {{"user", user.user},
                {"refused", user.isRefusedByBoth ? "both" : "one"},
                {"text", user.refusal}};
    }
    Json told{{"user", user.user},
              {"objects", user.objects},
              {"leaks", listOf(user.leaks)},
              {"differences", listOf(user.differences)}};
    addNotGoneIntoAgain(told, user.notGoneIntoAgain);
    return told;
}

} // namespace

std::string toJson(Verification const& verification) {
    return toText(Json{{"clean", verification.isClean()},
                       {"finished", verification.isFinished()},
                       {"users", listOf(verification.users)}},
                  JsonForm::Indented);
}

} // namespace vex
