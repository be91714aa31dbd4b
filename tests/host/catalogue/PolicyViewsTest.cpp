#include "host/catalogue/PolicyViews.h"

#include "VexObject.h"
#include "host/import/xml/ModelLoader.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace {

using vex::Diagnostics;

constexpr char shop[] = R"xml(<model id="m" defaultLocale="en">
<namespace id="n" name="Sales">
<folder id="f" name="Facts">
<querySubject id="q" name="Orders">
<queryItem id="i1" name="Number" usage="identifier"/>
<queryItem id="i2" name="Total" usage="fact" tags="money, secret"/>
<queryItemFolder id="d" name="Dates"><queryItem id="i3" name="Ordered" usage="attribute"/></queryItemFolder>
</querySubject>
</folder>
<querySubject id="r" name="Returns">
<queryItem id="i4" name="Total" usage="fact"/>
</querySubject>
<calculation id="c1" name="Revenue" expression="total([Sales].[Orders].[Total])"/>
<calculation id="c2" name="Margin" expression="[Sales].[Revenue] - 1"/>
<calculation id="c3" name="Lost" expression="[Sales].[Returns].[Total]"/>
<shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
</namespace>
<securityViews><securityView id="own"><set kind="included"><item>n</item></set></securityView></securityViews>
</model>)xml";

struct Loaded {
    std::shared_ptr<vex::Model const> model;
    Diagnostics found;

    /// What a set of the view lists: "i1 i2".
    std::string set(char const* view, char const* kind = "included") const {
        Vex_Handle_Collection sets;
        VexObject(model->findById(view)).getElementsByTagName("set", sets);
        std::string ids;
        for (VEX_HANDLE const each : sets) {
            I18NString value;
            VexObject(VexObject(each).GetPropertyByName("kind", nullptr)).GetValue(value, true);
            Vex_Handle_Collection items;
            VexObject(each).getElementsByTagName("item", items);
            for (std::size_t at = 0; value == kind && at < items.size(); ++at) {
                VexObject(items[at]).GetValue(value, true);
                ids += (ids.empty() ? "" : " ") + value.toUtf8();
                value = kind;
            }
        }
        return ids;
    }

    std::string findings(bool ofPolicy = true) const {
        std::string all;
        for (vex::Diagnostic const& each : found) {
            if ((each.file == "p.yaml") == ofPolicy) {
                all += toString(each) + " [" + each.rule + "]\n";
            }
        }
        return all;
    }
};

Loaded load(std::string const& policyText, std::string const& modelText = shop,
            bool keepPositions = false) {
    auto const policy = vex::readPolicyText(policyText, "p.yaml");
    vex::PolicyViews views(*policy);
    vex::LoadOptions options;
    options.addition = &views;
    options.keepPositions = keepPositions;
    Loaded loaded;
    loaded.model = vex::loadModelText(modelText, "m.xml", options, loaded.found);
    return loaded;
}

/// What a view with these rules includes in the shop.
std::string included(std::string const& rules) {
    return load("views:\n  v: {" + rules + "}").set("v");
}

TEST(PolicyViews, IncludeWhatIsMeantAndItsContainers) {
    EXPECT_EQ(included("include: '[Sales].[Orders].[Ordered]'"), "n f q d i3");
    EXPECT_EQ(included("include: '[Sales].[Orders]/*'"), "n f q i1 i2 d");
    EXPECT_EQ(included("include: '#r/**'"), "n r i4");
    EXPECT_EQ(included("include: '**'"), "n f q i1 i2 d i3 r i4 c1 c2 c3 s");
    EXPECT_EQ(included("include: 'calculation:'"), "n c1 c2 c3");
    EXPECT_EQ(included("include: 'queryItem:[Sales].[Orders]/**'"), "n f q i1 i2 d i3");
    EXPECT_EQ(included("include: '[Sales].[Facts]'"), "n f");
}

TEST(PolicyViews, SelectByPropertiesAndTags) {
    EXPECT_EQ(included("include: '**@usage=fact'"), "n f q i2 r i4");
    EXPECT_EQ(included("include: '**@tag=secret'"), "n f q i2");
    EXPECT_EQ(included("include: '**@tag=secre'"), "");
    EXPECT_EQ(included("include: '**@usage=fact@tag=money'"), "n f q i2");
    EXPECT_EQ(included("include: '**@tag=money@usage=attribute'"), "");
    EXPECT_EQ(included("include: '**@name=Total'"), "n f q i2 r i4");
}

TEST(PolicyViews, LetExceptionsWinWhateverTheOrder) {
    EXPECT_EQ(included("include: '[Sales].[Orders]/**', except: ['**@usage=fact', '#d/**']"),
              "n f q i1");
    EXPECT_EQ(included("except: ['**@usage=fact', '#d/**'], include: '[Sales].[Orders]/**'"),
              "n f q i1");
}

TEST(PolicyViews, LeaveAnExceptedContainerOutAndWhatIsInItIn) {
    EXPECT_EQ(included("include: '[Sales].[Orders]/**', except: ['#f', '#d']"), "n q i1 i2 i3");
}

TEST(PolicyViews, SpreadExceptionsToWhatNamesThemAndOnAndOn) {
    EXPECT_EQ(included("include: '**', except: '[Sales].[Orders].[Total]', spread: true"),
              "n f q i1 d i3 r i4 c3 s");
    EXPECT_EQ(included("include: '**', except: '[Sales].[Orders].[Total]'"),
              "n f q i1 d i3 r i4 c1 c2 c3 s");
    EXPECT_EQ(included("include: '**', except: '[Sales].[Orders]', spread: true"),
              "n f i1 i2 d i3 r i4 c1 c2 c3");
}

TEST(PolicyViews, TakeNamesInDoubtForAllThatAreCalledSo) {
    auto const withExpression = [](std::string const& expression) {
        std::string model = shop;
        model.replace(model.find("[Sales].[Revenue] - 1"), 21, expression);
        return load("views: {v: {include: 'calculation:', except: '[Sales].[Returns].[Total]', "
                    "spread: true}}",
                    model)
            .set("v");
    };
    EXPECT_EQ(withExpression("[Total]"), "n c1");                 // by one name alone
    EXPECT_EQ(withExpression("'Returns'[Total]"), "n c1");        // relative
    EXPECT_EQ(withExpression("[Returns].[Total]"), "n c1");       //
    EXPECT_EQ(withExpression("[Sales].[Again].[Total]"), "n c1"); // leads nowhere together
    EXPECT_EQ(withExpression("[Sales].[Facts].[Orders].[Total]"), "n c1 c2");
    EXPECT_EQ(withExpression("sum[Number]"), "n c1 c2");
}

TEST(PolicyViews, SpreadToWhatStandsInAnObjectThatIsMadeOfTheExcepted) {
    constexpr char derived[] = R"xml(<model><namespace id="n" name="N">
        <querySubject id="q" name="Q"><queryItem id="a" name="Cost"/></querySubject>
        <querySubject id="r" name="R" expression="select [N].[Q].[Cost]"><queryItemFolder id="f"
        name="F"><queryItem id="b" name="Sum"/></queryItemFolder></querySubject>
        <calculation id="c" name="C" expression="[N].[R].[Sum] + 1"/>
        <calculation id="d" name="D" expression="[N].[Q] + 1"/></namespace></model>)xml";
    EXPECT_EQ(load("views: {v: {include: '**', except: '#a', spread: true}}", derived).set("v"),
              "n q d");
}

TEST(PolicyViews, SpreadWhatTheyExcludeToo) {
    std::string const rules = "roleBased: true, include: '**', exclude: '[Sales].[Orders].[Total]'";
    EXPECT_EQ(load("views: {v: {" + rules + "}}").set("v", "excluded"), "i2");
    EXPECT_EQ(load("views: {v: {" + rules + ", spread: true}}").set("v", "excluded"), "i2 c1 c2");
    EXPECT_EQ(load("views: {v: {" + rules + ", spread: true}}").set("v"),
              "n f q i1 i2 d i3 r i4 c1 c2 c3 s");
}

TEST(PolicyViews, EndSpreadingWhereExpressionsNameEachOther) {
    EXPECT_EQ(
        load(
            "views: {v: {include: '**', except: '#a', spread: true}}",
            R"(<model><namespace id="n" name="N"><calculation id="a" name="A" expression="[N].[B]"/>
                      <calculation id="b" name="B" expression="[N].[A]"/><calculation id="c" name="C"/>
                      </namespace></model>)")
            .set("v"),
        "n c");
}

TEST(PolicyViews, HaveNamesRolesAndTheOtherSets) {
    Loaded const loaded = load(R"(views:
  v:
    name: {en: All, de: Alles}
    roleBased: true
    members: [chief]
    include: "**"
    except: "#i1"
    exclude: ["#i1", "#s"]
    hide: "[Sales].[Orders]/**"
)");
    EXPECT_EQ(loaded.set("v", "excluded"), "i1 s");
    EXPECT_EQ(loaded.set("v", "hidden"), "q i1 i2 d i3");
    VexObject const view(loaded.model->findById("v"));
    I18NString text;
    I18NLocale const german("de");
    VexObject(view.GetPropertyByName("name", &german)).GetValue(text, true);
    EXPECT_EQ(text, "Alles");
    VexObject(view.GetPropertyByName("roleBased", nullptr)).GetValue(text, true);
    EXPECT_EQ(text, "true");
    Vex_Handle_Collection members;
    view.getElementsByTagName("member", members);
    ASSERT_EQ(members.size(), 1U);
    VexObject(VexObject(members[0]).GetPropertyByName("roleId", nullptr)).GetValue(text, true);
    EXPECT_EQ(text, "chief");
}

TEST(PolicyViews, StandBesideTheModelsOwnViews) {
    Loaded const loaded = load("views: {v: {include: '#q'}, w: {include: '#r'}}");
    Vex_Handle_Collection views;
    VexObject(loaded.model->GetRootObject()).getElementsByTagName("securityView", views);
    ASSERT_EQ(views.size(), 3U);
    EXPECT_EQ(views[0], loaded.model->findById("own"));
    EXPECT_EQ(views[2], loaded.model->findById("w"));
    EXPECT_EQ(loaded.set("own"), "n");
    EXPECT_EQ(loaded.set("w"), "n r");
}

TEST(PolicyViews, LeaveOutWhatHasNoId) {
    EXPECT_EQ(load("views: {v: {include: '**'}}",
                   R"(<model><namespace name="N"><queryItem id="i"/></namespace></model>)")
                  .set("v"),
              "i");
}

TEST(PolicyViews, MeanTheFirstObjectOfAReferenceButExceptAll) {
    constexpr char twice[] = R"(<model><namespace id="n" name="N"><querySubject id="a" name="Q"/>
                                <querySubject id="b" name="Q"/></namespace></model>)";
    EXPECT_EQ(load("views: {v: {include: '[N].[Q]'}}", twice).set("v"), "n a");
    EXPECT_EQ(load("views: {v: {include: '**', except: '[N].[Q]'}}", twice).set("v"), "n");
}

TEST(PolicyViews, NameNestedNamespacesAsReferencesDo) {
    constexpr char nested[] = R"(<model><namespace id="n" name="N"><namespace id="o" name="O">
                                 <queryItem id="i" name="I"/></namespace></namespace></model>)";
    EXPECT_EQ(load("views: {v: {include: '[O].[I]'}}", nested).set("v"), "n o i");
    EXPECT_EQ(load("views: {v: {include: '[N].[O]'}}", nested).set("v"), "");
}

TEST(PolicyViews, RefuseAnIdThatTheModelHas) {
    Loaded const loaded = load("views:\n  a: {include: '**'}\n  own: {include: '**'}");
    EXPECT_EQ(loaded.model, nullptr);
    EXPECT_EQ(loaded.findings(),
              "p.yaml:3:3: error: the model has the id \"own\" already; give the "
              "view another one [policy-view-twice]\n");
    EXPECT_EQ(loaded.findings(false), "");
}

TEST(PolicyViews, WarnOfSelectorsThatMeanNothingAndExceptionsWithoutEffect) {
    EXPECT_EQ(load("views:\n  v:\n    include: ['[Sales].[Gone]', '#q/**']\n    except: '#r'\n")
                  .findings(),
              "p.yaml:3:15: warning: no object of the model is meant by [Sales].[Gone] "
              "[policy-selector-without-match]\n"
              "p.yaml:4:13: warning: nothing that the view \"v\" includes is taken away by #r "
              "[policy-rule-without-effect]\n");
    EXPECT_EQ(load("views: {v: {include: '**', except: '#r'}}").findings(), "");
    EXPECT_EQ(load("views: {v: {include: '#c1', except: '#i2', spread: true}}").findings(), "");
}

TEST(PolicyViews, WarnOfTheSameOnlySoOften) {
    std::string policy = "views: {v: {include: ['**'";
    for (int number = 0; number < 250; ++number) {
        policy += ", '#gone" + std::to_string(number) + "'";
    }
    std::string const findings = load(policy + "]}}").findings();
    EXPECT_EQ(std::count(findings.begin(), findings.end(), '\n'), 201);
    EXPECT_NE(findings.find("p.yaml:1:1: warning: there are 50 more like those that are told "
                            "[policy-selector-without-match]\n"),
              std::string::npos);
}

TEST(PolicyViews, WarnOfRulesThatCannotMatter) {
    auto const found = [](std::string const& rules, std::string const& model = shop) {
        return load("views: {v: {" + rules + "}}", model).findings();
    };
    EXPECT_EQ(
        found("include: '**', exclude: '#r'"),
        "p.yaml:1:37: warning: the view \"v\" is not role based, and only such a view excludes "
        "and hides; write \"roleBased: true\" [policy-rule-without-effect]\n");
    EXPECT_EQ(found("roleBased: true, exclude: '#r', hide: '#q'"),
              "p.yaml:1:51: warning: the view \"v\" has no members, and such a view hides nothing "
              "[policy-rule-without-effect]\n");
    EXPECT_EQ(found("roleBased: true, members: [a], exclude: '#r', hide: '#q'"), "");
    EXPECT_EQ(found("include: '**', spread: true"),
              "p.yaml:1:9: warning: the view \"v\" excepts and excludes nothing that could spread "
              "[policy-rule-without-effect]\n");
    EXPECT_EQ(found("include: ['#i', '[N]']",
                    R"(<model><namespace name="N"><queryItem id="i"/></namespace></model>)"),
              "p.yaml:1:29: warning: no view can list what is meant by [N], for it has no id "
              "[policy-rule-without-effect]\n");
}

TEST(PolicyViews, WarnOfExpectationsThatMeanNothingWherePositionsAreKept) {
    std::string const policy =
        "views: {v: {include: '**'}}\n"
        "expect:\n  - {user: u, sees: ['#q', '#gone'], not: '[Sales].[Gone]'}\n";
    EXPECT_EQ(load(policy, shop, true).findings(),
              "p.yaml:3:28: warning: no object of the model is meant by #gone "
              "[policy-selector-without-match]\n"
              "p.yaml:3:43: warning: no object of the model is meant by [Sales].[Gone] "
              "[policy-selector-without-match]\n");
    EXPECT_EQ(load(policy).findings(), "");
}

TEST(PolicyViews, TakeNoMoreThanTheSameViewsByHand) {
    std::string byHand = shop;
    byHand.insert(
        byHand.rfind("</model>"),
        "<securityViews><securityView id='v'><set kind='included'><item>n</item>"
        "<item>f</item><item>q</item><item>i1</item></set></securityView></securityViews>");
    Loaded const byRules =
        load("views: {v: {include: ['[Sales].[Orders].[Number]', '#nowhere', 'gadget:', "
             "'[Nowhere].[At All]', '**@color=red'], except: ['**@tag=none', "
             "'[Sales].[Returns].[Total]'], spread: true}}");
    EXPECT_EQ(byRules.set("v"), "n f q i1");
    EXPECT_EQ(byRules.model->byteCount(), load("{}", byHand).model->byteCount());
}

TEST(PolicyViews, WarnOfObjectsThatNoRuleSpeaksOfWherePositionsAreKept) {
    std::string const policy = "views: {v: {include: ['#q/**', '#r/**'], except: ['#c1', '#c2']}}";
    EXPECT_EQ(load(policy, shop, true).findings(false),
              "m.xml:15:74: warning: no rule of p.yaml speaks of calculation \"Lost\"; include or "
              "except it [object-without-rule]\n");
    EXPECT_EQ(load(policy).findings(false), "");
}

} // namespace
