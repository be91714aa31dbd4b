#include "VexTreeExplanation.h"

#include "KRLException.h"
#include "VexObject.h"
#include "tests/plugin/PluginCase.h"
#include "tests/support/Casts.h"
#include "tests/support/ExpectFailure.h"

#include <gtest/gtest.h>

extern "C" void const* VexPlugin_getExtension(char const* id);

namespace {

using Lines = std::vector<std::string>;

std::string idOf(VEX_HANDLE object) {
    I18NString id;
    VexObject(object).GetId(id);
    return id.toUtf8();
}

/// Keeps reports as lines: "id treatment members", then "in container", "to target",
/// "behind shortcut" and, where the views' lists do not count, "untested".
class Recorder final : public VexTreeObserver {
public:
    void report(VexTreeReport const& report) override {
        constexpr char const* treatments[] = {"written", "not-included", "without-attributes",
                                              "nothing"};
        constexpr char const* members[] = {"below",      "lifted",  "left-out",
                                           "past-depth", "endless", "refused"};
        std::string line = idOf(report.object) + ' ' +
                           treatments[static_cast<int>(report.treatment)] + ' ' +
                           members[static_cast<int>(report.members)];
        if (report.container != VexTreeReport::None) {
            line += " in " + idOf(objects.at(report.container));
        }
        if (report.target.IsNotNull()) {
            line += " to " + idOf(report.target);
        }
        if (report.shortcut != VexTreeReport::None) {
            line += " behind " + idOf(objects.at(report.shortcut));
        }
        lines.push_back(line + (report.passesOverViewLists ? " untested" : ""));
        objects.push_back(report.object);
        levels.push_back(report.level);
        tags.push_back(report.tag.toUtf8());
        sizes.push_back(report.size);
        if (lines.size() == raiseAt) {
            throw KRLLimitException("enough");
        }
    }
    void reportOutside(VexTreeSize const& size) override { outside.push_back(size); }
    bool wantsMembers(VexTreeReport const& report) override {
        return idOf(report.object) != unwanted;
    }

    Lines lines;
    std::vector<VEX_HANDLE> objects;
    std::vector<int> levels;
    Lines tags;
    std::vector<VexTreeSize> sizes;
    std::vector<VexTreeSize> outside;
    std::size_t raiseAt = 0;
    std::string unwanted; // the id of what is not to be gone into
};

void explain(VexSession& session, char const* path, std::string const& requestXml,
             KRLIDOM_Node* response, VexTreeObserver& observer) {
    TestRequest request(requestXml);
    static_cast<VexExplainTree const*>(VexPlugin_getExtension(VexExplainTree::Id))
        ->explain(session, path, request.node(), response, observer);
}

constexpr char const* names = R"(<Property name="*/@name"/>)";
constexpr char const* everything = R"(<Property name="*/*"/>)";
constexpr char const* unrestricted = "a model";

std::string requestFor(std::string const& entries, std::string const& options = "") {
    return "<Metadata " + options + ">" + entries + "</Metadata>";
}

Recorder observe(std::string const& model, std::string const& request,
                 char const* path = unrestricted) {
    PluginCase on(model);
    Recorder recorder;
    explain(on.session, path, request, nullptr, recorder);
    return recorder;
}

Lines reportsOf(std::string const& model, std::string const& request,
                char const* path = unrestricted) {
    return observe(model, request, path).lines;
}

std::string const allNames = requestFor(std::string(names) + everything);

std::string const nested = casts::shopOfAllEnds(casts::views(casts::view("v", {"n", "q"})));

std::string const asMembers =
    requestFor(R"(<Property name="*/@_path"/><Property name="*/@name"/>)"
               R"(<Property name="*/folder"/><Property name="*/querySubject"/>)"
               R"(<Property name="*/queryItem"/>)");

} // namespace

TEST(TreeExplanation, ReportsWhatIsWrittenBeforeItsMembers) {
    Recorder const given =
        observe(R"(<model id="m"><namespace id="n" name="A"><namespace id="inner" name="B">
                    <filter id="x" name="X"/></namespace></namespace></model>)",
                allNames);
    EXPECT_EQ(given.lines,
              (Lines{"n written below", "inner written below in n", "x written below in inner"}));
    EXPECT_EQ(given.tags, (Lines{"folder", "folder", "filter"}));
    EXPECT_EQ(given.levels, (std::vector<int>{1, 2, 3}));
}

TEST(TreeExplanation, ReportsWhatIsNotIncludedAndItsMembersAsLifted) {
    EXPECT_EQ(reportsOf(nested, requestFor(std::string(names) + everything), "/content/m"),
              (Lines{"n written below", "f not-included lifted in n", "q written below in f",
                     "i not-included lifted in q", "nameless without-attributes left-out in n",
                     "s written below in n to q", "none nothing left-out in n"}));
}

TEST(TreeExplanation, ReportsWhatIsNotIncludedAmongObjectsWithPathsToo) {
    Recorder const given = observe(nested, asMembers, "/content/m");
    EXPECT_EQ(given.lines,
              (Lines{"n written below", "f not-included lifted in n", "q written below in f",
                     "i not-included lifted in q", "s written below in n to q",
                     "i written below in s behind s untested", "none nothing left-out in n"}));
    EXPECT_EQ(given.tags,
              (Lines{"folder", "", "querySubject", "", "querySubject", "queryItem", ""}));
}

TEST(TreeExplanation, DoesNotGoIntoWhatTheObserverDoesNotWantToGoInto) {
    PluginCase on(nested);
    auto const reports = [&](char const* unwanted, KRLIDOM_Node* response = nullptr) {
        Recorder recorder;
        recorder.unwanted = unwanted;
        explain(on.session, "/content/m", asMembers, response, recorder);
        return recorder.lines;
    };
    EXPECT_EQ(reports("s"), (Lines{"n written below", "f not-included lifted in n",
                                   "q written below in f", "i not-included lifted in q",
                                   "s written refused in n to q", "none nothing left-out in n"}));
    EXPECT_EQ(reports("f"),
              (Lines{"n written below", "f not-included refused in n", "s written below in n to q",
                     "i written below in s behind s untested", "none nothing left-out in n"}));
    EXPECT_EQ(reports("n", &on.response.node()), (Lines{"n written refused"}));
    EXPECT_EQ(on.response.resultText(), R"(<folder _path="[Sales]" name="Sales"/>)");
}

TEST(TreeExplanation, ReportsTheStartAsWrittenThoughItIsNotIncluded) {
    EXPECT_EQ(reportsOf(nested,
                        requestFor(std::string(names) + R"(<Property name="*/folder"/>)",
                                   R"(start_at="[Sales].[Facts]")"),
                        "/content/m"),
              Lines{"f written below"});
}

TEST(TreeExplanation, ReportsNothingAboutTheMembersOfWhatHasNoAttributes) {
    EXPECT_EQ(reportsOf(R"(<model id="m"><namespace id="n" name="A"><filter id="x">
                            <filter id="inner" name="Inner"/></filter></namespace></model>)",
                        allNames),
              (Lines{"n written below", "x without-attributes left-out in n"}));
}

TEST(TreeExplanation, ReportsTheTargetOfAShortcutAndWhatIsReachedThroughIt) {
    EXPECT_EQ(reportsOf(casts::shop(),
                        requestFor(std::string(names) + R"(<Property name="*/queryItem"/>)")),
              (Lines{"n written below", "s written below in n to q",
                     "i written below in s behind s untested"}));
}

TEST(TreeExplanation, ReportsAShortcutInsideItsOwnExpansionAsEndless) {
    constexpr char const* endless = R"(<model id="m"><namespace id="n" name="A">
        <shortcut id="s" name="S" refobj="[A]"/></namespace></model>)";
    EXPECT_EQ(reportsOf(endless, allNames),
              (Lines{"n written below", "s written below in n to n",
                     "s written endless in s to n behind s untested"}));
    EXPECT_EQ(reportsOf(endless, requestFor(std::string(names) + everything, R"(Depth="3")")),
              (Lines{"n written below", "s written below in n to n",
                     "s written past-depth in s to n behind s untested"}));
}

TEST(TreeExplanation, ReportsAShortcutWithoutNameOrTargetAsStandingForNothing) {
    EXPECT_EQ(
        reportsOf(R"(<model id="m"><namespace id="n" name="A">
                            <shortcut id="unnamed" refobj="[A]"/><shortcut id="none" name="S"/>
                            </namespace></model>)",
                  allNames),
        (Lines{"n written below", "unnamed nothing left-out in n", "none nothing left-out in n"}));
}

TEST(TreeExplanation, ReportsWhereTheDepthEnds) {
    EXPECT_EQ(reportsOf(nested, requestFor(std::string(names) + everything, R"(Depth="2")"),
                        "/content/m"),
              (Lines{"n written below", "f not-included lifted in n", "q written past-depth in f",
                     "nameless without-attributes left-out in n", "s written past-depth in n to q",
                     "none nothing left-out in n"}));
}

TEST(TreeExplanation, ReportsThatViewListsDoNotCountWhenAPathLeadsThroughAShortcut) {
    EXPECT_EQ(reportsOf(nested,
                        requestFor(std::string(names) + R"(<Property name="*/queryItem"/>)",
                                   R"(start_at="[Sales].[Again].[Total]")"),
                        "/content/m"),
              Lines{"i written below untested"});
}

TEST(TreeExplanation, TellsTheSizeOfEachElement) {
    Recorder const given =
        observe(R"(<model id="m"><namespace id="n" name="Abc"><filter id="x" name="De"/>
                    <shortcut id="s" name="S" refobj="[Abc].[De]"/><filter id="y"/>
                    </namespace></model>)",
                requestFor(std::string(names) + R"(<Property name="*/@ID"/>)" +
                           R"(<Property name="filter/@note"/>)" + everything));
    std::vector<std::string> sizes;
    for (VexTreeSize const& size : given.sizes) {
        sizes.push_back(std::to_string(size.elements) + ' ' + std::to_string(size.attributes) +
                        ' ' + std::to_string(size.characters));
    }
    // A shortcut repeats the value before for a property that neither object has.
    EXPECT_EQ(sizes, (Lines{"1 2 4", "1 2 3", "1 1 1", "1 3 3"}));
}

TEST(TreeExplanation, BuildsNothingWithoutAResponseAndReportsTheSame) {
    PluginCase on(nested);
    Recorder without;
    explain(on.session, "/content/m", allNames, nullptr, without);
    Recorder with;
    explain(on.session, "/content/m", allNames, &on.response.node(), with);
    EXPECT_EQ(with.lines, without.lines);
    EXPECT_EQ(on.response.resultText(), R"(<folder name="Sales"><querySubject name="Orders"/>)"
                                        R"(<querySubject name="Again"/></folder>)");
    EXPECT_TRUE(with.outside.empty());
    ASSERT_EQ(without.outside.size(), 1U);
    EXPECT_EQ(without.outside[0].elements, 2U); // "Response" and "Result"
    EXPECT_EQ(without.outside[0].attributes, 0U);
}

TEST(TreeExplanation, CountsSettingsOutsideTheTree) {
    Recorder const given = observe(
        R"(<model id="m" defaultLocale="en"><locales><locale>en</locale><locale>de</locale>
            </locales><namespace id="n" name="A"/></model>)",
        requestFor(std::string(names) + R"(<Property name="/@supportedLocales"/>)"));
    ASSERT_EQ(given.outside.size(), 1U);
    EXPECT_EQ(given.outside[0].elements, 5U);   // with "locales" and two of "locale"
    EXPECT_EQ(given.outside[0].attributes, 2U); // a text counts as one
    EXPECT_EQ(given.outside[0].characters, 4U);
}

TEST(TreeExplanation, CountsAPackageOutsideTheTree) {
    PluginCase on(nested);
    on.session.setPackage("Retail");
    Recorder recorder;
    explain(on.session, "/content/m", requestFor(R"(<Functions function="1"/>)"), nullptr,
            recorder);
    EXPECT_TRUE(recorder.lines.empty());
    ASSERT_EQ(recorder.outside.size(), 1U);
    EXPECT_EQ(recorder.outside[0].elements, 3U);
    EXPECT_EQ(recorder.outside[0].characters, 6U);
}

TEST(TreeExplanation, EndsWhenTheObserverRaises) {
    PluginCase on(nested);
    Recorder recorder;
    recorder.raiseAt = 2;
    EXPECT_THROW(explain(on.session, unrestricted, allNames, nullptr, recorder), KRLLimitException);
    EXPECT_EQ(recorder.lines.size(), 2U);
    EXPECT_TRUE(recorder.outside.empty());
}

TEST(TreeExplanation, LeavesTheSessionAsItWas) {
    PluginCase on(casts::plainShop());
    Recorder recorder;
    explain(on.session, "/content/m", allNames, nullptr, recorder);
    EXPECT_FALSE(on.session.customData().HasNamespace("VexMAActionPlugin"));
    on.askMetadata();
    std::string const address = on.entry("MaAction");
    explain(on.session, "/content/m", allNames, nullptr, recorder);
    EXPECT_EQ(on.entry("MaAction"), address);
}

TEST(TreeExplanation, RunsOnItsOwnModelPathWhateverTheSessionsActionKeeps) {
    PluginCase on(casts::plainShop());
    on.askMetadata(unrestricted); // every later request of the session is unrestricted, too
    Recorder recorder;
    explain(on.session, "/content/m", allNames, nullptr, recorder);
    EXPECT_EQ(recorder.lines,
              (Lines{"n written below", "x written below in n", "y not-included lifted in n"}));
}

TEST(TreeExplanation, RaisesWhatTheRequestWouldRaise) {
    PluginCase on(casts::plainShop());
    Recorder recorder;
    expectFailure([&] { explain(on.session, "/content/m", "<Other/>", nullptr, recorder); },
                  1444379513, "VexMDMaProvider", 0, "VexMDMaProvider::doRequest");
    EXPECT_TRUE(recorder.lines.empty());
    EXPECT_TRUE(recorder.outside.empty());
}

TEST(TreeExplanation, RefusesAResponseThatIsNoElement) {
    PluginCase on(casts::plainShop());
    KRLIDOM_Node none;
    KRLIDOM_Node document = on.response.node().getOwnerDocument();
    for (KRLIDOM_Node* const node : {&none, &document}) {
        Recorder recorder;
        expectFailure([&] { explain(on.session, "/content/m", allNames, node, recorder); },
                      1444379511, "VexMAAction", 83, "VexAction::validateParameter");
        EXPECT_TRUE(recorder.lines.empty());
    }
}
