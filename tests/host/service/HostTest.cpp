#include "host/service/Host.h"

#include "KRLException.h"
#include "VexObject.h"
#include "host/store/image/HostException.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <unistd.h>

namespace {

/// A folder with a catalogue of one model, whose text tests replace.
class HostTest : public testing::Test {
protected:
    HostTest()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("vex-host-test-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(m_folder);
        WriteModel("First");
    }
    ~HostTest() override { std::filesystem::remove_all(m_folder); }

    void WriteModel(std::string const& name) {
        std::ofstream(m_folder / "m.xml")
            << "<model defaultLocale=\"en\"><namespace id=\"n\" name=\"" << name << "\"/></model>";
    }

    std::shared_ptr<vex::Catalogue const> Catalogue() {
        vex::Diagnostics found;
        return vex::readCatalogueText(R"(<catalog><model path="/content/m" file="m.xml"/>
                                         <user name="ann"/></catalog>)",
                                      "c.xml", m_folder.string(), found);
    }

    static std::string NameIn(vex::HostSession const& session) {
        I18NString name;
        VEX_HANDLE const property =
            VexObject(session.findObject("n")).GetPropertyByName("name", nullptr);
        VexObject(property).GetValue(name, true);
        return name.toUtf8();
    }

    std::filesystem::path m_folder;
    vex::SessionRequest const m_request{"/content/m", "ann", I18NLocale()};
};

TEST_F(HostTest, SharesOneLoadedModelAmongSessions) {
    vex::Host host(Catalogue());
    auto const first = host.openSession(m_request);
    auto const second = host.openSession(m_request);
    EXPECT_EQ(first->getModel(), second->getModel());
}

TEST_F(HostTest, LeavesSessionsTheVersionThatTheyOpenedWhenAModelIsReloaded) {
    vex::Host host(Catalogue());
    auto const before = host.openSession(m_request);
    WriteModel("Second");
    host.reloadModel("/content/m");
    auto const after = host.openSession(m_request);
    EXPECT_EQ(NameIn(*before), "First");
    EXPECT_EQ(NameIn(*after), "Second");
    before->takeModel(host.getModel("/content/m"));
    EXPECT_EQ(NameIn(*before), "Second");
}

TEST_F(HostTest, KeepsTheOldVersionWhenTheNewOneCannotBeRead) {
    vex::Host host(Catalogue());
    auto const before = host.getModel("/content/m");
    std::ofstream(m_folder / "m.xml") << "<model";
    EXPECT_THROW(host.reloadModel("/content/m"), KRLDocumentException);
    EXPECT_EQ(host.getModel("/content/m"), before);
}

TEST_F(HostTest, NamesTheKnownUsersWhenOneIsUnknown) {
    vex::Host host(Catalogue());
    try {
        host.openSession({"/content/m", "bob", I18NLocale()});
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_STREQ(problem.what(), "unknown user \"bob\"; the catalogue has \"ann\"");
    }
}

TEST_F(HostTest, NamesTheKnownModelPathsWhenOneIsUnknown) {
    vex::Host host(Catalogue());
    try {
        host.openSession({"/content/x", "ann", I18NLocale()});
        FAIL() << "nothing was raised";
    } catch (vex::HostException const& problem) {
        EXPECT_STREQ(problem.what(),
                     "unknown model path \"/content/x\"; the catalogue has \"/content/m\"");
    }
}

} // namespace
