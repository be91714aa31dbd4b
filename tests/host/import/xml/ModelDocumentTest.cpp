#include "host/import/xml/ModelDocument.h"

#include "host/import/xml/ModelLoader.h"
#include "tests/naive/ModelGenerator.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<vex::Model const> read(std::string const& document) {
    return vex::loadModelText(document, "test.model.xml");
}

std::string writtenAgain(std::string const& inside, std::string const& attributes = "") {
    std::string const document =
        vex::modelDocumentOf(*read("<model" + attributes + ">" + inside + "</model>"));
    std::string const head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    EXPECT_EQ(document.substr(0, head.size()), head);
    return document.substr(head.size());
}

TEST(ModelDocument, HasOneFormForEveryWayToSayTheSame) {
    std::string const expected = R"(<model id="m" defaultLocale="de_AT">
  <locales>
    <locale>de_AT</locale>
  </locales>
  <namespace id="n" name="N" usage="a&quot;b">
    <folder/>
  </namespace>
</model>
)";
    EXPECT_EQ(writtenAgain("<locales><locale> de-at </locale></locales><!-- c -->"
                           "<namespace name='N' usage='a\"b' id='n'><folder/></namespace>",
                           " defaultLocale='de-AT' id='m'"),
              expected);
    EXPECT_EQ(writtenAgain("<locales><locale>de_AT</locale></locales><namespace id='n'>"
                           "<property name='name'>N</property><folder></folder>"
                           "<property name='usage'> a\"b </property></namespace>",
                           " id='m' defaultLocale='de_AT'"),
              expected);
}

TEST(ModelDocument, WritesAsElementsWhatNoAttributeCanSay) {
    EXPECT_EQ(writtenAgain("<a x='1'><property name='id'>2</property><property name='y'>3"
                           "</property></a><b><property name='n' locale='en'>t</property>"
                           "<property name='m' role='r'/><property name='1 2'/>"
                           "<property name='s'>u<property name='v'/></property></b>"),
              R"(<model>
  <a x="1">
    <property name="id">2</property>
    <property name="y">3</property>
  </a>
  <b>
    <property name="n" locale="en">t</property>
    <property name="m" role="r"/>
    <property name="1 2"/>
    <property name="s">u
      <property name="v"/>
    </property>
  </b>
</model>
)");
}

TEST(ModelDocument, WritesAsAttributesWhatHasWhiteSpaceAtItsEnds) {
    EXPECT_EQ(writtenAgain("<a x=' 1&#10;' y='&#9;'/>"),
              "<model>\n  <a x=\" 1&#10;\" y=\"&#9;\"/>\n</model>\n");
}

TEST(ModelDocument, TellsLocalesFromAPropertyOfThatName) {
    EXPECT_EQ(writtenAgain("<property name='locales'><property name='locale'>de</property>"
                           "</property><a><property name='locales'/></a>"),
              R"(<model>
  <property name="locales">
    <property name="locale">de</property>
  </property>
  <a locales=""/>
</model>
)");
}

TEST(ModelDocument, OfAModelDoesNotSayItsLanguageByAPropertyOfThatName) {
    EXPECT_EQ(writtenAgain("<property name='defaultLocale'>de</property>"),
              "<model>\n  <property name=\"defaultLocale\">de</property>\n</model>\n");
}

TEST(ModelDocument, IsTheSameWhenItIsReadAndWrittenAgain) {
    for (unsigned seed = 1; seed <= 600; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        naive::Random random(seed);
        auto const model = read(naive::generateOddModel(random, 12));
        std::string const document = vex::modelDocumentOf(*model);
        EXPECT_EQ(vex::modelDocumentOf(*read(document)), document);
    }
}

} // namespace
