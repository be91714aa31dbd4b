#include "host/service/SessionPool.h"

#include "VexTrace.h"
#include "host/content/MemoryContent.h"
#include "tests/host/service/BadPlugins.h"
#include "tests/host/service/RuleBreaker.h"
#include "tests/host/service/SmallModel.h"

#include <cstring>
#include <new>

#include <gtest/gtest.h>

namespace {

using vex::SessionKind;
using vex::SessionPool;

/// What the plug-in was told of sessions.
struct Told {
    int opened = 0;
    int other = 0;
} told;

class SessionPoolTest : public testing::Test {
protected:
    SessionPoolTest() {
        m_plugin->Initialize();
        m_content.setModel("m", smallModel());
        told = {};
        VexSetTraceSink([](char const* text) {
            ++(std::strcmp(text, ruleBreaker::openedTrace) == 0 ? told.opened : told.other);
        });
    }
    ~SessionPoolTest() override { VexSetTraceSink(nullptr); }

    static std::shared_ptr<vex::Catalogue const> catalogue() {
        vex::Diagnostics found;
        return vex::readCatalogueText(R"(<catalog><user name="ann"/><user name="ben"/></catalog>)",
                                      "c.xml", ".", found);
    }

    vex::Visit visit(char const* user = "ann", char const* locale = "en") {
        return vex::openVisit(m_content, {"m", user, I18NLocale(locale)});
    }

    /// The session of one call.
    static vex::HostSession* call(SessionPool& pool, vex::Visit const& visit,
                                  SessionKind kind = SessionKind::Metadata) {
        SessionPool::Loan loan = pool.take(visit, kind);
        return &loan.session();
    }

    std::shared_ptr<vex::PluginProxy> m_plugin =
        std::make_shared<vex::PluginProxy>(badPluginFile("RuleBreaker"), "RuleBreaker");
    vex::MemoryContent m_content{catalogue()};
};

// Another one at the same address would be given his session.
TEST_F(SessionPoolTest, KeepsTheUserOfAnIdleSession) {
    SessionPool pool(m_plugin, 8);
    vex::Visit asked = visit();
    asked.user = std::make_shared<vex::CatalogueUser>(vex::CatalogueUser{"boss", {"boss"}});
    std::weak_ptr<vex::CatalogueUser const> const made = asked.user;
    call(pool, asked);
    asked.user.reset();
    EXPECT_FALSE(made.expired());
}

TEST_F(SessionPoolTest, UsesAnIdleSessionAgain) {
    SessionPool pool(m_plugin, 8);
    vex::HostSession* const first = call(pool, visit());
    EXPECT_EQ(call(pool, visit()), first);
    EXPECT_EQ(told.opened, 1);
    EXPECT_EQ(told.other, 0);
    EXPECT_EQ(pool.idleCount(), 1U);
}

TEST_F(SessionPoolTest, OpensAnotherSessionWhileTheFirstIsLent) {
    SessionPool pool(m_plugin, 8);
    SessionPool::Loan first = pool.take(visit(), SessionKind::Metadata);
    EXPECT_NE(call(pool, visit()), &first.session());
    EXPECT_EQ(told.opened, 2);
}

TEST_F(SessionPoolTest, KeepsKindsUsersAndLanguagesApart) {
    SessionPool pool(m_plugin, 8);
    call(pool, visit());
    call(pool, visit(), SessionKind::Access);
    call(pool, visit("ben"));
    call(pool, visit("ann", "de"));
    EXPECT_EQ(told.opened, 4);
    call(pool, visit("ann", "fr")); // which is answered in English
    EXPECT_EQ(told.opened, 4);
}

TEST_F(SessionPoolTest, ClosesTheSessionsThatWereIdleLongest) {
    SessionPool pool(m_plugin, 2);
    call(pool, visit("ann"));
    call(pool, visit("ben"));
    call(pool, visit("ann"));
    call(pool, visit("ann", "de"));
    EXPECT_EQ(pool.idleCount(), 2U);
    EXPECT_EQ(told.other, 1);
    call(pool, visit("ann"));
    EXPECT_EQ(told.opened, 3);
    call(pool, visit("ben"));
    EXPECT_EQ(told.opened, 4);
}

TEST_F(SessionPoolTest, ClosesTheSessionsOfAModelThatWasReplaced) {
    SessionPool pool(m_plugin, 8);
    vex::Visit const before = visit();
    call(pool, before);
    call(pool, before, SessionKind::Access);
    m_content.setModel("m", smallModel());
    EXPECT_EQ(pool.take(visit(), SessionKind::Metadata).session().getModel(),
              m_content.getModel("m")->model());
    EXPECT_EQ(told.opened, 3);
    EXPECT_EQ(told.other, 2);
    EXPECT_EQ(pool.idleCount(), 1U);
}

TEST_F(SessionPoolTest, ServesAVisitThatBeganBeforeTheModelWasReplaced) {
    SessionPool pool(m_plugin, 8);
    vex::Visit const before = visit();
    m_content.setModel("m", smallModel());
    EXPECT_EQ(pool.take(before, SessionKind::Metadata).session().getModel(),
              before.version->model());
    EXPECT_EQ(pool.idleCount(), 0U);
}

TEST_F(SessionPoolTest, ClosesASpoiltSession) {
    SessionPool pool(m_plugin, 8);
    {
        SessionPool::Loan loan = pool.take(visit(), SessionKind::Metadata);
        loan.spoil();
    }
    EXPECT_EQ(pool.idleCount(), 0U);
    EXPECT_EQ(told.other, 1);
}

TEST_F(SessionPoolTest, ClosesASessionOnceMoreWhenThePluginHadNoMemoryForIt) {
    SessionPool pool(m_plugin, 0);
    VexSetTraceSink([](char const* text) {
        if (std::strcmp(text, ruleBreaker::openedTrace) != 0) {
            throw std::bad_alloc();
        }
    });
    call(pool, visit("ann"));
    VexSetTraceSink([](char const*) { ++told.other; });
    EXPECT_EQ(pool.idleCount(), 0U);
    { SessionPool::Loan const loan = pool.take(visit("ben"), SessionKind::Metadata); }
    EXPECT_EQ(told.other, 3); // one is opened, and two are closed
}

TEST_F(SessionPoolTest, KeepsNoneWhenItIsToKeepNone) {
    SessionPool pool(m_plugin, 0);
    call(pool, visit());
    EXPECT_EQ(told.other, 1);
}

TEST_F(SessionPoolTest, ClosesWhatIsIdleAtItsEnd) {
    {
        SessionPool pool(m_plugin, 8);
        call(pool, visit());
        call(pool, visit("ben"));
    }
    EXPECT_EQ(told.other, 2);
}

} // namespace
