#include "security/VexAccessDecision.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using Reason = VexAccessReason;

// One row: what is in force, in which lists the id stands, and the verdict.
// Lists: v views, i role included, x role excluded, h role hidden, d excluded
// by the default view.
struct Row {
    bool enforced;
    bool roleBased;
    bool defaultView;
    bool skip;
    char const* lists;
    bool included;
    Reason reason;
};

constexpr bool on = true;
constexpr bool no = false;

Row const rows[] = {
    {no, no, no, no, "", true, Reason::Unrestricted},
    {no, on, on, no, "xhd", true, Reason::Unrestricted},
    {no, on, no, on, "h", true, Reason::Unrestricted},

    {on, no, no, no, "", false, Reason::NotInViews},
    {on, on, no, no, "i", false, Reason::NotInViews},
    {on, on, on, no, "i", false, Reason::NotInViews},
    {on, on, on, no, "", false, Reason::NotInViews},

    {on, no, no, no, "v", true, Reason::NoRoleBasedViews},
    {on, no, no, no, "vxhd", true, Reason::NoRoleBasedViews},
    {on, no, no, on, "", true, Reason::NoRoleBasedViews},
    {on, no, no, on, "xhd", true, Reason::NoRoleBasedViews},

    {on, on, on, no, "vi", true, Reason::RoleIncludes},
    {on, on, on, no, "vix", true, Reason::RoleIncludes},
    {on, on, on, no, "vid", true, Reason::RoleIncludes},
    {on, on, on, no, "vixhd", true, Reason::RoleIncludes},
    {on, on, on, on, "i", true, Reason::RoleIncludes},
    {on, on, on, no, "vx", false, Reason::RoleExcludes},
    {on, on, on, no, "vxd", false, Reason::RoleExcludes},
    {on, on, on, on, "x", false, Reason::RoleExcludes},
    {on, on, on, no, "vd", false, Reason::DefaultExcludes},
    {on, on, on, on, "d", false, Reason::DefaultExcludes},
    {on, on, on, no, "vhd", false, Reason::DefaultExcludes},
    {on, on, on, no, "v", true, Reason::DefaultAllows},
    {on, on, on, on, "", true, Reason::DefaultAllows},

    {on, on, no, no, "vh", false, Reason::RoleHides},
    {on, on, no, no, "vih", false, Reason::RoleHides},
    {on, on, no, on, "ih", false, Reason::RoleHides},
    {on, on, no, no, "vi", true, Reason::RoleIncludes},
    {on, on, no, on, "i", true, Reason::RoleIncludes},
    {on, on, no, no, "v", false, Reason::RoleDoesNotInclude},
    {on, on, no, on, "", false, Reason::RoleDoesNotInclude},
    {on, on, no, no, "vd", false, Reason::RoleDoesNotInclude},
};

struct Lists {
    explicit Lists(std::string const& holding) {
        fill(included, 'v', holding);
        fill(roleIncluded, 'i', holding);
        fill(roleExcluded, 'x', holding);
        fill(roleHidden, 'h', holding);
        fill(defaultExcluded, 'd', holding);
    }
    static void fill(VexIdList& list, char letter, std::string const& holding) {
        list.insert(u"other");
        if (holding.find(letter) != std::string::npos) {
            list.insert(u"id");
        }
    }

    VexIdList included;
    VexIdList roleIncluded;
    VexIdList roleExcluded;
    VexIdList roleHidden;
    VexIdList defaultExcluded;
};

VexAccessVerdict decide(bool enforced, bool roleBased, bool defaultView, bool skip,
                        std::string const& holding) {
    Lists const lists(holding);
    VexAccessFacts const facts{
        enforced,           roleBased,          defaultView,      lists.included,
        lists.roleIncluded, lists.roleExcluded, lists.roleHidden, lists.defaultExcluded};
    return DecideAccess(facts, "id", skip);
}

} // namespace

TEST(VexAccessDecision, EveryRuleDecidesInItsPlace) {
    for (Row const& row : rows) {
        VexAccessVerdict const verdict =
            decide(row.enforced, row.roleBased, row.defaultView, row.skip, row.lists);
        std::size_t const number = static_cast<std::size_t>(&row - rows);
        EXPECT_EQ(verdict.included, row.included) << "row " << number;
        EXPECT_EQ(verdict.reason, row.reason) << "row " << number;
    }
}

TEST(VexAccessDecision, TheRowsReachEveryRule) {
    std::set<Reason> reached;
    for (Row const& row : rows) {
        reached.insert(row.reason);
    }
    EXPECT_EQ(reached.size(), static_cast<std::size_t>(Reason::RoleDoesNotInclude) + 1);
}

// covers quirk: role-branches-asymmetric
TEST(VexAccessDecision, HiddenIdsOfARoleDoNotCountUnderADefaultView) {
    EXPECT_TRUE(decide(on, on, on, no, "vh").included);
    EXPECT_TRUE(decide(on, on, on, no, "vih").included);
    EXPECT_FALSE(decide(on, on, no, no, "vih").included);
}

TEST(VexAccessDecision, ExcludedIdsOfARoleDoNotCountWithoutADefaultView) {
    EXPECT_TRUE(decide(on, on, no, no, "vix").included);
    EXPECT_FALSE(decide(on, on, on, no, "vx").included);
}

TEST(VexAccessDecision, AllCombinationsFollowTheRulesInOrder) {
    for (unsigned bits = 0; bits < 512; ++bits) {
        auto const bit = [bits](unsigned place) { return (bits >> place & 1U) != 0; };
        std::string holding;
        for (unsigned place = 0; place < 5; ++place) {
            holding += bit(place) ? "vixhd"[place] : ' ';
        }
        bool const v = bit(0);
        bool const i = bit(1);
        bool const x = bit(2);
        bool const h = bit(3);
        bool const d = bit(4);
        bool const enforced = bit(5);
        bool const roleBased = bit(6);
        bool const defaultView = bit(7);
        bool const skip = bit(8);
        bool const byRole = defaultView ? i || (!x && !d) : i && !h;
        bool const expected = !enforced || ((v || skip) && (!roleBased || byRole));
        EXPECT_EQ(decide(enforced, roleBased, defaultView, skip, holding).included, expected)
            << bits;
    }
}
