#include "host/import/xml/SaxDocument.h"

#include "tests/support/AlikeNames.h"

#include <array>
#include <string>

#include <gtest/gtest.h>
#include <unicode/unistr.h>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>

namespace {

/// Gives a text and says how much of it was taken.
class CountedSource final : public vex::ByteSource {
public:
    explicit CountedSource(std::string_view text) : m_source(text) {}
    std::size_t read(unsigned char* target, std::size_t room) override {
        std::size_t const count = m_source.read(target, room);
        taken += count;
        return count;
    }
    std::size_t taken = 0;

private:
    vex::MemorySource m_source;
};

struct Refusal {
    std::string rule;
    std::string text;
};

class Handler final : public vex::SaxHandler {
public:
    [[noreturn]] void refuse(char const* rule, std::string text) override {
        throw Refusal{rule, std::move(text)};
    }
    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }
    void startDTD(XMLCh const*, XMLCh const*, XMLCh const*) override { refuse("dtd", ""); }
    void fatalError(xercesc::SAXParseException const& problem) override {
        refuse("not-well-formed", std::to_string(problem.getLineNumber()));
    }
    void startElement(XMLCh const*, XMLCh const*, XMLCh const* name,
                      xercesc::Attributes const& given) override {
        log += '<' + utf8(name) + ' ' + std::to_string(given.getLength()) + '@' +
               std::to_string(m_locator->getColumnNumber()) + '>';
    }
    void endElement(XMLCh const*, XMLCh const*, XMLCh const* name) override {
        log += "</" + utf8(name) + '>';
    }
    void characters(XMLCh const* text, XMLSize_t length) override { log += utf8({text, length}); }

    std::string log;

private:
    static std::string utf8(std::u16string_view text) {
        std::string result;
        icu::UnicodeString(text.data(), static_cast<std::int32_t>(text.size()))
            .toUTF8String(result);
        return result;
    }
    xercesc::Locator const* m_locator = nullptr;
};

struct Reading {
    Refusal refusal{};
    std::size_t taken = 0;
    std::string log{};
};

Reading readingOf(std::string_view text, std::size_t attributesPerElement = 200) {
    CountedSource source(text);
    Handler handler;
    Reading reading;
    try {
        vex::readSax(source, handler, attributesPerElement);
    } catch (Refusal const& refusal) {
        reading.refusal = refusal;
    }
    reading.taken = source.taken;
    reading.log = handler.log;
    return reading;
}

std::string tagWith(std::size_t attributes, auto const& nameOf) {
    std::string text = "<a";
    for (unsigned number = 0; number < attributes; ++number) {
        text += ' ' + nameOf(number) + "=''";
    }
    return text + "/>";
}

std::string plainName(unsigned number) {
    return "n" + std::to_string(number);
}

std::string inEncoding(std::u16string const& text, char const* encoding) {
    icu::UnicodeString const units(text.data(), static_cast<std::int32_t>(text.size()));
    std::string bytes(text.size() * 4 + 16, '\0');
    auto const length = units.extract(0, units.length(), bytes.data(),
                                      static_cast<std::uint32_t>(bytes.size()), encoding);
    bytes.resize(static_cast<std::size_t>(length));
    return bytes;
}

} // namespace

TEST(SaxDocument, TellsWhatADocumentHoldsInOrder) {
    EXPECT_EQ(readingOf("<a x='1' y='2'>t<b/> <![CDATA[u]]></a>\n").log,
              "<a 2@16>t<b 0@21></b> u</a>");
}

TEST(SaxDocument, TellsOfAnyKindOfDocumentType) {
    EXPECT_EQ(readingOf("<!DOCTYPE a><a/>").refusal.rule, "dtd");
    EXPECT_EQ(readingOf("<!DOCTYPE a SYSTEM 'x'><a/>").refusal.rule, "dtd");
    EXPECT_EQ(readingOf("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>").refusal.rule, "dtd");
}

TEST(SaxDocument, CountsTheAttributesOfATagThatIsALittleTooLong) {
    EXPECT_EQ(readingOf(tagWith(200, plainName)).refusal.rule, "");
    Reading const reading = readingOf(tagWith(201, plainName));
    EXPECT_EQ(reading.refusal.rule, "too-many-attributes");
    EXPECT_EQ(reading.refusal.text,
              "the element has 201 attributes, more than the 200 allowed; use fewer");
}

TEST(SaxDocument, StopsInATagOfEndlessAttributes) {
    for (auto const nameOf : {&plainName, &alikeName}) {
        std::string text = tagWith(4'000, nameOf);
        text.insert(text.size() - 2, tagWith(200'000, plainName).substr(2));
        Reading const reading = readingOf(text);
        EXPECT_EQ(reading.refusal.rule, "too-many-attributes");
        EXPECT_LE(reading.taken, 40'000U) << "of " << text.size();
    }
}

TEST(SaxDocument, StopsInATagOfEndlessAttributesInEveryEncoding) {
    constexpr std::array encodings = {
        "UTF-8",      "UTF-16LE",  "UTF-16BE", "UTF-16", "UTF-32LE", "UTF-32BE",    "US-ASCII",
        "ISO-8859-1", "Shift_JIS", "GB18030",  "IBM037", "IBM1140",  "windows-1252"};
    for (char const* const encoding : encodings) {
        std::string const declared =
            std::string(encoding).starts_with("UTF-32") ? "ISO-10646-UCS-4" : encoding;
        std::string const text =
            "<?xml version='1.0' encoding='" + declared + "'?>" + tagWith(50'000, plainName);
        Reading const reading =
            readingOf(inEncoding(std::u16string(text.begin(), text.end()), encoding));
        EXPECT_EQ(reading.refusal.rule, "too-many-attributes") << encoding;
        EXPECT_LE(reading.taken, 100'000U) << encoding;
    }
}

TEST(SaxDocument, ReadsALongTextCommentAndAttributeWhole) {
    std::string const longText(300'000, 'x');
    EXPECT_EQ(readingOf("<a b='" + longText + "'><!--" + longText + "--></a>").refusal.rule, "");
    EXPECT_EQ(readingOf("<a>" + longText + "</a>").log.size(), longText.size() + 11);
}

TEST(SaxDocument, RefusesElementNamesThatWereChosenToBeSlowToFind) {
    std::string text = "<a>";
    for (unsigned number = 0; number < 4'000; ++number) {
        text += '<' + alikeName(number) + "/>";
    }
    Reading const reading = readingOf(text + "</a>");
    EXPECT_EQ(reading.refusal.rule, "too-many-like-names");
    EXPECT_LE(reading.taken, 30'000U) << "of " << text.size();
}

TEST(SaxDocument, TakesTenThousandElementNamesThatNobodyChoseForThat) {
    std::string text = "<a>";
    for (unsigned number = 0; number < 10'000; ++number) {
        text += "<column_" + std::to_string(number) + "/>";
    }
    EXPECT_EQ(readingOf(text + "</a>").refusal.rule, "");
}
