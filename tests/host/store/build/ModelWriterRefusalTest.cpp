// What no model may hold, and what no importer may do.

#include "tests/host/store/build/WrittenModel.h"

#include <stdexcept>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

TEST(ModelWriterRefusal, ReportsAnIdThatTwoObjectsHave) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.setId(u"1");
    written.moveTo({{}, "table Orders, column 3"});
    writer.openObject(u"a");
    writer.setId(u"1");
    writer.closeObject();
    EXPECT_EQ(written.finish(), nullptr);
    EXPECT_EQ(written.foundText(),
              "duplicate-id: shop: table Orders, column 3: error: another element has the id "
              "\"1\" too; give one of them an id of its own");
}

TEST(ModelWriterRefusal, ReportsTheSecondValueForOneLocale) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    vex::ModelWriter::Name const name = writer.name(u"name");
    writer.addProperty({name, writer.locale(u"de"), {}}, u"1");
    writer.addProperty({name, writer.locale(u"de_AT"), {}}, u"2");
    writer.addProperty({writer.name(u"tip"), writer.locale(u"de"), {}}, u"3");
    writer.openProperty({writer.name(u"p")});
    writer.addProperty({name, writer.locale(u"de"), {}}, u"4");
    writer.closeProperty();
    EXPECT_TRUE(written.found().empty());
    writer.addProperty({name, writer.locale(u"de-at"), {}}, u"5");
    EXPECT_EQ(written.finish(), nullptr);
    EXPECT_EQ(written.foundText(), "duplicate-value: shop: error: the property has a value for "
                                   "this locale already; remove one of the two or correct its "
                                   "locale");
}

TEST(ModelWriterRefusal, ReportsAPropertyWithoutName) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    written.moveTo({{2, 5}, ""});
    writer.addProperty(u"", u"x");
    writer.openProperty({});
    writer.closeProperty();
    EXPECT_EQ(written.finish(), nullptr);
    EXPECT_EQ(written.foundText(),
              "property-without-name: shop:2:5: error: the property has no name; give it one\n"
              "property-without-name: shop:2:5: error: the property has no name; give it one");
}

TEST(ModelWriterRefusal, ReportsALocaleThatIsNone) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    EXPECT_EQ(writer.locale(u"klingon").getNumber(), 0U);
    writer.setDefaultLocale(u"");
    EXPECT_TRUE(writer.openLocales());
    writer.addLocale(u"?");
    writer.closeLocales();
    EXPECT_EQ(written.finish(), nullptr);
    ASSERT_EQ(written.found().size(), 3U);
    EXPECT_EQ(toString(written.found()[0]),
              "shop: error: the locale \"klingon\" is unknown; write a language and, if need be, a "
              "region, such as \"de\" or \"de_AT\"");
    EXPECT_EQ(written.found()[1].rule, "unknown-locale");
    EXPECT_EQ(written.found()[2].rule, "unknown-locale");
}

TEST(ModelWriterRefusal, ReportsLocalesOfAnotherObjectThanTheModel) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"a");
    EXPECT_FALSE(writer.openLocales());
    writer.closeObject(); // no locales are open
    EXPECT_EQ(written.finish(), nullptr);
    EXPECT_EQ(written.foundText(), "locales-outside-model: shop: error: \"locales\" stands "
                                   "directly in \"model\" only; move it there");
}

/// What is found when the text is used in each way that a text can be.
std::string foundOfEachUse(std::u16string_view text) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    writer.openObject(u"a");
    writer.setId(text);
    writer.setRole(text);
    writer.setClass(text);
    writer.setText(text);
    writer.addProperty(u"p", text);
    writer.addProperty({writer.name(u"p"), {}, text}, u"x");
    writer.addProperty(text, u"x");
    writer.openProperty({writer.name(u"p")});
    writer.closeProperty(text);
    writer.openObject(text);
    writer.closeObject();
    writer.closeObject();
    std::string found;
    for (vex::Diagnostic const& diagnostic : written.found()) {
        found += diagnostic.rule + ": " + diagnostic.text + '\n';
    }
    EXPECT_EQ(written.finish() == nullptr, !found.empty());
    return found;
}

std::string nineTimes(std::string const& line) {
    std::string lines;
    for (int i = 0; i < 9; ++i) {
        lines += line + '\n';
    }
    return lines;
}

TEST(ModelWriterRefusal, ReportsTextsThatNoDocumentCanHoldWhereverTheyStand) {
    auto const holds = [](char const* code) {
        return nineTimes(std::string("unwritable-text: a text holds ") + code +
                         ", for which XML 1.0, and so an answer, has no place; remove it");
    };
    EXPECT_EQ(foundOfEachUse(std::u16string_view(u"a\0b", 3)), holds("U+0000"));
    EXPECT_EQ(foundOfEachUse(u"a\u001F"), holds("U+001F"));
    EXPECT_EQ(foundOfEachUse(u"\uFFFE"), holds("U+FFFE"));
    EXPECT_EQ(foundOfEachUse(u"\uFFFF"), holds("U+FFFF"));
    constexpr char16_t high = 0xD83D;
    constexpr char16_t low = 0xDE00;
    EXPECT_EQ(foundOfEachUse(std::u16string{u'a', high}), holds("U+D83D"));
    EXPECT_EQ(foundOfEachUse(std::u16string{high, u'a'}), holds("U+D83D"));
    EXPECT_EQ(foundOfEachUse(std::u16string{low, high}), holds("U+DE00"));
}

TEST(ModelWriterRefusal, AllowsEveryOtherTextInAnyLanguage) {
    WrittenModel written;
    written.writer().addProperty(u"name", u"\t\r\n ~\u007F\u00E4\uD7FF\uE000\uFFFD\U0001F600");
    EXPECT_NE(written.finish(), nullptr);
}

TEST(ModelWriterRefusal, ReportsALocaleThatNoDocumentCanHold) {
    WrittenModel written;
    EXPECT_EQ(written.writer().locale(std::u16string_view(u"de\0x", 4)).getNumber(), 0U);
    EXPECT_EQ(written.found().at(0).rule, "unwritable-text");
}

TEST(ModelWriterRefusal, ReportsAClassThatIsNoNameOfAnElementOnce) {
    WrittenModel written;
    vex::ModelWriter& writer = written.writer();
    for (char16_t const* const cls : {u"a b", u"property", u"locales", u"1", u"a b"}) {
        writer.openObject(cls);
        writer.closeObject();
    }
    writer.openObject(u"");
    writer.closeObject();
    std::string const advice =
        " cannot be a class; name it like an element of XML, other than \"property\" and "
        "\"locales\"";
    EXPECT_EQ(written.finish(), nullptr);
    ASSERT_EQ(written.found().size(), 5U);
    EXPECT_EQ(written.found()[0].text, "\"a b\"" + advice);
    EXPECT_EQ(written.found()[1].text, "\"property\"" + advice);
    EXPECT_EQ(written.found()[2].text, "\"locales\"" + advice);
    EXPECT_EQ(written.found()[3].text, "\"1\"" + advice);
    EXPECT_EQ(written.found()[4].text, "an object has no class; give it one");
}

vex::ModelWriterOptions withLimits(vex::ModelLimits const& limits) {
    return {.limits = limits};
}

TEST(ModelWriterRefusal, EndsTheReadingWhereObjectsAndPropertiesNestTooDeep) {
    auto const limits = withLimits({.depth = 3});
    auto const openTwo = [](WrittenModel& written) {
        written.writer().openObject(u"a");
        written.writer().openObject(u"b");
    };
    WrittenModel objects(limits);
    openTwo(objects);
    EXPECT_THROW(objects.writer().openObject(u"c"), vex::SourceReport::Stop);
    EXPECT_EQ(std::move(objects.writer()).finish(), nullptr);
    EXPECT_EQ(objects.foundText(), "too-deep: shop: error: elements are nested more "
                                   "than 3 deep; flatten the model here");
    WrittenModel properties(limits);
    openTwo(properties);
    properties.writer().addProperty(u"p", u"1");
    EXPECT_THROW(properties.writer().openProperty({properties.writer().name(u"p")}),
                 vex::SourceReport::Stop);
    WrittenModel skipped(limits);
    EXPECT_NO_THROW(skipped.writer().admitDepth(3));
    EXPECT_THROW(skipped.writer().admitDepth(4), vex::SourceReport::Stop);
    EXPECT_EQ(skipped.found().at(0).rule, "too-deep");
}

TEST(ModelWriterRefusal, EndsTheReadingAtACountedNameThatIsTooLong) {
    WrittenModel written(withLimits({.nameLength = 5}));
    vex::ModelWriter& writer = written.writer();
    EXPECT_NO_THROW(writer.countedName(u"12345"));
    EXPECT_NO_THROW(writer.addProperty(u"123456", u"x"));
    EXPECT_THROW(writer.openObject(u"123456"), vex::SourceReport::Stop);
    EXPECT_EQ(written.foundText(), "name-too-long: shop: error: the name \"123456\" has more than "
                                   "5 characters; shorten it");
}

TEST(ModelWriterRefusal, ShowsTheBeginningOfAVeryLongName) {
    WrittenModel written;
    EXPECT_THROW(written.writer().countedName(std::u16string(2'000, u'x')),
                 vex::SourceReport::Stop);
    EXPECT_EQ(written.found().at(0).text, "the name \"" + std::string(100, 'x') +
                                              "...\" has more than 1000 characters; shorten it");
}

TEST(ModelWriterRefusal, EndsTheReadingAtOneCountedNameTooMany) {
    WrittenModel written(withLimits({.distinctNames = 3})); // the first is "model"
    vex::ModelWriter& writer = written.writer();
    for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
        writer.addProperty(std::u16string(1, letter), u"x");
    }
    EXPECT_NO_THROW(writer.countedName(u"a"));
    EXPECT_NO_THROW(writer.countedName(u"b"));
    EXPECT_NO_THROW(writer.countedName(u"a"));
    EXPECT_THROW(writer.countedName(u"c"), vex::SourceReport::Stop);
    EXPECT_EQ(written.foundText(),
              "too-many-names: shop: error: the source has more than 3 different names of classes "
              "and properties; split the model or use fewer");
}

TEST(ModelWriterRefusal, EndsTheReadingWhenTooMuchWasFound) {
    WrittenModel written;
    auto const fill = [&] {
        for (int i = 0; i < 5'000; ++i) {
            written.writer().addProperty(u"", u"x");
        }
    };
    EXPECT_THROW(fill(), vex::SourceReport::Stop);
    EXPECT_EQ(written.found().size(), 1'000U);
}

TEST(ModelWriterRefusal, DropsWarningsPastThatManyButNoError) {
    WrittenModel written;
    for (int i = 0; i < 5'000; ++i) {
        written.report().report("dubious", "looks odd", vex::Severity::Warning);
    }
    EXPECT_EQ(written.found().size(), 1'000U);
    EXPECT_THROW(written.writer().addProperty(u"", u"x"), vex::SourceReport::Stop);
    EXPECT_EQ(written.found().size(), 1'001U);
    EXPECT_EQ(written.found().back().rule, "property-without-name");
}

TEST(ModelWriterRefusal, MakesAModelInSpiteOfWarnings) {
    WrittenModel written;
    written.report().report("dubious", "looks odd", vex::Severity::Warning);
    EXPECT_NE(written.finish(), nullptr);
    EXPECT_EQ(written.foundText(), "dubious: shop: warning: looks odd");
}

/// The text of the `std::logic_error` that an importer's mistake raises in a
/// model that is open.
template <typename Mistake> std::string misuse(Mistake mistake) {
    WrittenModel written;
    try {
        mistake(written.writer());
    } catch (std::logic_error const& problem) {
        EXPECT_TRUE(written.found().empty());
        return problem.what();
    }
    return "(nothing)";
}

using Writer = vex::ModelWriter;

TEST(ModelWriterMisuse, IsToCloseWhatIsNotTheInnermostThingOpen) {
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.closeObject();
                  writer.closeObject();
              }),
              "ModelWriter: an object was closed that is not the innermost thing open");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openProperty({writer.name(u"p")});
                  writer.closeObject();
              }),
              "ModelWriter: an object was closed that is not the innermost thing open");
    EXPECT_EQ(misuse([](Writer& writer) { writer.closeProperty(); }),
              "ModelWriter: a property was closed that is not the innermost thing open");
    EXPECT_EQ(misuse([](Writer& writer) { writer.closeLocales(); }),
              "ModelWriter: locales were closed that are not the innermost thing open");
}

TEST(ModelWriterMisuse, IsToAddAPropertyOutsideOfAnObject) {
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.closeObject();
                  writer.addProperty(u"p", u"x");
              }),
              "ModelWriter: a property was added outside of an object");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openLocales();
                  writer.openProperty({writer.name(u"p")});
              }),
              "ModelWriter: a property was opened outside of an object");
}

TEST(ModelWriterMisuse, IsToOpenAnObjectWhereNoneCanStand) {
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openProperty({writer.name(u"p")});
                  writer.openObject(u"a");
              }),
              "ModelWriter: an object was opened in a property or in locales");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.closeObject();
                  writer.openObject(u"model");
              }),
              "ModelWriter: there is one object of the class \"model\" only");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.closeObject();
                  writer.openObject(u"namespace");
              }),
              "ModelWriter: the first object is of the class \"model\"");
}

TEST(ModelWriterMisuse, IsToSetWhatBelongsToAnObjectElsewhere) {
    auto const inProperty = [](auto set) {
        return misuse([set](Writer& writer) {
            writer.openProperty({writer.name(u"p")});
            set(writer);
        });
    };
    EXPECT_EQ(inProperty([](Writer& writer) { writer.setId(u"x"); }),
              "ModelWriter: an id was set outside of an object");
    EXPECT_EQ(inProperty([](Writer& writer) { writer.setRole(u"x"); }),
              "ModelWriter: a role was set outside of an object");
    EXPECT_EQ(inProperty([](Writer& writer) { writer.setClass(u"x"); }),
              "ModelWriter: a class was set outside of an object");
    EXPECT_EQ(inProperty([](Writer& writer) { writer.setText(u"x"); }),
              "ModelWriter: a text was set outside of an object");
}

TEST(ModelWriterMisuse, IsToGiveAnObjectTwoIds) {
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.setId(u"1");
                  writer.setId(u"2");
              }),
              "ModelWriter: an object was given a second id");
}

TEST(ModelWriterMisuse, IsToSetLocalesWhereNoneCanStand) {
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openObject(u"a");
                  writer.setDefaultLocale(u"de");
              }),
              "ModelWriter: the default locale was set in another object than the model");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openProperty({writer.name(u"p")});
                  writer.setDefaultLocale(u"de");
              }),
              "ModelWriter: the default locale was set outside of the model");
    EXPECT_EQ(misuse([](Writer& writer) {
                  writer.openProperty({writer.name(u"p")});
                  writer.openLocales();
              }),
              "ModelWriter: locales were opened outside of an object");
    EXPECT_EQ(misuse([](Writer& writer) { writer.addLocale(u"de"); }),
              "ModelWriter: a locale was added outside of locales");
}

TEST(ModelWriterMisuse, IsToFinishAModelThatIsNotClosed) {
    EXPECT_EQ(misuse([](Writer& writer) { std::move(writer).finish(); }),
              "ModelWriter: the model was finished before it was closed");
}

} // namespace
