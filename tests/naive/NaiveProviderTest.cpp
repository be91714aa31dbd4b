#include "tests/naive/NaiveTestSupport.h"

namespace naive {
namespace {

std::string const sales = R"(<model defaultLocale="en">
  <locales><locale>en</locale><locale>de-AT</locale></locales>
  <namespace id="n1"><property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <folder id="f1" name="Facts">
      <querySubject id="q1" name="Orders" tip="rows">
        <queryItem id="i1" name="Quantity" datatype="int32"/>
        <queryItemFolder id="d1" name="Dates"><queryItem id="i2" name="Ordered"/></queryItemFolder>
      </querySubject>
    </folder>
    <querySubject id="q2" name="a]b"><queryItem id="i3" name="X"/></querySubject>
  </namespace></model>)";

TEST(NaiveText, SplitsStartPaths) {
    auto const split = [](Text const& path) {
        Texts parts;
        return splitStartPath(path, parts) ? parts : Texts{u"refused"};
    };
    EXPECT_EQ(split(u""), Texts{});
    EXPECT_EQ(split(u" [a b] . [a.b[] "), (Texts{u"a b", u"a.b["}));
    EXPECT_EQ(split(u"[a]]b]"), Texts{u"a]b"});
    EXPECT_EQ(split(u"[a]]]]]"), Texts{u"a]]"});
    EXPECT_EQ(split(u"[]"), Texts{u""});
    for (Text const& wrong : {Text(u"   "), Text(u"[a]]]]"), Text(u"[a][b]"), Text(u"[a]."),
                              Text(u"a"), Text(u"[a"), Text(u"[a] x"), Text(u"]"), Text(u".")}) {
        EXPECT_EQ(split(wrong), Texts{u"refused"}) << toUtf8(wrong);
    }
}

TEST(NaiveModel, FindsAPropertyByLocaleThenParentThenUnlocalised) {
    PlainModel const model(R"(<model><namespace id="n" name="plain">
        <property name="name" locale="de">deutsch</property>
        <property name="name" locale="fr"/></namespace></model>)");
    auto const nameFor = [&](Text const& locale) {
        Text name = u"kept";
        model.readProperty(model.objectWithId(u"n"), u"name", name, locale);
        return name;
    };
    EXPECT_EQ(nameFor(u"de_AT"), u"deutsch");
    EXPECT_EQ(nameFor(u"en"), u"plain");
    EXPECT_EQ(nameFor(u"fr"), u"kept");
    EXPECT_EQ(nameFor(u""), u"plain");
}

TEST(NaiveModel, ListsALocalisedPropertyOnceAndCollectionsLast) {
    PlainModel const model(R"(<model defaultLocale="de"><namespace id="n" a="1">
        <folder/><property name="b" locale="en">B</property><filter/>
        <property name="c"><property name="d"/></property>
        <property name="b" locale="de">Bd</property><folder/></namespace></model>)");
    Texts listed;
    for (Handle property : model.properties(model.objectWithId(u"n"))) {
        listed.push_back(property->cls + u"=" + property->value.value_or(u""));
    }
    EXPECT_EQ(listed, (Texts{u"a=1", u"b=Bd", u"c=", u"folder=", u"filter="}));
}

TEST(NaiveModel, ReferencesLeaveFoldersBetweenOut) {
    PlainModel const model(sales);
    EXPECT_EQ(model.objectWithReference(u"[Sales].[Orders].[Ordered]"), model.objectWithId(u"i2"));
    EXPECT_EQ(model.objectWithReference(u"[Sales].[Facts]"), model.objectWithId(u"f1"));
    EXPECT_EQ(model.objectWithReference(u"[Sales].[Facts].[Orders]"), nullptr);
    EXPECT_EQ(model.objectWithReference(u"[Vertrieb]"), nullptr);
    EXPECT_EQ(model.objectWithReference(u"[Sales"), nullptr);
}

TEST(NaiveSessionLocale, IsTheAskedOneWhenAParentIsKnown) {
    PlainModel const model(sales);
    EXPECT_EQ(model.negotiatedLocale(u"en-gb"), u"en_GB");
    EXPECT_EQ(model.negotiatedLocale(u"de"), u"en");
    EXPECT_EQ(model.negotiatedLocale(u"de_at"), u"de_AT");
    EXPECT_EQ(model.negotiatedLocale(u""), u"en");
}

TEST(NaiveRequestLists, AppendPrefixGroupsInOrder) {
    NaiveRequest const request(R"(<a><Property p="./@x"/><Property p="*/@y"/><Property p="C/@z"/>
        <Property p="C/@x"/><Property p="./n"/><Property p="D/@no"/></a>)");
    EXPECT_EQ(request.propertiesForClass(u"C"), (Texts{u"x", u"y", u"z", u"x"}));
    EXPECT_EQ(request.collectionsForClass(u"C"), (Texts{u"n", u"shortcut", u"namespace"}));
    EXPECT_FALSE(request.hasMetadata());
}

TEST(NaiveRequestLists, AWildcardHidesTheRestOfItsPrefix) {
    NaiveRequest const request(R"(<Metadata><Property p="*/@a"/><Property p="*/@*"/>
        <Property p="*/@b"/><Property p="./@c"/></Metadata>)");
    EXPECT_EQ(request.propertiesForClass(u"C"), (Texts{u"c", u"*"}));
}

TEST(NaiveRequestLists, ConstraintsKeepTheFirstAndCutUnchecked) {
    NaiveRequest const request(R"(<Metadata><Constraint c="./@x=[1]"/><Constraint c="C/@x=[2]"/>
        <Constraint c="CX/@a=[3]"/><Constraint c="./@y=(4]"/><Constraint c="./@z"/></Metadata>)");
    std::map<Text, Text> const expected = {
        {u"x", u"1"}, {u"@a", u"3"}, {u"y", u"4"}, {u"z", u"/@z"}};
    EXPECT_EQ(request.constraintsForClass(u"C"), expected);
}

TEST(NaiveStart, AnEmptyPathStartsAtTheFirstNamespace) {
    TestSession test(sales);
    EXPECT_EQ(test.result("Depth='1'", {"*/@name", "*/@_path"}),
              R"(<folder _path="[Sales]" name="Sales"/>)");
}

TEST(NaiveStart, PathsWalkTheCollectionsOfTheStartNamespace) {
    TestSession test(sales);
    EXPECT_EQ(test.result("start_at='[Sales].[Facts].[Orders]' Depth='1'",
                          {"*/@_path", "*/@_ref", "./folder", "./querySubject"}),
              R"(<querySubject _path="[Sales].[Facts].[Orders]" _ref="[Sales].[Orders]"/>)");
    expectFailure(test.ask("start_at='[Sales].[Facts].[Orders]'", {"*/@name", "./folder"}),
                  1171025905, 780, u"VexMDMaProviderR::ProcessRequest", {u"Orders"});
    expectFailure(test.ask("start_at='[Vertrieb]'", {"*/@name"}), 1171025905, 808,
                  u"VexMDMaProviderR::ProcessRequest", {u"Vertrieb"});
}

TEST(NaiveStart, AMiddleNameThatMatchesNothingIsSkipped) {
    TestSession test(sales);
    EXPECT_EQ(test.result("start_at='[Sales].[none].[Facts]' Depth='1'", {"*/@name", "./folder"}),
              R"(<folder name="Facts"/>)");
}

TEST(NaiveStart, LocaleJIsPairedWithItemJ) {
    std::string const model = R"(<model defaultLocale="en">
        <locales><locale>fr</locale><locale>de</locale></locales><namespace name="N">
        <folder name="A"/><folder name="B"><property name="name" locale="de">Be</property></folder>
        </namespace></model>)";
    TestSession test(model);
    // The second item carries the name in the second locale, so the first item matches.
    EXPECT_EQ(test.result("start_at='[N].[Be]' Depth='1'", {"*/@name", "./folder"}),
              R"(<folder name="A"/>)");
    EXPECT_EQ(test.result("start_at='[N].[]' Depth='1'", {"*/@name", "./folder"}),
              "failure 1171025905");
}

TEST(NaiveStart, ALocaleWithoutAnItemHasTheEmptyName) {
    TestSession test(R"(<model defaultLocale="en"><locales><locale>fr</locale><locale>de</locale>
        </locales><namespace name="N"><folder name="A"/></namespace></model>)");
    EXPECT_EQ(test.result("start_at='[N].[]' Depth='1'", {"*/@name", "./folder"}),
              R"(<folder name="A"/>)");
}

TEST(NaiveOutput, LeavesOutAnObjectWithoutAttributesAndAllBelow) {
    TestSession test(sales);
    EXPECT_EQ(test.result("start_at='[Sales].[Facts]'", {"queryItem/@name", "*/*"}), "");
}

TEST(NaiveOutput, WritesDownToTheDepth) {
    TestSession test(sales);
    std::vector<std::string> const asked = {"*/@name", "*/folder", "*/querySubject"};
    std::string const whole = R"(<folder name="Sales"><folder name="Facts"><querySubject)"
                              R"( name="Orders"/></folder><querySubject name="a]b"/></folder>)";
    EXPECT_EQ(test.result("Depth='0'", asked), whole);
    EXPECT_EQ(test.result("Depth='x'", asked), whole);
    EXPECT_EQ(test.result("Depth='3'", asked), whole);
    EXPECT_EQ(test.result("Depth='2'", asked), R"(<folder name="Sales"><folder name="Facts"/>)"
                                               R"(<querySubject name="a]b"/></folder>)");
    EXPECT_EQ(test.result("Depth='-1'", asked), R"(<folder name="Sales"/>)");
}

TEST(NaiveOutput, ExtendsThePathOnlyWhereItIsAskedFor) {
    TestSession test(sales);
    EXPECT_EQ(test.result("", {"namespace/@name", "folder/@name", "querySubject/@_path",
                               "querySubject/@_ref", "*/folder", "*/querySubject"}),
              R"(<folder name="Sales"><folder name="Facts">)"
              R"(<querySubject _path="[Sales].[Orders]" _ref="[Sales].[Orders]"/></folder>)"
              R"(<querySubject _path="[Sales].[a]b]" _ref="[Sales].[a]b]"/></folder>)");
}

TEST(NaiveOutput, ExpandsWildcards) {
    TestSession test(sales);
    EXPECT_EQ(
        test.result("start_at='[Sales].[Facts].[Orders]' Depth='2'",
                    {"querySubject/@*", "queryItem/@ID", "./*"}),
        R"(<querySubject ID="q1" name="Orders" tip="rows"><queryItem ID="i1"/></querySubject>)");
}

TEST(NaiveOutput, WithholdsOnlyForTheFirstConstraint) {
    TestSession test(sales);
    std::string const options = "start_at='[Sales].[Facts].[Orders]' Depth='1'";
    std::vector<std::string> const asked = {"*/@name", "*/@tip", "*/folder", "*/querySubject"};
    EXPECT_EQ(test.result(options, asked, u"m", "<Constraint c='./@name=[no]'/>"),
              R"(<querySubject tip="rows"/>)");
    EXPECT_EQ(test.result(options, asked, u"m",
                          "<Constraint c='./@name=[Orders]'/><Constraint c='./@tip=[no]'/>"),
              R"(<querySubject name="Orders" tip="rows"/>)");
}

TEST(NaiveGlobalEntries, StandBesideTheResult) {
    TestSession test(sales, u"de_AT");
    Outcome const outcome =
        test.ask("start_at='[x'", {"/@listSeparator", "/@decimal_separator", "/@modelSearchPath",
                                   "/@supportedLocales", "/@defaultLocale", "/@effectiveLocale"});
    expectFailure(outcome, 1170869272, 145, u"VexMDMaProvider::doRequest", {});
    EXPECT_EQ(
        outcome.response,
        R"(<Response><Result/><listSeparator value="semiColon"/><decimalSeparator value=","/>)"
        R"(<locales><locale>en</locale><locale>de_AT</locale></locales>)"
        R"(<defaultLocale>en</defaultLocale><effectiveLocale>de_AT</effectiveLocale></Response>)");
}

TEST(NaiveActions, OnlyTheFirstKindOfASessionIsMade) {
    TestSession test(sales);
    EXPECT_EQ(test.access(u"m", u"q1"), 1);
    expectFailure(test.ask("", {"*/@name"}), 1444379512, anyLine, u"VexMAActionPlugin::DoAction",
                  {u"MaAction"});
    test.session.notify(0);
    EXPECT_EQ(test.result("", {}), "failure 1444379512");
    test.session.notify(2);
    EXPECT_EQ(test.result("Depth='1'", {"*/@name"}), R"(<folder name="Sales"/>)");
    EXPECT_EQ(test.access(u"m", u"q1"), 1444379512);
}

TEST(NaiveActions, CheckTheActionAndItsParameters) {
    TestSession test(sales);
    EXPECT_EQ(test.session.doAction(Value::ofLong(31001), {}).code, 6);
    EXPECT_EQ(test.session.doAction(Value::ofString(u"31000"), {}).code, 1);
    Outcome const outcome = test.session.doAction(Value::ofLong(31000), {Value::ofLong(0)});
    expectFailure(outcome, 1444379511, 83, u"VexAction::validateParameter", {});
    EXPECT_TRUE(outcome.appended.empty());
    EXPECT_EQ(outcome.response, "<Response><Result/></Response>");
}

TEST(NaiveLimits, EndACall) {
    PlainModel model(sales);
    std::vector<Value> const in = {
        Value::ofLong(0), Value::ofString(u"m"),
        Value::ofNode("<Metadata><Property p='*/@name'/><Property p='*/*'/></Metadata>")};
    NaiveSession small(SessionOptions{&model, nullptr, u"", u"en", 4, 1000});
    EXPECT_TRUE(small.doAction(Value::ofLong(31000), in).limit.has_value());
    NaiveSession idle(SessionOptions{&model, nullptr, u"", u"en", 1000, 2});
    EXPECT_TRUE(idle.doAction(Value::ofLong(31000), in).gaveUp);
}

TEST(NaiveXml, CanonicalTextSortsAttributes) {
    EXPECT_EQ(canonicalXml("<a  z='1' b='&lt;\"'><c></c>x</a>"),
              "<a b=\"&lt;&quot;\" z=\"1\">x<c/></a>");
}

} // namespace
} // namespace naive
