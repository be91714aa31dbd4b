#include "host/service/PathConfinement.h"

#include "VexAction.h"
#include "host/content/MemoryContent.h"
#include "host/service/ActionCall.h"
#include "host/service/Service.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/ServedModel.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using vex::ForeignPathException;
using vex::PathConfinement;

constexpr char const* foreignPaths[] = {
    "",                     // empty
    "path:",                // nothing behind the prefix
    "m",                    // a part of it
    "/content/",            // what it stands in
    "/content/m/",          // one character more
    "/content/M",           // another case
    " /content/m",          // blanks
    "/content/m ",          //
    "/content/other",       // another model
    "path:/content/o",      // another model behind the prefix
    "PATH:/content/m",      // another prefix
    "path:path:/content/m", // the prefix twice
    "file:m",               // outside of the content store
    "anything",             //
};

TEST(PathConfinement, AdmitsItsPathWithAndWithoutThePrefix) {
    PathConfinement const own("/content/m");
    EXPECT_TRUE(own.admits("/content/m"));
    EXPECT_TRUE(own.admits("path:/content/m"));
}

TEST(PathConfinement, AdmitsNoOtherPath) {
    PathConfinement const own("/content/m");
    for (char const* const path : foreignPaths) {
        EXPECT_FALSE(own.admits(path)) << path;
        EXPECT_THROW(own.require(path), ForeignPathException) << path;
    }
}

// Without its prefix such a path would be another model's, or nobody's.
TEST(PathConfinement, TakesNoPrefixAwayFromAPathThatBeginsWithIt) {
    PathConfinement const own("path:free");
    EXPECT_TRUE(own.admits("path:free"));
    EXPECT_FALSE(own.admits("free"));
}

TEST(PathConfinement, ComparesTextBehindACharacterNull) {
    PathConfinement const own("/content/m");
    EXPECT_FALSE(own.admits(I18NString(std::u16string_view(u"/content/m\0x", 12))));
}

TEST(PathConfinement, SaysWhichPathsItMeans) {
    try {
        PathConfinement("/content/m").require(I18NString(std::u16string(10'000, u'x')));
        FAIL() << "nothing was raised";
    } catch (ForeignPathException const& refused) {
        EXPECT_EQ(std::string(refused.what()),
                  "the session may only be asked about its own model path \"/content/m\", and \"" +
                      std::string(80, 'x') +
                      "...\" is another one; name its own, or open a session for the other");
    }
}

TEST(PathConfinement, LooksAtTheModelPathOfEveryActionThatHasOne) {
    PathConfinement const own("/content/m");
    I18NString other("file:m");
    I18NString same("path:/content/m");
    for (long const action : {VexAction::MetadataRequest, VexAction::AccessibilityRequest}) {
        VexParams in;
        in.AddParam(VexVariant(0L));
        in.AddParam(VexVariant(&other));
        EXPECT_THROW(own.requireIn(VexVariant(action), in), ForeignPathException);
        in.clear();
        in.AddParam(VexVariant(&other)); // no place of a path
        in.AddParam(VexVariant(&same));
        EXPECT_NO_THROW(own.requireIn(VexVariant(action), in));
    }
}

TEST(PathConfinement, LeavesValuesThatNameNoModelToThePlugin) {
    PathConfinement const own("/content/m");
    I18NString other("file:m");
    VexParams in;
    EXPECT_NO_THROW(own.requireIn(VexVariant(long{VexAction::MetadataRequest}), in));
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(7L));
    EXPECT_NO_THROW(own.requireIn(VexVariant(long{VexAction::MetadataRequest}), in));
    in.clear();
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&other));
    EXPECT_NO_THROW(own.requireIn(VexVariant(777L), in)); // an action of somebody's own
    EXPECT_NO_THROW(own.requireIn(VexVariant(&other), in));
}

/// Ann's sessions on a model under a catalogue.
class ConfinedSession : public testing::Test {
protected:
    ConfinedSession() { m_content.setModel(servedPath, servedModel()); }

    std::unique_ptr<vex::HostSession> open(vex::SessionPaths paths = vex::SessionPaths::Own) {
        return vex::openSession(vex::openVisit(m_content, {servedPath, "ann", I18NLocale()}),
                                paths);
    }

    vex::MemoryContent m_content{servedCatalogue()};
};

TEST_F(ConfinedSession, CallsNoPluginForAnotherPath) {
    vex::PluginProxy plugin(std::string(VEX_BAD_PLUGIN_DIR) + "/RuleBreaker.vpl", "RuleBreaker");
    plugin.Initialize();
    auto const session = open();
    VexParams in;
    I18NString path(std::to_string(ruleBreaker::ThrowInt).c_str()); // a call would end so
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&path));
    for (long const action : {VexAction::MetadataRequest, VexAction::AccessibilityRequest}) {
        EXPECT_THROW(vex::callAction(plugin, *session, VexVariant(action), in, {}),
                     ForeignPathException);
        auto const called =
            vex::callAction(plugin, *open(vex::SessionPaths::Any), VexVariant(action), in, {});
        EXPECT_THAT(called.text, HasSubstr("raised something that is not an exception"));
    }
}

TEST_F(ConfinedSession, AsksNoExtensionAboutAnotherPath) {
    auto const session = open();
    vex::PluginProxy& plugin = *servingPlugin();
    VexAccessExplanation explanation;
    KRLIDOM_OwnedDocument const request = vex::MetadataRequest().toDocument();
    KRLIDOM_Node node = request.document();
    class : public VexTreeObserver {
        void report(VexTreeReport const& /*report*/) override {}
        void reportOutside(VexTreeSize const& /*size*/) override {}
    } observer;
    EXPECT_THROW(plugin.explainAccess(*session, "file:m", {}, false, explanation),
                 ForeignPathException);
    EXPECT_THROW(plugin.explainTree(*session, "file:m", node, nullptr, observer),
                 ForeignPathException);
    EXPECT_THROW(plugin.answerAt(*session, "file:m", node, nullptr,
                                 m_content.getModel(servedPath)->model()->GetRootObject(),
                                 &observer),
                 ForeignPathException);
    EXPECT_NO_THROW(plugin.explainAccess(*session, servedPath, {}, false, explanation));
    plugin.Notify(*session, 1);
}

TEST_F(ConfinedSession, HasSecurityInformationForItsOwnPathAlone) {
    auto const session = open();
    EXPECT_NE(session->GetModelService()->GetSecurityInfoSource(servedPath), nullptr);
    for (char const* const path : foreignPaths) {
        EXPECT_EQ(session->GetModelService()->GetSecurityInfoSource(path), nullptr) << path;
    }
}

TEST_F(ConfinedSession, IsWhatTheTypedCallsUse) {
    vex::Service service(servingPlugin());
    vex::Visit const visit = vex::openVisit(m_content, {servedPath, "ann", I18NLocale()});
    vex::SessionPool pool(servingPlugin(), 1);
    for (vex::SessionKind const kind : {vex::SessionKind::Metadata, vex::SessionKind::Access}) {
        vex::SessionPool::Loan loan = pool.take(visit, kind);
        ASSERT_NE(loan.session().confinement(), nullptr);
        EXPECT_FALSE(loan.session().confinement()->admits("file:m"));
    }
    EXPECT_TRUE(service.metadata(visit, vex::MetadataRequest(), {}).end.isAnswered());
}

TEST(SessionWithoutCatalogue, MayBeAskedAboutAnyPath) {
    vex::MemoryContent content;
    content.setModel("file:m.xml", servedModel());
    vex::Visit const visit = vex::openVisit(content, {"file:m.xml", "", I18NLocale()});
    EXPECT_EQ(vex::openSession(visit)->confinement(), nullptr);
}

} // namespace
