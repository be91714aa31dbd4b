#include "host/service/Service.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "host/content/MemoryContent.h"
#include "host/service/PluginException.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/ServedModel.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = vex::CallEnd::Kind;

class NoReports final : public VexTreeObserver {
public:
    void report(VexTreeReport const& /*report*/) override { ADD_FAILURE() << "reported"; }
    void reportOutside(VexTreeSize const& /*size*/) override {}
};

class ServiceTest : public testing::Test {
protected:
    ServiceTest() { m_content.setModel(servedPath, servedModel()); }

    vex::Visit visit(char const* user = "ann", char const* locale = "en") {
        return vex::openVisit(m_content, {servedPath, user, I18NLocale(locale)});
    }

    std::string tree(vex::MetadataRequest const& request, vex::Visit const& visit) {
        vex::MetadataAnswer const answer = m_service.metadata(visit, request, {});
        EXPECT_EQ(answer.end.text, "");
        return KRLIDOM_Writer::toUtf8(answer.response.document());
    }

    static Vex_Handle_Collection objects(vex::Visit const& visit,
                                         std::initializer_list<char const*> ids) {
        Vex_Handle_Collection found;
        for (char const* const id : ids) {
            found.push_back(visit.model().findById(id));
        }
        return found;
    }

    vex::MemoryContent m_content{servedCatalogue()};
    vex::Service m_service{servingPlugin()};
    vex::MetadataRequest const m_names{.properties = {"*/@name"}, .collections = {"*/*"}};
};

TEST_F(ServiceTest, AnswersARequestWithADocument) {
    EXPECT_EQ(tree(m_names, visit()),
              R"(<Response><Result><folder name="Sales"><querySubject name="Orders"/></folder>)"
              "</Result></Response>");
}

TEST_F(ServiceTest, AnswersARequestDocumentAsItIs) {
    KRLIDOM_OwnedDocument const request =
        KRLIDOM_Reader::parse("<a><Metadata Depth='1'/><Property n='*/@name'/></a>", "request");
    vex::MetadataAnswer const answer = m_service.metadata(visit(), request.document(), {});
    EXPECT_TRUE(answer.end.isAnswered());
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(answer.response.document()),
              R"(<Response><Result><folder name="Sales"/></Result></Response>)");
}

TEST_F(ServiceTest, AnswersEachUserInTheLanguageAskedFor) {
    EXPECT_THAT(tree(m_names, visit("ann", "de")), HasSubstr(R"(name="Vertrieb")"));
    EXPECT_THAT(tree(m_names, visit("ben")), HasSubstr(R"(name="Costs")"));
    EXPECT_THAT(tree(m_names, visit("ann")), testing::Not(HasSubstr("Costs")));
}

TEST_F(ServiceTest, AnswersAtAnObjectThatIsNamedByIdOrReference) {
    KRLIDOM_OwnedDocument const request = vex::MetadataRequest{
        .start = "[Nowhere]",
        .properties = {"*/@name", "*/@_path"}}.toDocument();
    for (char const* const name : {"q", "[Sales].[Orders]"}) {
        vex::MetadataAnswer const answer =
            m_service.metadataAt(visit("ann", "de"), name, request.document(), {});
        EXPECT_EQ(answer.end.text, "");
        EXPECT_EQ(KRLIDOM_Writer::toUtf8(answer.response.document()),
                  R"(<Response><Result><querySubject _path="[Vertrieb].[Orders]" name="Orders"/>)"
                  "</Result></Response>");
    }
}

TEST_F(ServiceTest, TellsOfAnObjectThatTheUserMayNotSeeAsOfNone) {
    KRLIDOM_OwnedDocument const request = m_names.toDocument();
    auto const refusal = [&](char const* user, char const* name) {
        vex::MetadataAnswer const answer =
            m_service.metadataAt(visit(user), name, request.document(), {});
        EXPECT_EQ(answer.end.kind, Kind::Unknown) << name;
        EXPECT_FALSE(answer.end.failure.has_value());
        EXPECT_EQ(KRLIDOM_Writer::toUtf8(answer.response.document()),
                  "<Response><Result/></Response>");
        NoReports none;
        EXPECT_EQ(m_service.explainTreeAt(visit(user), name, request.document(), none, {}).text,
                  answer.end.text);
        return answer.end.text;
    };
    EXPECT_EQ(refusal("ann", "[Sales].[Costs]"),
              "the model has no object with the id or reference \"[Sales].[Costs]\"; "
              "give an id, or a reference like [Namespace].[Query subject]");
    // "c", which is there and hidden, and "d", which is not: alike but for the name, with
    // suggestions from what may be seen alone.
    std::string hidden = refusal("ann", "c");
    std::string const missing = refusal("ann", "d");
    hidden.replace(hidden.find("\"c\""), 3, "\"d\"");
    EXPECT_EQ(hidden, missing);
    EXPECT_TRUE(m_service.metadataAt(visit("ben"), "c", request.document(), {}).end.isAnswered());
    EXPECT_THAT(refusal("ben", "[Sales].[Cost]"), HasSubstr("did you mean [Sales].[Costs]?"));
    EXPECT_THAT(refusal("ann", "[Sales].[Cost]"), testing::Not(HasSubstr("Costs]?")));
}

TEST_F(ServiceTest, DoesNotStartAtTheModelItself) {
    auto const model = vex::loadModelText("<model id='m'><namespace name='A'/></model>", "m.xml");
    m_content.setModel("file", model);
    vex::Visit const asked = vex::openVisit(m_content, {"file", "ann", I18NLocale()});
    EXPECT_EQ(m_service.metadataAt(asked, "m", m_names.toDocument().document(), {}).end.kind,
              Kind::Unknown);
}

TEST_F(ServiceTest, GivesAVerdictForEachObjectInOneCall) {
    vex::Visit const asked = visit();
    vex::AccessAnswer const answer =
        m_service.access(asked, objects(asked, {"q", "c", "n", "c"}), 0, {});
    EXPECT_TRUE(answer.end.isAnswered());
    EXPECT_THAT(answer.verdicts, ElementsAre(true, false, true, false));
}

TEST_F(ServiceTest, LeavesListsOfIncludedObjectsOutOfAccountInModeOne) {
    vex::Visit const asked = visit();
    EXPECT_THAT(m_service.access(asked, objects(asked, {"c"}), 1, {}).verdicts, ElementsAre(true));
}

TEST_F(ServiceTest, GivesNoVerdictsForNoObjects) {
    vex::AccessAnswer const answer = m_service.access(visit(), {}, 0, {});
    EXPECT_TRUE(answer.end.isAnswered());
    EXPECT_THAT(answer.verdicts, IsEmpty());
}

TEST_F(ServiceTest, TellsWhyObjectsAreAccessible) {
    vex::Visit const asked = visit();
    vex::AccessReasons const reasons =
        m_service.explainAccess(asked, objects(asked, {"q", "c"}), false, {});
    EXPECT_TRUE(reasons.end.isAnswered());
    ASSERT_EQ(reasons.explanation.objects.size(), 2U);
    EXPECT_TRUE(reasons.explanation.objects[0].included);
    EXPECT_FALSE(reasons.explanation.objects[1].included);
}

TEST_F(ServiceTest, ServesBothKindsOfActionForOneCaller) {
    vex::Visit const asked = visit();
    std::string const expected = tree(m_names, asked);
    for (int round = 0; round < 3; ++round) {
        EXPECT_THAT(m_service.access(asked, objects(asked, {"q"}), 0, {}).verdicts,
                    ElementsAre(true));
        EXPECT_EQ(tree(m_names, asked), expected);
    }
    EXPECT_EQ(m_service.sessions().idleCount(), 2U);
}

TEST_F(ServiceTest, AnswersAlikeInANewSessionAndInAnIdleOne) {
    vex::Service fresh(servingPlugin(), 0);
    vex::MetadataRequest const requests[] = {
        {.globals = {"effectiveLocale", "supportedLocales"}},
        m_names,
        {.start = "[Sales].[Orders]", .properties = {"*/@name", "*/@_path"}},
        {.functions = true},
        {.start = "[Nowhere]"},
        {.view = "all", .properties = {"*/@ID"}, .collections = {"*/*"}},
    };
    for (int round = 0; round < 2; ++round) {
        for (vex::MetadataRequest const& request : requests) {
            vex::MetadataAnswer const idle = m_service.metadata(visit(), request, {});
            vex::MetadataAnswer const other = fresh.metadata(visit(), request, {});
            EXPECT_EQ(idle.end.text, other.end.text);
            EXPECT_EQ(KRLIDOM_Writer::toUtf8(idle.response.document()),
                      KRLIDOM_Writer::toUtf8(other.response.document()));
        }
    }
}

TEST_F(ServiceTest, AnswersFromTheNewestVersionAndKeepsVisitsWhatTheyOpened) {
    vex::Visit const before = visit();
    std::string const expected = tree(m_names, before);
    m_content.setModel(servedPath, servedModel("Turnover"));
    EXPECT_THAT(tree(m_names, visit()), HasSubstr("Turnover"));
    EXPECT_EQ(tree(m_names, before), expected);
}

TEST_F(ServiceTest, TellsAFailureInFull) {
    vex::MetadataAnswer const answer = m_service.metadata(visit(), {.start = "[Nowhere]"}, {});
    EXPECT_EQ(answer.end.kind, Kind::Raised);
    ASSERT_TRUE(answer.end.failure.has_value());
    EXPECT_NE(answer.end.failure->id, 0U);
    EXPECT_EQ(answer.end.failure->source, "VexMDMaProvider");
    EXPECT_EQ(answer.end.failure->function, "VexMDMaProviderR::ProcessRequest");
    EXPECT_GT(answer.end.failure->line, 0);
    EXPECT_THAT(answer.end.failure->parameters, testing::Contains("Nowhere"));
    EXPECT_EQ(answer.end.failure->text, answer.end.text);
}

TEST_F(ServiceTest, StopsAtTheLimitsOfACall) {
    vex::ActionLimits limits;
    limits.response.elements = 3;
    vex::MetadataAnswer const answer = m_service.metadata(visit(), m_names, limits);
    EXPECT_EQ(answer.end.kind, Kind::Stopped);
    EXPECT_EQ(answer.response.elementCount(), 3U);
    EXPECT_TRUE(m_service.metadata(visit(), m_names, {}).end.isAnswered());
}

TEST_F(ServiceTest, StopsEveryCallThatIsCancelled) {
    std::atomic<bool> const cancelled{true};
    vex::ActionLimits limits;
    limits.cancelled = &cancelled;
    vex::Visit const asked = visit();
    EXPECT_THAT(m_service.metadata(asked, m_names, limits).end.text, HasSubstr("cancelled"));
    EXPECT_THAT(m_service.access(asked, objects(asked, {"q"}), 0, limits).end.text,
                HasSubstr("cancelled"));
    EXPECT_THAT(m_service.explainAccess(asked, objects(asked, {"q"}), false, limits).end.text,
                HasSubstr("cancelled"));
    EXPECT_THAT(m_service.metadataAt(asked, "q", m_names.toDocument().document(), limits).end.text,
                HasSubstr("cancelled"));
}

/// A service of the plug-in that breaks the rules, which does the action whose
/// number the model path is.
class ServiceOfARuleBreaker : public testing::Test {
protected:
    ServiceOfARuleBreaker() { m_plugin->Initialize(); }

    vex::Visit visit(long action) {
        I18NString const path(std::to_string(action).c_str());
        m_content.setModel(path, servedModel());
        return vex::openVisit(m_content, {path, "", I18NLocale()});
    }

    vex::CallEnd call(long action, vex::ActionLimits const& limits = {}) {
        return m_service.metadata(visit(action), vex::MetadataRequest(), limits).end;
    }

    vex::MemoryContent m_content;
    std::shared_ptr<vex::PluginProxy> m_plugin =
        std::make_shared<vex::PluginProxy>(badPluginFile("RuleBreaker"), "RuleBreaker");
    vex::Service m_service{m_plugin};
};

TEST_F(ServiceOfARuleBreaker, TellsABrokenRuleAndDropsTheSession) {
    vex::CallEnd const end = call(ruleBreaker::ThrowInt);
    EXPECT_EQ(end.kind, Kind::Stopped);
    EXPECT_FALSE(end.failure.has_value());
    EXPECT_THAT(end.text, HasSubstr("RuleBreaker.vpl"));
    EXPECT_EQ(m_service.sessions().idleCount(), 0U);
}

TEST_F(ServiceOfARuleBreaker, KeepsASessionThatAFailureOrALimitEnded) {
    EXPECT_EQ(call(ruleBreaker::Raise).failure->parameters,
              (std::vector<std::string>{"one", "two"}));
    vex::ActionLimits limits;
    limits.response.elements = 5;
    EXPECT_EQ(call(ruleBreaker::GrowForEver, limits).kind, Kind::Stopped);
    EXPECT_EQ(m_service.sessions().idleCount(), 2U);
}

TEST_F(ServiceOfARuleBreaker, TellsWhenThePluginDoesNotKnowTheAction) {
    vex::CallEnd const end = call(1000);
    EXPECT_EQ(end.kind, Kind::NotHandled);
    EXPECT_EQ(end.code, VexErrorCode::NotHandled);
}

TEST_F(ServiceOfARuleBreaker, StopsAtTheDeadline) {
    vex::ActionLimits limits;
    limits.time = std::chrono::milliseconds(20);
    EXPECT_THAT(call(ruleBreaker::ReadForEver, limits).text, HasSubstr("deadline"));
    vex::Visit const asked = visit(ruleBreaker::ReadForEver);
    Vex_Handle_Collection objects;
    objects.push_back(asked.model().GetRootObject());
    vex::AccessAnswer const answer = m_service.access(asked, objects, 0, limits);
    EXPECT_THAT(answer.end.text, HasSubstr("deadline"));
    EXPECT_THAT(answer.verdicts, IsEmpty());
}

TEST_F(ServiceOfARuleBreaker, TellsThatThePluginGaveNoVerdict) {
    vex::Visit const asked = visit(ruleBreaker::AnswerNothing);
    Vex_Handle_Collection objects;
    objects.push_back(asked.model().GetRootObject());
    vex::AccessAnswer const answer = m_service.access(asked, objects, 0, {});
    EXPECT_EQ(answer.end.kind, Kind::Stopped);
    EXPECT_THAT(answer.end.text, HasSubstr("no verdict"));
}

TEST_F(ServiceOfARuleBreaker, TellsWhenThePluginDoesNotExplain) {
    vex::AccessReasons const reasons = m_service.explainAccess(visit(1), {}, false, {});
    EXPECT_EQ(reasons.end.kind, Kind::Stopped);
    EXPECT_THAT(reasons.end.text, HasSubstr("vex.explain-access/1"));
}

} // namespace
