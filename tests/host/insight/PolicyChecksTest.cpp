#include "host/insight/ModelChecks.h"

#include <gtest/gtest.h>

namespace {

/// The views that no user may use, by the place of their keys.
std::string unused(std::string const& policyText, std::string const& user = "") {
    vex::Catalogue catalogue;
    catalogue.models.emplace_back();
    vex::PolicyApplication(catalogue).apply(catalogue.models.front(),
                                            vex::readPolicyText(policyText, "p.yaml"));
    if (!user.empty()) {
        catalogue.users.push_back({"zoe", {I18NString::fromUtf8(user)}});
    }
    vex::Diagnostics found;
    std::string const name = "c.xml";
    vex::CatalogueFindings findings(name, found);
    vex::GrantCheck(catalogue, findings).checkPolicy(catalogue.models.front());
    std::string places;
    for (vex::Diagnostic const& each : found) {
        EXPECT_EQ(each.rule, "policy-view-without-user");
        places += each.file + ':' + std::to_string(each.line) + ' ';
    }
    return places;
}

TEST(PolicyChecks, FindViewsThatMatterToNobody) {
    std::string const views = "views:\n  a: {include: '**'}\n  b: {include: '**'}\n";
    EXPECT_EQ(unused(views), "p.yaml:2 p.yaml:3 ");
    EXPECT_EQ(unused(views + "roles: {r: [a, b]}\n"), "p.yaml:2 p.yaml:3 ");
    EXPECT_EQ(unused(views + "roles: {r: [b]}\nusers: {ann: r}"), "p.yaml:2 ");
    EXPECT_EQ(unused(views + "roles: {r: [a, b]}\n", "r"), "");
}

TEST(PolicyChecks, KnowThatADefaultViewCountsForEverybody) {
    EXPECT_EQ(unused("views: {d: {roleBased: true, exclude: '**'}}"), "");
    EXPECT_EQ(unused("views: {d: {roleBased: true, members: r, exclude: '**'}}"), "p.yaml:1 ");
}

} // namespace
