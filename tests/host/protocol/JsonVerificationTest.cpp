#include "host/protocol/JsonVerification.h"

#include "tests/host/protocol/WrittenText.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using vex::VerifyFinding;
using vex::VerifyKind;

vex::UserVerification annWith(std::vector<VerifyFinding> findings) {
    vex::UserVerification user;
    user.user = "ann";
    user.objects = 628;
    user.findings = std::move(findings);
    return user;
}

vex::Verification of(std::vector<vex::UserVerification> users) {
    return {"retail.model.xml", std::move(users), {}};
}

json toldOf(vex::Verification const& verification) {
    return json::parse(jsonOf(verification));
}

VerifyFinding leakOf(VerifyKind kind) {
    return {.kind = kind,
            .object = {"f", "[S].[F]", "filter", "Lines", {7, 9}},
            .property = "expression",
            .reference = "[S].[Cost]",
            .named = {"", "[S].[Cost]", "queryItem", "Cost"},
            .text = "the filter names what is hidden"};
}

TEST(JsonVerification, IsCleanWhenNothingWasFound) {
    EXPECT_EQ(toldOf(of({annWith({})})), json::parse(R"({
  "clean": true, "finished": true, "restricted": true, "comparedUsers": 1,
  "counts": {"leak": 0, "unexplained": 0, "refused-by-one": 0, "not-verified": 0, "unfinished": 0,
             "shown-past-views": 0, "unrestricted": 0, "nobody-compared": 0, "join-key": 0,
             "hidden-container": 0, "required": 0, "accepted": 0},
  "users": [{"user": "ann", "objects": 628, "leaks": [], "joinKeys": [],
             "hiddenContainers": [], "differences": []}]
})"));
}

TEST(JsonVerification, TellsALeakByTheObjectTheTextAndWhatItNames) {
    json const told = toldOf(of({annWith({leakOf(VerifyKind::Leak)})}));
    EXPECT_EQ(told.at("clean"), false);
    EXPECT_EQ(told.at("counts").at("leak"), 1);
    EXPECT_EQ(told.at("users")[0].at("leaks"), json::parse(R"([{
        "object": {"id": "f", "class": "filter", "name": "Lines"},
        "property": "expression", "reference": "[S].[Cost]",
        "named": {"id": "[S].[Cost]", "class": "queryItem", "name": "Cost"}}])"));
    json const key = toldOf(of({annWith({leakOf(VerifyKind::JoinKey)})}));
    EXPECT_EQ(key.at("clean"), true);
    EXPECT_EQ(key.at("users")[0].at("leaks").size(), 0U);
    EXPECT_EQ(key.at("users")[0].at("joinKeys").size(), 1U);
}

TEST(JsonVerification, TellsWhichDifferencesAreRequiredAndWhichShowMore) {
    auto const difference = [](VerifyKind kind, char const* cause, bool inTree) {
        VerifyFinding finding{.kind = kind, .object = {"n", "[S]", "namespace", "S"}};
        finding.cause = cause;
        finding.isInTree = inTree;
        return finding;
    };
    json const told =
        toldOf(of({annWith({difference(VerifyKind::ShownPastViews, "start", true),
                            difference(VerifyKind::Unexplained, "unexplained", false)})}));
    EXPECT_EQ(told.at("users")[0].at("differences"), json::parse(R"([
        {"object": {"id": "n", "class": "namespace", "name": "S"}, "inTree": true,
         "accessible": false, "cause": "start", "required": true, "shownPastViews": true},
        {"object": {"id": "n", "class": "namespace", "name": "S"}, "inTree": false,
         "accessible": true, "cause": "unexplained", "required": false,
         "shownPastViews": false}])"));
}

TEST(JsonVerification, IsNotCleanWhenNobodyWasCompared) {
    EXPECT_EQ(toldOf(of({vex::tellRefusal("nora", "No view.")})).at("clean"), false);
    EXPECT_EQ(toldOf(of({annWith({}), vex::tellNotVerified("dan", "code 77")})).at("clean"), false);
    EXPECT_EQ(toldOf(of({annWith({}), vex::tellRefusal("nora", "No view.")})).at("clean"), true);
}

TEST(JsonVerification, TellsTheHiddenContainersThatPathsName) {
    json const told = toldOf(of({annWith({{.kind = VerifyKind::HiddenContainer,
                                           .object = {"f", "[S].[F]", "folder", "Facts"},
                                           .objects = 3}})}));
    EXPECT_EQ(told.at("clean"), true);
    EXPECT_EQ(told.at("counts").at("hidden-container"), 1);
    EXPECT_EQ(told.at("users")[0].at("hiddenContainers"), json::parse(R"([
        {"object": {"id": "f", "class": "folder", "name": "Facts"}, "objects": 3}])"));
}

TEST(JsonVerification, TellsWhetherBothOrOneOfTreesAndCheckAreRefused) {
    json const users =
        toldOf(
            of({vex::tellRefusal("nora", "No view."), vex::tellRefusalByOne("ben", "No role."),
                vex::tellUnfinished("cid", "too large"), vex::tellNotVerified("dan", "code 77")}))
            .at("users");
    EXPECT_EQ(users[0], json::parse(R"({"user": "nora", "refused": "both", "text": "No view."})"));
    EXPECT_EQ(users[1].at("refused"), "one");
    EXPECT_EQ(users[2].at("unfinished"), "not finished, so nothing is known: too large");
    EXPECT_EQ(users[3].at("notVerified"), "not verified, so nothing is known: code 77");
}

TEST(JsonVerification, TellsWhatIsAcceptedAndForWhomElseItHolds) {
    vex::UserVerification user = annWith({leakOf(VerifyKind::Leak)});
    user.findings[0].isAccepted = true;
    user.alike = {"bea"};
    json const told = toldOf(of({user}));
    EXPECT_EQ(told.at("clean"), true);
    EXPECT_EQ(told.at("counts").at("accepted"), 1);
    EXPECT_EQ(told.at("comparedUsers"), 2);
    EXPECT_EQ(told.at("users")[0].at("alsoFor"), json::parse(R"(["bea"])"));
    EXPECT_EQ(told.at("users")[0].at("leaks")[0].at("accepted"), true);
}

TEST(SarifVerification, WeighsEachKindByWhatItComesTo) {
    json const run = json::parse(sarifLogOf(of({annWith({{.kind = VerifyKind::HiddenContainer}}),
                                                vex::tellNotVerified("dan", "code 77")}),
                                            "1.2.3"))
                         .at("runs")[0];
    EXPECT_EQ(run.at("results")[0].at("ruleId"), "hidden-container");
    EXPECT_EQ(run.at("results")[0].at("level"), "note");
    EXPECT_EQ(run.at("results")[1].at("ruleId"), "not-verified");
    EXPECT_EQ(run.at("results")[1].at("level"), "error");
}

TEST(SarifVerification, HasAResultForEachFindingWhereItsObjectStands) {
    vex::UserVerification user = annWith({leakOf(VerifyKind::Leak), leakOf(VerifyKind::JoinKey)});
    user.findings[1].isAccepted = true;
    json const run = json::parse(sarifLogOf(of({user}), "1.2.3")).at("runs")[0];
    json const& leak = run.at("results")[0];
    EXPECT_EQ(leak.at("ruleId"), "leak");
    EXPECT_EQ(leak.at("level"), "error");
    EXPECT_EQ(leak.at("message").at("text"), "ann: the filter names what is hidden");
    json const& place = leak.at("locations")[0].at("physicalLocation");
    EXPECT_EQ(place.at("artifactLocation").at("uri"), "retail.model.xml");
    EXPECT_EQ(place.at("region").at("startLine"), 7);
    EXPECT_EQ(leak.at("properties").at("users"), json::parse(R"(["ann"])"));
    EXPECT_FALSE(leak.contains("suppressions"));
    EXPECT_TRUE(run.at("results")[1].contains("suppressions"));
    std::size_t const rule = leak.at("ruleIndex");
    EXPECT_EQ(run.at("tool").at("driver").at("rules")[rule].at("id"), "leak");
}

} // namespace
