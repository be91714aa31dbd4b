// Images of models of every kind of many, and the documents of these.

#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/ImageFile.h"
#include "tests/growth/Growth.h"

#include <functional>

namespace {

Measurement measure(std::string const& content) {
    std::string const text = "<model defaultLocale='en'>" + content + "</model>";
    return countWork(text.size(), [&] {
        auto const model = vex::loadModelText(text, "m.xml");
        vex::modelDocumentOf(*vex::openImageBytes(vex::imageBytesOf(*model), "m.vexm"));
    });
}

std::string repeated(std::size_t count, std::function<std::string(std::size_t)> const& text) {
    std::string all;
    for (std::size_t number = 0; number < count; ++number) {
        all += text(number);
    }
    return all;
}

/// Languages that differ in their ends alone.
std::string privateLocale(std::size_t number) {
    std::string end;
    for (int digit = 0; digit < 4; ++digit, number /= 26) {
        end += static_cast<char>('a' + number % 26);
    }
    return "<locale>de_x_" + end + "</locale>";
}

} // namespace

TEST(ImageGrowth, LocalesAreManyAndListedAgainAndAgain) {
    EXPECT_TRUE(staysInProportion(500, [](std::size_t size) {
        std::string const all = "<locales>" + repeated(size, privateLocale) + "</locales>";
        return measure(all + all + all);
    }));
}

TEST(ImageGrowth, EachObjectHasPropertiesOfItsOwn) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return measure(repeated(size, [](std::size_t number) {
            return "<a><property name='p" + std::to_string(number) + "'>x</property></a>";
        }));
    }));
}

TEST(ImageGrowth, EachObjectHasAsManyAttributesAsItMay) {
    EXPECT_TRUE(staysInProportion(100, [](std::size_t size) {
        std::string const attributes =
            repeated(190, [](std::size_t number) { return " p" + std::to_string(number) + "=''"; });
        return measure(repeated(size, [&](std::size_t) { return "<a" + attributes + "/>"; }));
    }));
}

TEST(ImageGrowth, PropertiesStandInProperties) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        return measure("<a>" +
                       repeated(size,
                                [](std::size_t) {
                                    return "<property name='p'><property name='q'>x</property>"
                                           "</property>";
                                }) +
                       "</a>");
    }));
}

TEST(ImageGrowth, EveryObjectStandsDeep) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        std::size_t const depth = 500;
        std::string const open = repeated(depth, [](std::size_t) { return "<a>"; });
        std::string const close = repeated(depth, [](std::size_t) { return "</a>"; });
        return measure(open + repeated(size, [](std::size_t) { return "<item/>"; }) + close);
    }));
}

TEST(ImageGrowth, FoldersAreNested) {
    EXPECT_TRUE(staysInProportion(20, [](std::size_t size) {
        std::string const open = repeated(500, [](std::size_t) { return "<a n='F'>"; });
        std::string const close = repeated(500, [](std::size_t) { return "</a>"; });
        return measure(repeated(size, [&](std::size_t) { return open + close; }));
    }));
}
