#include "host/import/xml/ModelLoader.h"
#include "host/insight/Differences.h"
#include "host/protocol/JsonDifferences.h"
#include "tests/growth/CountingBuffer.h"
#include "tests/growth/GeneratedText.h"
#include "tests/growth/Growth.h"

namespace {

/// A tree that shows every object in its place.
vex::AnsweredTree wholeTreeOf(vex::Model const& model) {
    vex::AnsweredTree tree(model.elementCount());
    for (std::size_t number = 0; number < tree.size(); ++number) {
        tree[number].object = model.getElement(number);
    }
    return tree;
}

enum class Form { Data, Json };

/// What it takes to compare two models of these elements and to tell the differences.
Measurement comparisonOf(std::string const& before, std::string const& after, Form form) {
    auto const load = [](std::string const& elements) {
        return vex::loadModelText("<model defaultLocale='en'><locales><locale>en</locale></locales>"
                                  "<namespace id='n' name='n'>" +
                                      elements + "</namespace></model>",
                                  "m.xml");
    };
    auto const one = load(before);
    auto const two = load(after);
    vex::AnsweredTree const treeBefore = wholeTreeOf(*one);
    vex::AnsweredTree const treeAfter = wholeTreeOf(*two);
    return countWork(before.size() + after.size(), [&] {
        vex::Differences const told = vex::tellDifferences({*one, one->defaultLocale(), treeBefore},
                                                           {*two, two->defaultLocale(), treeAfter});
        EXPECT_FALSE(told.areNone());
        if (form == Form::Json) {
            CountingBuffer written;
            std::ostream out(&written);
            writeJson(out, told);
            EXPECT_GT(written.count(), 0U);
        }
    });
}

std::string propertyTexts(std::size_t count, std::string const& value) {
    return textOfEach(count, [&](std::string const& number) {
        return "<property name='p" + number + "'>" + value + "</property>";
    });
}

std::string propertiesOf(std::size_t count, std::string const& value) {
    return "<queryItem id='i' name='i'>" + propertyTexts(count, value) + "</queryItem>";
}

TEST(TreeComparisonGrowth, FollowsThePropertiesOfAnObject) {
    auto const differ = [](std::size_t size, Form form) {
        return comparisonOf(propertiesOf(size, "a first value"), propertiesOf(size, "a second one"),
                            form);
    };
    for (Form const form : {Form::Data, Form::Json}) {
        EXPECT_TRUE(staysInProportion(1'000, [&](std::size_t size) { return differ(size, form); }));
    }
}

TEST(TreeComparisonGrowth, FollowsPropertiesThatOneSideLacksBesideManyMembers) {
    auto const inSubject = [](std::string const& text) {
        return "<querySubject id='q' name='q'>" + text + "</querySubject>";
    };
    EXPECT_TRUE(staysInProportion(1'000, [&](std::size_t size) {
        return comparisonOf(inSubject(repeated("<a/>", size)),
                            inSubject(propertyTexts(size, "a value of twenty")), Form::Data);
    }));
}

TEST(TreeComparisonGrowth, FollowsTheObjectsThatReferencesPair) {
    constexpr std::size_t levels = 200;
    auto const deep = [&](std::size_t size, std::string const& value) {
        return repeated("<querySubject name='" + std::string(500, 'a') + "'>", levels) +
               textOfEach(size,
                          [&](std::string const& number) {
                              return "<queryItem name='" + number + "' usage='" + value + "'/>";
                          }) +
               repeated("</querySubject>", levels);
    };
    EXPECT_TRUE(staysInProportion(500, [&](std::size_t size) {
        return comparisonOf(deep(size, "fact"), deep(size, "attribute"), Form::Json);
    }));
}

} // namespace
