#include "host/protocol/JsonVerification.h"

#include "host/protocol/JsonObjects.h"
#include "host/protocol/JsonText.h"

#include <algorithm>
#include <initializer_list>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json describe(ObjectLabel const& object) {
    return {{"id", object.key()}, {"class", object.className}, {"name", object.name}};
}

Json describeLeak(VerifyFinding const& leak) {
    return {{"object", describe(leak.object)},
            {"property", leak.property},
            {"reference", leak.reference},
            {"named", describe(leak.named)}};
}

Json describeContainer(VerifyFinding const& hidden) {
    return {{"object", describe(hidden.object)}, {"objects", hidden.objects}};
}

Json describeDifference(VerifyFinding const& difference) {
    return {{"object", describe(difference.object)},
            {"inTree", difference.isInTree},
            {"accessible", !difference.isInTree},
            {"cause", difference.cause},
            {"required", difference.kind != VerifyKind::Unexplained},
            {"shownPastViews", difference.kind == VerifyKind::ShownPastViews}};
}

/// The findings of the kinds; what is accepted says so.
Json listOf(std::vector<VerifyFinding> const& findings, std::initializer_list<VerifyKind> kinds,
            Json (*describeOne)(VerifyFinding const&)) {
    Json list = Json::array();
    for (VerifyFinding const& finding : findings) {
        if (std::find(kinds.begin(), kinds.end(), finding.kind) == kinds.end()) {
            continue;
        }
        Json& told = list.emplace_back(describeOne(finding));
        if (finding.isAccepted) {
            told["accepted"] = true;
        }
    }
    return list;
}

std::string const* textOf(UserVerification const& user, VerifyKind kind) {
    for (VerifyFinding const& finding : user.findings) {
        if (finding.kind == kind) {
            return &finding.text;
        }
    }
    return nullptr;
}

Json describe(UserVerification const& user) {
    Json told{{"user", user.user}};
    for (std::string const& other : user.alike) {
        told["alsoFor"].push_back(other);
    }
    if (auto const* const text = textOf(user, VerifyKind::Unfinished)) {
        told["unfinished"] = *text;
        return told;
    }
    if (auto const* const text = textOf(user, VerifyKind::NotVerified)) {
        told["notVerified"] = *text;
        return told;
    }
    auto const* const byOne = textOf(user, VerifyKind::RefusedByOne);
    if (byOne != nullptr || !user.isCompared()) {
        told["refused"] = byOne != nullptr ? "one" : "both";
        told["text"] = byOne != nullptr ? *byOne : user.refusal;
        return told;
    }
    told["objects"] = user.objects;
    told["leaks"] = listOf(user.findings, {VerifyKind::Leak}, &describeLeak);
    told["joinKeys"] = listOf(user.findings, {VerifyKind::JoinKey}, &describeLeak);
    told["hiddenContainers"] =
        listOf(user.findings, {VerifyKind::HiddenContainer}, &describeContainer);
    told["differences"] = listOf(
        user.findings, {VerifyKind::Unexplained, VerifyKind::ShownPastViews, VerifyKind::Required},
        &describeDifference);
    addNotGoneIntoAgain(told, user.notGoneIntoAgain);
    return told;
}

} // namespace

std::string toJson(Verification const& verification) {
    Json whole{{"clean", verification.isClean()},
               {"finished", verification.isFinished()},
               {"restricted", !verification.isUnrestricted()},
               {"comparedUsers", verification.comparedUsers()}};
    for (VerifyKindRow const& row : verifyKinds()) {
        whole["counts"][row.code] = verification.count(row.kind);
    }
    whole["counts"]["accepted"] = verification.accepted();
    whole["users"] = Json::array();
    for (UserVerification const& user : verification.users) {
        whole["users"].push_back(describe(user));
    }
    return toText(whole, JsonForm::Indented);
}

} // namespace vex
