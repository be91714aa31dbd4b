// Many sessions at once on shared models, while a model is loaded anew.

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexAction.h"
#include "VexNotification.h"
#include "host/content/FileContent.h"
#include "host/service/PluginException.h"
#include "host/service/Service.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr int sessionCount = 8;
constexpr char const* tree =
    R"(<Metadata Depth="0"><Property name="*/@name"/><Property name="*/@_path"/>
       <Property name="*/@_ref"/><Property name="*/*"/><Property name="/@decimalSeparator"/></Metadata>)";
constexpr char const* item =
    R"(<Metadata start_atRef="[Sales].[Orders again].[Quantity]"><Property name="*/@name"/></Metadata>)";

vex::PluginProxy& plugin() {
    static std::shared_ptr<vex::PluginProxy> const loaded = vex::loadPlugin(VEX_PLUGIN_FILE);
    return *loaded;
}

/// How many times a session is to go over to a newer version.
int wantedChanges() {
    char const* const changes = std::getenv("VEX_CONCURRENCY_CHANGES");
    return changes == nullptr ? 20 : std::atoi(changes);
}

vex::ActionOutcome call(vex::HostSession& session, long action, VexVariant const& last,
                        bool hasMode) {
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text(session.confinement()->path()));
    in.AddParam(last);
    if (hasMode) {
        in.AddParam(VexVariant(0L));
    }
    return vex::callAction(plugin(), session, VexVariant(action), in, {});
}

std::string ask(vex::HostSession& session, char const* request) {
    vex::ActionValues values;
    vex::ActionOutcome const outcome =
        call(session, VexAction::MetadataRequest,
             values.node(KRLIDOM_Reader::parse(request, "request")), false);
    return outcome.text + KRLIDOM_Writer::toUtf8(outcome.response.document());
}

std::string askAccess(vex::HostSession& session) {
    vex::ActionOutcome const outcome =
        call(session, VexAction::AccessibilityRequest, VexVariant(session.findObject("i")), true);
    return outcome.text + (outcome.appended.size() == 2
                               ? std::to_string(static_cast<long>(outcome.appended[1]))
                               : "");
}

/// Two models in a folder of its own. The version of the first
/// stands in a name.
class Sessions : public testing::Test {
protected:
    Sessions()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("vex-concurrency-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_folder);
        WriteModel("m.xml", 0);
        WriteModel("other.xml", 0);
        vex::Diagnostics found;
        m_content = std::make_unique<vex::FileContent>(vex::readCatalogueText(
            R"(<catalog>
                 <model path="/content/m" file="m.xml"><grant role="r" view="v"/></model>
                 <model path="/content/other" file="other.xml"><grant role="r" view="v"/></model>
                 <user name="ann"><role>r</role></user>
               </catalog>)",
            "c.xml", m_folder.string(), found));
    }
    ~Sessions() override { std::filesystem::remove_all(m_folder); }

    void WriteModel(std::string const& file, int version) const {
        // In one step, as whoever publishes a model does it.
        std::filesystem::path const fresh = m_folder / (file + ".new");
        std::ofstream(fresh) << R"(<model defaultLocale="en">
            <locales><locale>en</locale><locale>de</locale></locales>
            <namespace id="n" name="Sales">
              <querySubject id="q" name="Orders" screenTip="version )"
                             << version << R"("><queryItem id="i" name="Quantity"/></querySubject>
              <shortcut id="s" name="Orders again" refobj="[Sales].[Orders]"/>
            </namespace>
            <securityViews>
              <securityView id="v"><set kind="included"><item>n</item><item>q</item><item>i</item>
                <item>s</item></set></securityView>
              <securityView id="w" roleBased="true"><member roleId="r"/><set kind="included">
                <item>n</item><item>q</item><item>i</item></set></securityView>
            </securityViews></model>)";
        std::filesystem::rename(fresh, m_folder / file);
    }

    std::unique_ptr<vex::HostSession> Open(int number) const {
        return vex::openSession(
            vex::openVisit(*m_content, {number % 4 == 3 ? "/content/other" : "/content/m", "ann",
                                        I18NLocale(number % 2 == 0 ? "en" : "de")}));
    }

    std::string AskFresh(int number, char const* request) const {
        std::unique_ptr<vex::HostSession> const session = Open(number);
        std::string answer = ask(*session, request);
        plugin().Notify(*session, VexNotification::SessionClosed);
        return answer;
    }

    std::filesystem::path m_folder;
    std::unique_ptr<vex::FileContent> m_content;
};

TEST_F(Sessions, AnswerAlikeWhileAModelIsLoadedAnew) {
    constexpr char const* versionQuestion =
        R"(<Metadata start_at="[Sales].[Orders]"><Property name="*/@screenTip"/>
           <Property name="*/querySubject"/></Metadata>)";
    // In English and in German.
    std::string const expectedTrees[] = {AskFresh(0, tree), AskFresh(1, tree)};
    std::string const expectedItem = AskFresh(0, item);
    ASSERT_THAT(expectedTrees[0], testing::HasSubstr("Quantity"));
    ASSERT_NE(expectedTrees[0], expectedTrees[1]);
    std::atomic<bool> done{false};
    std::atomic<int> wrong{0};
    std::atomic<int> answers{0};
    std::atomic<int> newVersions{0};

    auto const work = [&](int number) {
        std::string const& expectedTree = expectedTrees[number % 2];
        while (!done) {
            std::unique_ptr<vex::HostSession> const session = Open(number);
            plugin().Notify(*session, VexNotification::SessionOpened);
            std::string const version = ask(*session, versionQuestion);
            for (int round = 0; round < 20 && !done; ++round) {
                wrong += ask(*session, tree) == expectedTree ? 0 : 1;
                wrong += ask(*session, item) == expectedItem ? 0 : 1;
                // The version that was opened stays, whatever was loaded since.
                wrong += ask(*session, versionQuestion) == version ? 0 : 1;
                answers += 3;
            }
            if (number % 4 != 3) {
                auto const newest = m_content->getModel("/content/m")->model();
                bool const changed = newest != session->getModel();
                session->takeModel(newest);
                plugin().Notify(*session, VexNotification::ModelReloaded);
                newVersions += changed && ask(*session, versionQuestion) != version ? 1 : 0;
                wrong += ask(*session, tree) == expectedTree ? 0 : 1;
            }
            plugin().Notify(*session, VexNotification::SessionClosed);

            std::unique_ptr<vex::HostSession> const asking = Open(number);
            wrong += askAccess(*asking) == "1" ? 0 : 1;
            plugin().Notify(*asking, VexNotification::SessionClosed);
        }
    };
    std::vector<std::thread> threads;
    for (int number = 0; number < sessionCount; ++number) {
        threads.emplace_back(work, number);
    }
    int const wanted = wantedChanges();
    int const mostVersions = 1'000 * wanted; // ends where no session goes over to any
    for (int version = 1; newVersions < wanted && version < mostVersions; ++version) {
        WriteModel("m.xml", version);
        m_content->reloadModel("/content/m");
        for (int const before = answers; answers == before;) {
            std::this_thread::yield();
        }
    }
    done = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    RecordProperty("answers", answers);
    RecordProperty("newVersions", newVersions);
    EXPECT_EQ(wrong, 0);
    EXPECT_GE(newVersions, wanted);
}

TEST_F(Sessions, RefuseASecondActionWhileOneRuns) {
    std::unique_ptr<vex::HostSession> const session = Open(0);
    std::string const expected = ask(*session, tree);
    std::atomic<int> answered{0};
    std::atomic<int> refused{0};
    std::atomic<int> wrong{0};
    std::string const refusal = "does one thing at a time: wait for its answer, or open a second";
    auto const work = [&] {
        for (int i = 0; i < 200; ++i) {
            std::string const answer = ask(*session, tree);
            if (answer == expected) {
                ++answered;
            } else if (answer.find(refusal) != std::string::npos) {
                ++refused;
            } else {
                ++wrong;
            }
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(answered + refused, 800);
    EXPECT_GT(answered, 0);
    EXPECT_EQ(ask(*session, tree), expected);
    plugin().Notify(*session, VexNotification::SessionClosed);
}

TEST_F(Sessions, RefuseASecondActionWithAMessageWhileOneSurelyRuns) {
    std::unique_ptr<vex::HostSession> const session = Open(0);
    {
        vex::HostSession::Turn const running(*session);
        EXPECT_THAT(ask(*session, tree),
                    testing::AllOf(testing::HasSubstr("DoAction was called by the host while "
                                                      "another call of the same session runs"),
                                   testing::EndsWith("<Response><Result/></Response>")));
        EXPECT_THROW(plugin().Notify(*session, VexNotification::SessionClosed),
                     vex::PluginException);
    }
    EXPECT_THAT(ask(*session, tree), testing::HasSubstr("Quantity"));
    plugin().Notify(*session, VexNotification::SessionClosed);
}

} // namespace
