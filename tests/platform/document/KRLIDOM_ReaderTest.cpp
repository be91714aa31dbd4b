#include "KRLIDOM_Reader.h"

#include "KRLException.h"
#include "KRLIDOM_ParserLimits.h"
#include "KRLIDOM_Writer.h"
#include "tests/support/AlikeNames.h"

#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::string reread(std::string_view text) {
    return KRLIDOM_Writer::toUtf8(KRLIDOM_Reader::parse(text, "request.xml").document());
}

struct Refusal {
    std::string problem;
    unsigned long line;
    unsigned long column;
};

Refusal refusal(std::string_view text, KRLIDOM_ReadLimits const& limits = {}) {
    try {
        KRLIDOM_Reader::parse(text, "request.xml", limits);
    } catch (KRLDocumentException const& failure) {
        EXPECT_EQ(std::string(failure.what()).rfind("request.xml", 0), 0U) << failure.what();
        return {failure.GetProblem(), failure.GetLine(), failure.GetColumn()};
    }
    return {"", 0, 0};
}

std::string repeat(std::string_view text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

std::string numbered(std::string_view before, std::string_view after, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text.append(before).append(std::to_string(i)).append(after);
    }
    return text;
}

TEST(KRLIDOMReader, ReadsElementsAttributesAndText) {
    EXPECT_EQ(reread("<?xml version='1.0'?>\n<a n='1'>x &amp; y<b/> &#x65E5;</a>"),
              "<a n=\"1\">x &amp; y<b/> \xE6\x97\xA5</a>");
}

TEST(KRLIDOMReader, ReadsTheEncodingThatTheDocumentNames) {
    EXPECT_EQ(reread("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"), "<a>\xC3\xA4</a>");
    std::u16string const wide = u"\uFEFF<a>\u00E4</a>";
    EXPECT_EQ(reread({reinterpret_cast<char const*>(wide.data()), wide.size() * 2}),
              "<a>\xC3\xA4</a>");
}

TEST(KRLIDOMReader, CountsElements) {
    EXPECT_EQ(KRLIDOM_Reader::parse("<a><b/><b><c/></b></a>", "t").elementCount(), 4U);
}

TEST(KRLIDOMReader, LeavesADocumentThatCanBeAddedTo) {
    KRLIDOM_OwnedDocument const owner = KRLIDOM_Reader::parse("<a/>", "t");
    KRLIDOM_Document const document = owner.document();
    document.getDocumentElement().appendChild(document.createElement("b"));
    EXPECT_EQ(owner.elementCount(), 2U);
    EXPECT_GT(owner.byteCount(), 0U);
}

TEST(KRLIDOMReader, ReadsAMarkedSectionAsText) {
    KRLIDOM_OwnedDocument const owner =
        KRLIDOM_Reader::parse("<a>x<![CDATA[<y>]]>z<![CDATA[]]></a>", "t");
    KRLIDOM_Node const text = owner.document().getDocumentElement().getFirstChild();
    EXPECT_EQ(KRLIDOM_Text(text).getData(), "x<y>z");
    EXPECT_TRUE(text.getNextSibling().isNull());
}

TEST(KRLIDOMReader, PassesCommentsAndInstructions) {
    EXPECT_EQ(reread("<!--before--><a><!--in--><?do it?><b/></a><!--after-->"),
              "<!--before--><a><!--in--><?do it?><b/></a><!--after-->");
}

TEST(KRLIDOMReader, TakesPrefixesAsPartOfTheName) {
    EXPECT_EQ(reread("<x:a y:b='1'/>"), "<x:a y:b=\"1\"/>");
}

TEST(KRLIDOMReader, RefusesAnEmptyDocument) {
    for (char const* text : {"", " \n\t\r\n"}) {
        Refusal const found = refusal(text);
        EXPECT_EQ(found.problem,
                  "The document is empty. Give an XML document with one root element.");
        EXPECT_EQ(found.line, 1U);
    }
}

TEST(KRLIDOMReader, SaysWhereADocumentIsNotWellFormed) {
    Refusal const found = refusal("<a>\n  <b>\n</a>");
    EXPECT_EQ(found.problem.rfind("The document is not well-formed: ", 0), 0U) << found.problem;
    EXPECT_EQ(found.line, 3U);
    EXPECT_GT(found.column, 0U);
}

TEST(KRLIDOMReader, RefusesWhatIsNotWellFormed) {
    for (std::string_view text :
         {"junk", "<a", "<a>", "<a><b></a>", "<a/><b/>", "<a b=1/>", "<a b='1' b='2'/>",
          "<a>&nothing;</a>", "<a>&#0;</a>", "<a>\x01</a>", "<a>\xFF</a>", "<1/>", "<!--", "<a/>x",
          "<a b='<'/>", "<?xml version='1.0' encoding='no-such'?><a/>", "<a><![CDATA[</a>"}) {
        EXPECT_NE(refusal(text).problem, "") << text;
    }
}

TEST(KRLIDOMReader, RefusesEveryBeginningOfADocument) {
    std::string const whole = "<a n='1'><!--c--><b>x &lt; y</b><![CDATA[z]]></a>";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_NE(refusal(whole.substr(0, length)).problem, "") << whole.substr(0, length);
    }
    EXPECT_EQ(refusal(whole).problem, "");
}

TEST(KRLIDOMReader, RefusesADocumentType) {
    for (char const* text :
         {"<!DOCTYPE a><a/>", "<!DOCTYPE a []><a/>", "<!DOCTYPE a SYSTEM 'a.dtd'><a/>",
          "<!DOCTYPE a PUBLIC 'p' 'http://localhost/a.dtd'><a/>",
          "<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><a>&e;</a>",
          "<!DOCTYPE a [<!ENTITY % p SYSTEM 'http://localhost/p'> %p;]><a/>",
          "<!DOCTYPE a [<!ENTITY e '0123456789'><!ENTITY f '&e;&e;&e;&e;'>]><a>&f;</a>",
          "<!DOCTYPE a [<!ATTLIST a b CDATA 'default'>]><a/>"}) {
        Refusal const found = refusal(text);
        EXPECT_EQ(found.problem,
                  "The document has a document type (DOCTYPE), which is refused. Remove it.")
            << text;
        EXPECT_EQ(found.line, 1U);
    }
}

TEST(KRLIDOMReader, OpensNoFileThatADocumentNames) {
    std::string const name = testing::TempDir() + "platform-reader-secret.txt";
    std::ofstream(name) << "secret";
    std::string const text = "<!DOCTYPE a [<!ENTITY e SYSTEM '" + name + "'>]><a>&e;</a>";
    EXPECT_EQ(refusal(text).problem.find("secret"), std::string::npos);
    std::string const include = "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='" +
                                name + "' parse='text'/></a>";
    EXPECT_EQ(reread(include).find(">secret"), std::string::npos);
}

TEST(KRLIDOMReader, EndsAtItsByteLimit) {
    EXPECT_EQ(refusal("<a>12345</a>", {.bytes = 12}).problem, "");
    EXPECT_EQ(refusal("<a>123456</a>", {.bytes = 12}).problem,
              "The document has too many bytes (13; at most 12 allowed). Send less, or raise the "
              "limit.");
    EXPECT_EQ(KRLIDOM_ReadLimits().bytes, 1'048'576U);
}

TEST(KRLIDOMReader, EndsAtItsDepthLimit) {
    auto const nested = [](std::size_t depth) {
        return repeat("<a>", depth) + repeat("</a>", depth);
    };
    EXPECT_EQ(refusal(nested(256)).problem, "");
    Refusal const found = refusal(nested(257));
    EXPECT_EQ(found.problem, "Elements are nested too deep (257; at most 256 allowed). Nest less.");
    EXPECT_EQ(found.line, 1U);
    EXPECT_NE(refusal(nested(100'000)).problem, "");
    EXPECT_EQ(refusal("<a>" + repeat("<b/>", 1'000) + "</a>", {.depth = 2}).problem, "");
}

TEST(KRLIDOMReader, EndsAtItsLimitOfAttributes) {
    auto const element = [](std::size_t count) {
        return "<a " + numbered("n", "='' ", count) + "/>";
    };
    EXPECT_EQ(refusal(element(200)).problem, "");
    EXPECT_EQ(refusal(element(201)).problem,
              "An element has too many attributes (201; at most 200 allowed). Use fewer.");
}

TEST(KRLIDOMReader, EndsInATagOfEndlessAttributes) {
    std::string text = "<a";
    for (unsigned number = 0; number < 4'000; ++number) {
        text += ' ' + alikeName(number) + "='x'";
    }
    Refusal const refused = refusal(text + "/>");
    EXPECT_EQ(refused.problem.rfind("An element has too many attributes (", 0), 0U);
    EXPECT_EQ(refused.line, 1U);
    EXPECT_LE(refused.column, KRLIDOM_BytesAtATime + 1) << "of " << text.size();
}

TEST(KRLIDOMReader, AllowsEachDocumentItsOwnNumberOfAttributes) {
    KRLIDOM_ReadLimits many;
    many.attributesPerElement = 1'000;
    std::string text = "<a";
    for (unsigned number = 0; number < 1'000; ++number) {
        text += " n" + std::to_string(number) + "='x'";
    }
    text += "/>";
    std::string const longComment = "<!--" + std::string(100'000, 'x') + "-->";
    EXPECT_EQ(refusal(text, many).problem, "");
    EXPECT_EQ(refusal("<a x='1'>" + longComment + "</a>").problem, "");
    EXPECT_NE(refusal(text).problem, "");
}

TEST(KRLIDOMReader, RefusesNamesThatWereChosenToBeSlowToFind) {
    std::string text = "<a>";
    for (unsigned number = 0; number < 257; ++number) {
        text += '<' + alikeName(number) + "/>";
    }
    EXPECT_EQ(refusal(text + "</a>").problem,
              "Too many names are so much alike that the XML library finds them slowly (257; at "
              "most 256 allowed). Use other names.");
}

TEST(KRLIDOMReader, EndsAtItsLimitOfNameLength) {
    std::string const longest(1'000, 'n');
    EXPECT_EQ(refusal("<" + longest + " " + longest + "=''/>").problem, "");
    EXPECT_EQ(refusal("<" + longest + "n/>").problem,
              "A name is too long (1001; at most 1000 allowed). Shorten it.");
    EXPECT_NE(refusal("<a " + longest + "n=''/>").problem, "");
}

TEST(KRLIDOMReader, EndsAtItsLimitOfDistinctNames) {
    // With the root there are as many names as elements.
    EXPECT_EQ(refusal("<a>" + numbered("<n", "/>", 9'999) + "</a>").problem, "");
    EXPECT_EQ(refusal("<a>" + numbered("<n", "/>", 10'000) + "</a>").problem,
              "There are too many distinct names (10001; at most 10000 allowed). Use fewer element "
              "and attribute names.");
}

TEST(KRLIDOMReader, AnswersForAnyDocumentOfTheAllowedSize) {
    constexpr std::size_t size = 1U << 20U;
    struct Tried {
        std::string document;
        char const* problem; // how it begins; "" when it is read
    };
    std::vector<Tried> const tried{
        {"<a>" + numbered("<n", "/>", 9'990) + "</a>", ""},
        {"<a>" + repeat("<b/>", size / 4 - 10) + "</a>", ""},
        {"<a " + numbered("n", "='' ", size / 12) + "/>", "An element has too many attributes"},
        {repeat("<a>", size / 3), "Elements are nested too deep"},
        {"<a>" + repeat("<!---->", size / 7 - 10) + "</a>", ""},
        {"<a>" + repeat("&amp;", size / 5 - 10) + "</a>", ""},
        {"<a>" + repeat("<![CDATA[]]>x", size / 13 - 10) + "</a>", ""},
        {"<a b='" + std::string(size - 20, 'x') + "'/>", ""},
        {"<" + std::string(size - 20, 'n') + "/>", "A name is too long"},
        {std::string(size - 20, '<'), "The document is not well-formed"},
    };
    for (auto const& [document, problem] : tried) {
        ASSERT_LE(document.size(), size) << document.substr(0, 20);
        std::string const found = refusal(document).problem;
        EXPECT_EQ(found.substr(0, std::string_view(problem).size()), problem)
            << document.substr(0, 20);
        EXPECT_EQ(found.empty(), problem == std::string_view()) << document.substr(0, 20);
    }
}

TEST(KRLIDOMReader, ReadsTheNextDocumentAfterARefusedOne) {
    refusal("<a>");
    refusal("<!DOCTYPE a><a/>");
    EXPECT_EQ(reread("<a/>"), "<a/>");
}

TEST(KRLIDOMReader, CountsLimitsAnewForEachDocument) {
    std::string const many = "<a>" + numbered("<n", "/>", 9'999) + "</a>";
    std::string const others = "<b>" + numbered("<m", "/>", 9'999) + "</b>";
    EXPECT_EQ(refusal(many).problem, "");
    EXPECT_EQ(refusal(others).problem, "");
    EXPECT_EQ(KRLIDOM_Reader::parse("<c d='1'/>", "t").elementCount(), 1U);
}

TEST(KRLIDOMReader, TakesTheSameMemoryForADocumentWhateverWasReadBefore) {
    std::string const text = "<a b='1'><c/>x</a>";
    std::size_t alone = 0;
    std::thread([&] { alone = KRLIDOM_Reader::parse(text, "t").byteCount(); }).join();
    refusal("<a>" + numbered("<n", " o='1'/>", 5'000) + "</a>");
    refusal("<a b='" + std::string(500'000, 'x') + "'/>");
    EXPECT_EQ(KRLIDOM_Reader::parse(text, "t").byteCount(), alone);
    EXPECT_EQ(KRLIDOM_Reader::parse(text, "t").byteCount(), alone);
}

TEST(KRLIDOMReader, LeavesDocumentsThatOutliveTheNextOnesAndTheThread) {
    KRLIDOM_OwnedDocument first;
    KRLIDOM_OwnedDocument second;
    std::thread([&] {
        first = KRLIDOM_Reader::parse("<a b='1'>x</a>", "t");
        second = KRLIDOM_Reader::parse("<b><c/></b>", "t");
        refusal("<d>");
    }).join();
    KRLIDOM_Document const document = first.document();
    document.getDocumentElement().appendChild(document.createElement("new"));
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(document), "<a b=\"1\">x<new/></a>");
    EXPECT_EQ(KRLIDOM_Writer::toUtf8(second.document()), "<b><c/></b>");
}

TEST(KRLIDOMReader, ReadsTheSameAfterADocumentOfXml11) {
    std::string const text = "<a b='x\xC2\x85y'>x\xE2\x80\xA8y</a>";
    std::string const before = reread(text);
    KRLIDOM_Reader::parse("<?xml version='1.1'?><a/>", "t");
    EXPECT_EQ(reread(text), before);
}

} // namespace
