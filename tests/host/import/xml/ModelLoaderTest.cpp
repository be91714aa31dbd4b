#include "KRLException.h"
#include "tests/host/store/image/ModelProbe.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& content)
        : m_path(std::filesystem::temp_directory_path() /
                 ("vex-model-loader-" + std::to_string(::getpid()) + ".xml")) {
        std::ofstream(m_path, std::ios::binary) << content;
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }
    std::string path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

struct Found {
    std::string rule;
    unsigned long line;
    unsigned long column;
    bool operator==(Found const& other) const {
        return rule == other.rule && line == other.line && column == other.column;
    }
};

void PrintTo(Found const& found, std::ostream* out) {
    *out << found.rule << " at " << found.line << ":" << found.column;
}

std::vector<Found> errorsOf(std::string const& text, vex::LoadOptions const& options = {}) {
    vex::Diagnostics found;
    auto const model = vex::loadModelText(text, "m.xml", options, found);
    EXPECT_EQ(model == nullptr, !found.empty());
    std::vector<Found> shortened;
    for (vex::Diagnostic const& diagnostic : found) {
        EXPECT_EQ(diagnostic.severity, vex::Severity::Error);
        EXPECT_EQ(diagnostic.file, "m.xml");
        EXPECT_FALSE(diagnostic.text.empty());
        shortened.push_back({diagnostic.rule, diagnostic.line, diagnostic.column});
    }
    return shortened;
}

TEST(ModelLoader, ReadsAFile) {
    TemporaryFile const file("<model><a id='1'/></model>");
    EXPECT_TRUE(vex::loadModel(file.path())->findById("1").IsNotNull());
}

TEST(ModelLoader, RefusesTextThatIsNotWellFormed) {
    EXPECT_THAT(errorsOf("<model>\n<a></b></model>"), ElementsAre(Found{"not-well-formed", 2, 6}));
    EXPECT_EQ(errorsOf("").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("model").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("<model>").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("<model/><model/>").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("<model a='1' a='2'/>").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("<model>&unknown;</model>").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf("<model>\xFF\xFE</model>").front().rule, "not-well-formed");
    EXPECT_EQ(errorsOf(std::string("<model>\0</model>", 16)).front().rule, "not-well-formed");
}

/// In UTF-16, the way it lies in this machine, with a mark in front.
std::string inUtf16(std::u16string const& text) {
    std::u16string const marked = u'\uFEFF' + text;
    return {reinterpret_cast<char const*>(marked.data()), marked.size() * sizeof(char16_t)};
}

TEST(ModelLoader, RefusesTextsThatOnlyXml11CanHold) {
    std::string const start = "<?xml version='1.1'?>\n<model>\n";
    auto const unwritable = [](unsigned long line, unsigned long column) {
        return ElementsAre(Found{"unwritable-text", line, column});
    };
    EXPECT_THAT(errorsOf(start + "<a name='&#1;'/></model>"), unwritable(3, 17));
    EXPECT_THAT(errorsOf(start + "<a id='&#x1F;'/></model>"), unwritable(3, 17));
    EXPECT_THAT(errorsOf(start + "<a><property name='p'>x&#8;</property></a></model>"),
                unwritable(3, 39));
    EXPECT_THAT(errorsOf(start + "<a><property name='p&#2;'/></a></model>"), unwritable(3, 28));
    EXPECT_THAT(errorsOf(start + "<a>&#x1B;[2J</a></model>"), unwritable(3, 17));
    EXPECT_TRUE(
        errorsOf(start + "<a name='&#x7F;&#x85;&#x9F;'>&#x9;\xE2\x80\xA8</a></model>").empty());
}

TEST(ModelLoader, RefusesHalfACharacter) {
    auto const withName = [](char16_t unit) {
        return inUtf16(u"<model><a name='" + std::u16string(1, unit) + u"'/></model>");
    };
    EXPECT_THAT(errorsOf(withName(0xD800)), ElementsAre(Found{"unwritable-text", 1, 21}));
    EXPECT_THAT(errorsOf(withName(0xDC00)), ElementsAre(Found{"not-well-formed", 1, 18}));
    EXPECT_TRUE(errorsOf(withName(u'\u00E4')).empty());
}

TEST(ModelLoader, RefusesADocumentTypeAndOpensNothingThatItNames) {
    EXPECT_EQ(errorsOf("<!DOCTYPE model><model/>").front().rule, "document-type");
    EXPECT_EQ(errorsOf("<!DOCTYPE model SYSTEM 'file:///etc/passwd'><model/>").front().rule,
              "document-type");
    EXPECT_EQ(errorsOf("<!DOCTYPE model [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>"
                       "<model>&e;</model>")
                  .front()
                  .rule,
              "document-type");
}

TEST(ModelLoader, RefusesARootThatIsNotAModel) {
    EXPECT_THAT(errorsOf("<catalog><a id='1'/><b id='1'/></catalog>"),
                ElementsAre(Found{"root", 1, 10}));
    EXPECT_EQ(errorsOf("<property name='p'/>").front().rule, "root");
}

TEST(ModelLoader, RefusesAPropertyWithoutName) {
    EXPECT_THAT(
        errorsOf("<model>\n  <property>x</property><property name=''/></model>"),
        ElementsAre(Found{"property-without-name", 2, 13}, Found{"property-without-name", 2, 44}));
}

TEST(ModelLoader, RefusesTwoElementsWithOneId) {
    EXPECT_THAT(errorsOf("<model id='a'><b id='c'/>\n<d id='a'/><e id='C'/></model>"),
                ElementsAre(Found{"duplicate-id", 2, 12}));
}

TEST(ModelLoader, RefusesTwoValuesOfOnePropertyForOneLocale) {
    EXPECT_THAT(errorsOf("<model><property name='p' locale='de_AT'/><a/>\n"
                         "<property name='p' locale='de-at'>x</property>"
                         "<property name='p' locale='de'/></model>"),
                ElementsAre(Found{"duplicate-value", 2, 35}));
}

TEST(ModelLoader, RefusesTwoValuesForOneLocaleAmongVeryMany) {
    std::string text = "<model>";
    for (int i = 0; i < 100; ++i) {
        text += "<property name='p" + std::to_string(i) + "' locale='de'/>";
    }
    EXPECT_TRUE(errorsOf(text + "<a><property name='p7' locale='de'/></a></model>").empty());
    EXPECT_EQ(errorsOf(text + "<property name='p7' locale='de'/></model>").size(), 1U);
    EXPECT_EQ(errorsOf(text + "<property name='p99' locale='de'/></model>").size(), 1U);
}

TEST(ModelLoader, AllowsSeveralUnlocalisedValues) {
    EXPECT_TRUE(errorsOf("<model p='1'><property name='p'/><property name='p'/></model>").empty());
}

TEST(ModelLoader, RefusesLocalesOutsideTheModelElement) {
    EXPECT_THAT(errorsOf("<model><a>\n<locales><locale>de</locale></locales></a></model>"),
                ElementsAre(Found{"locales-outside-model", 2, 10}));
    EXPECT_EQ(errorsOf("<model><model><locales/></model></model>").front().rule,
              "locales-outside-model");
}

TEST(ModelLoader, RefusesOtherElementsInsidePropertiesAndLocales) {
    EXPECT_THAT(errorsOf("<model><property name='p'>\n<a><b/></a></property></model>"),
                ElementsAre(Found{"element-in-property", 2, 4}));
    EXPECT_EQ(errorsOf("<model><locales><a/></locales></model>").front().rule,
              "element-in-locales");
    EXPECT_EQ(errorsOf("<model><locales><locale>de<a/></locale></locales></model>").front().rule,
              "element-in-locale");
}

TEST(ModelLoader, RefusesAnUnknownLocale) {
    EXPECT_THAT(
        errorsOf("<model defaultLocale='klingon'>\n<locales><locale>?</locale></locales>"
                 "<property name='p' locale='qq_QQ'/><property name='p' locale=''/></model>"),
        ElementsAre(Found{"unknown-locale", 1, 32}, Found{"unknown-locale", 2, 28},
                    Found{"unknown-locale", 2, 73}, Found{"unknown-locale", 2, 103}));
}

TEST(ModelLoader, ReportsEveryErrorInTheOrderOfTheDocument) {
    EXPECT_THAT(errorsOf("<model>\n<property/>\n<a id='1'/><a id='1'/>\n<b><locales/></b>\n<c>"),
                ElementsAre(Found{"property-without-name", 2, 12}, Found{"duplicate-id", 3, 23},
                            Found{"locales-outside-model", 4, 14}, Found{"not-well-formed", 5, 4}));
}

TEST(ModelLoader, StopsReportingAtSomePoint) {
    std::string text = "<model>";
    for (int i = 0; i < 5'000; ++i) {
        text += "<property/>";
    }
    EXPECT_EQ(errorsOf(text + "</model>").size(), 1'000U);
}

TEST(ModelLoader, RaisesTheFirstErrorWithItsPlace) {
    try {
        vex::loadModelText("<model>\n<property/><property/></model>", "m.xml");
        FAIL();
    } catch (KRLDocumentException const& problem) {
        EXPECT_EQ(problem.GetLine(), 2U);
        EXPECT_EQ(problem.GetColumn(), 12U);
        EXPECT_THAT(problem.what(), HasSubstr("m.xml"));
        EXPECT_THAT(problem.what(), HasSubstr("name"));
    }
}

TEST(ModelLoader, RefusesAFileThatCannotBeRead) {
    for (std::string const& path :
         {std::string("/nowhere/m.xml"), std::filesystem::temp_directory_path().string()}) {
        vex::Diagnostics found;
        EXPECT_EQ(vex::loadModel(path, {}, found), nullptr);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].rule, "unreadable");
        EXPECT_EQ(found[0].file, path);
        EXPECT_THROW(vex::loadModel(path), KRLDocumentException);
    }
}

TEST(ModelLoader, ReadsAPipeThatDeliversLittleByLittle) {
    std::string const path =
        (std::filesystem::temp_directory_path() / ("vex-pipe-" + std::to_string(::getpid())))
            .string();
    std::string const script = "mkfifo " + path +
                               "; (for part in '<' 'mod' 'el><a i' \"d='1'\" "
                               "'/></mo' 'del>'; do printf %s \"$part\"; sleep 0.01; done) > " +
                               path + " &";
    ASSERT_EQ(std::system(script.c_str()), 0);
    auto const model = vex::loadModel(path);
    std::filesystem::remove(path);
    EXPECT_TRUE(model->findById("1").IsNotNull());
}

TEST(ModelLoader, HoldsElementsToADepth) {
    vex::LoadOptions options;
    options.limits.depth = 3;
    EXPECT_TRUE(errorsOf("<model><a><b/></a><a><property name='p'/></a></model>", options).empty());
    EXPECT_THAT(errorsOf("<model><a>\n<b><c/></b></a></model>", options),
                ElementsAre(Found{"too-deep", 2, 8}));
    auto const nested = [](int depth) {
        std::string text = "<model>";
        for (int i = 1; i < depth; ++i) {
            text += "<folder>";
        }
        for (int i = 1; i < depth; ++i) {
            text += "</folder>";
        }
        return text + "</model>";
    };
    EXPECT_TRUE(errorsOf(nested(512)).empty());
    EXPECT_EQ(errorsOf(nested(513)).front().rule, "too-deep");
}

TEST(ModelLoader, HoldsAttributesAndNamesToTheirLimits) {
    vex::LoadOptions options;
    options.limits.attributesPerElement = 2;
    options.limits.nameLength = 6;
    options.limits.distinctNames = 4;
    EXPECT_TRUE(errorsOf("<model a='' b=''><c/></model>", options).empty());
    EXPECT_EQ(errorsOf("<model a='' b='' c=''/>", options).front().rule, "too-many-attributes");
    EXPECT_EQ(errorsOf("<model longname=''/>", options).front().rule, "name-too-long");
    EXPECT_EQ(errorsOf("<model><longname/></model>", options).front().rule, "name-too-long");
    EXPECT_EQ(errorsOf("<model a='' b=''><c/><d/></model>", options).front().rule,
              "too-many-names");
}

TEST(ModelLoader, DoesNotCountValuesAsNames) {
    vex::LoadOptions options;
    options.limits.distinctNames = 4;
    options.limits.nameLength = 8;
    EXPECT_TRUE(errorsOf("<model><property name='a very long name'/><property name='2'/>"
                         "<property name='3'/><property name='4'/></model>",
                         options)
                    .empty());
}

TEST(ModelLoader, TellsHowFarItIs) {
    std::string const text = "<model>" + std::string(1'000'000, ' ') + "</model>";
    std::size_t calls = 0;
    std::size_t last = 0;
    vex::LoadOptions options;
    options.progress = [&](std::size_t done, std::size_t total) {
        EXPECT_GE(done, last);
        EXPECT_EQ(total, text.size());
        last = done;
        ++calls;
    };
    vex::loadModelText(text, "m.xml", options);
    EXPECT_GT(calls, 5U);
    EXPECT_EQ(last, text.size());
}

TEST(ModelLoader, RemembersWhereElementsStandWhenAsked) {
    std::string const text = "<model>\n  <a id='1'/>\n</model>";
    vex::LoadOptions options;
    options.keepPositions = true;
    auto const with = vex::loadModelText(text, "m.xml", options);
    ASSERT_TRUE(with->findPosition(with->findById("1")).has_value());
    EXPECT_EQ(with->findPosition(with->findById("1"))->line, 2U);
    EXPECT_EQ(with->findPosition(with->findById("1"))->column, 14U);
    EXPECT_FALSE(with->findPosition(ModelProbe::property(with->findById("1"), "ID")).has_value());
    EXPECT_FALSE(with->findPosition(VEX_HANDLE()).has_value());
    auto const without = vex::loadModelText(text, "m.xml");
    EXPECT_FALSE(without->findPosition(without->findById("1")).has_value());
}

TEST(ModelLoader, PassesOnWhatTheProgressCallRaises) {
    vex::LoadOptions options;
    options.progress = [](std::size_t, std::size_t) { throw KRLLimitException("enough"); };
    EXPECT_THROW(vex::loadModelText("<model/>", "m.xml", options), KRLLimitException);
}

TEST(Diagnostic, IsShownWithItsPlaceAsFarAsKnown) {
    using vex::Severity;
    EXPECT_EQ(toString(vex::Diagnostic{Severity::Error, "r", "f", 1, 2, "t"}), "f:1:2: error: t");
    EXPECT_EQ(toString(vex::Diagnostic{Severity::Warning, "r", "f", 3, 0, "t"}), "f:3: warning: t");
    EXPECT_EQ(toString(vex::Diagnostic{Severity::Error, "r", "", 0, 0, "t"}), "error: t");
}

} // namespace
