#include "host/protocol/JsonVerification.h"

#include "host/protocol/JsonObjects.h"

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
void addList(JsonStream& json, char const* member, std::vector<VerifyFinding> const& findings,
             std::initializer_list<VerifyKind> kinds, Json (*describeOne)(VerifyFinding const&)) {
    json.beginList(member);
    for (VerifyFinding const& finding : findings) {
        if (std::find(kinds.begin(), kinds.end(), finding.kind) == kinds.end()) {
            continue;
        }
        Json told = describeOne(finding);
        if (finding.isAccepted) {
            told["accepted"] = true;
        }
        json.entry(told);
    }
    json.end();
}

std::string const* textOf(UserVerification const& user, VerifyKind kind) {
    for (VerifyFinding const& finding : user.findings) {
        if (finding.kind == kind) {
            return &finding.text;
        }
    }
    return nullptr;
}

/// How many findings are counted and not listed, where there are such.
void addLeftOut(JsonStream& json, UserVerification const& user) {
    if (user.leftOut.empty()) {
        return;
    }
    std::size_t accepted = 0;
    json.beginObject("notListed");
    for (VerifyKindRow const& row : verifyKinds()) {
        auto const left = user.leftOut.find(row.kind);
        if (left != user.leftOut.end()) {
            json.member(row.code, left->second.open);
            accepted += left->second.accepted;
        }
    }
    json.member("accepted", accepted);
    json.end();
}

void addUser(JsonStream& json, UserVerification const& user) {
    json.member("user", user.user);
    addNames(json, "alsoFor", user.alike);
    if (auto const* const text = textOf(user, VerifyKind::Unfinished)) {
        json.member("unfinished", *text);
        return;
    }
    if (auto const* const text = textOf(user, VerifyKind::NotVerified)) {
        json.member("notVerified", *text);
        return;
    }
    auto const* const byOne = textOf(user, VerifyKind::RefusedByOne);
    if (byOne != nullptr || !user.isCompared()) {
        json.member("refused", byOne != nullptr ? "one" : "both");
        json.member("text", byOne != nullptr ? *byOne : user.refusal);
        return;
    }
    json.member("objects", user.objects);
    addList(json, "leaks", user.findings, {VerifyKind::Leak}, &describeLeak);
    addList(json, "joinKeys", user.findings, {VerifyKind::JoinKey}, &describeLeak);
    addList(json, "hiddenContainers", user.findings, {VerifyKind::HiddenContainer},
            &describeContainer);
    addList(json, "differences", user.findings,
            {VerifyKind::Unexplained, VerifyKind::ShownPastViews, VerifyKind::Required},
            &describeDifference);
    addLeftOut(json, user);
    addNotGoneIntoAgain(json, user.notGoneIntoAgain);
}

} // namespace

void writeJson(std::ostream& out, Verification const& verification) {
    JsonStream json(out);
    json.beginObject();
    json.member("clean", verification.isClean());
    json.member("finished", verification.isFinished());
    json.member("restricted", !verification.isUnrestricted());
    json.member("comparedUsers", verification.comparedUsers());
    json.beginObject("counts");
    for (VerifyKindRow const& row : verifyKinds()) {
        json.member(row.code, verification.count(row.kind));
    }
    json.member("accepted", verification.accepted());
    json.end();
    json.beginList("users");
    for (UserVerification const& user : verification.users) {
        json.beginObject();
        addUser(json, user);
        json.end();
    }
    json.end();
    json.end();
}

} // namespace vex
