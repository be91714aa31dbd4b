// Models of every kind of many: what is read, and what is asked of each object.

#include "VexObject.h"
#include "host/import/xml/ModelLoader.h"
#include "tests/growth/Growth.h"
#include "tests/support/AlikeNames.h"

#include <functional>

namespace {

using Asked = std::function<void(vex::Model const& model)>;

Measurement measure(std::string const& text, Asked const& ask = nullptr) {
    return countWork(text.size(), [&] {
        auto const model = vex::loadModelText(text, "m.xml");
        if (ask != nullptr) {
            ask(*model);
        }
    });
}

std::string repeated(std::size_t count, std::function<std::string(std::size_t)> const& text) {
    std::string all;
    for (std::size_t number = 0; number < count; ++number) {
        all += text(number);
    }
    return all;
}

std::string inModel(std::string const& content) {
    return "<model defaultLocale='en'>" + content + "</model>";
}

std::string inNamespace(std::string const& content) {
    return inModel("<namespace id='n' name='N'>" + content + "</namespace>");
}

void askForEachProperty(VEX_HANDLE object) {
    I18NLocale const locale(I18NString("en"));
    Vex_Handle_Collection properties;
    VexObject(object).Properties(properties, nullptr, nullptr, false);
    for (VEX_HANDLE const property : properties) {
        I18NString name;
        VexObject(property).GetName(name);
        VEX_HANDLE const found = VexObject(object).GetPropertyByName(name, &locale);
        Vex_Handle_Collection members;
        VexObject(found).childObjects(members, nullptr, nullptr);
    }
}

} // namespace

TEST(StoreGrowth, ALocaleMayBeListedAgainAndAgain) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return measure(inModel("<locales>" +
                               repeated(size, [](std::size_t) { return "<locale>en</locale>"; }) +
                               "</locales>"),
                       [](vex::Model const& model) { EXPECT_EQ(model.locales().size(), 1U); });
    }));
}

TEST(StoreGrowth, EachClassOfManyIsAskedForItsMembers) {
    EXPECT_TRUE(staysInProportion(8'000, [](std::size_t size) {
        std::size_t const classes = size / 10;
        return measure(inNamespace(repeated(size,
                                            [&](std::size_t number) {
                                                return "<c" + std::to_string(number % classes) +
                                                       "/>";
                                            })),
                       [](vex::Model const& model) { askForEachProperty(model.getElement(1)); });
    }));
}

TEST(StoreGrowth, EachValueOfOneNameIsAskedFor) {
    EXPECT_TRUE(staysInProportion(5'000, [](std::size_t size) {
        return measure(
            inNamespace(
                "<a>" +
                repeated(size, [](std::size_t) { return "<property name='p'>x</property>"; }) +
                "</a>"),
            [](vex::Model const& model) { askForEachProperty(model.getElement(2)); });
    }));
}

TEST(StoreGrowth, EachObjectHasPropertiesOfItsOwn) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        return measure(inNamespace(repeated(size, [](std::size_t number) {
            return "<a><property name='p" + std::to_string(number) + "'>x</property></a>";
        })));
    }));
}

TEST(StoreGrowth, PropertiesStandInProperties) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        return measure(inNamespace("<a>" +
                                   repeated(size,
                                            [](std::size_t number) {
                                                std::string const name = std::to_string(number);
                                                return "<property name='p" + name +
                                                       "'><property name='q'>x</property>"
                                                       "</property>";
                                            }) +
                                   "</a>"));
    }));
}

TEST(StoreGrowth, EveryObjectHasTheSameName) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        return measure(inNamespace(repeated(size, [](std::size_t) { return "<a name='A'/>"; })));
    }));
}

TEST(StoreGrowth, EveryObjectStandsDeepAndHasNoName) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        std::size_t const depth = 500;
        std::string const open = repeated(depth, [](std::size_t) { return "<querySubject>"; });
        std::string const close = repeated(depth, [](std::size_t) { return "</querySubject>"; });
        return measure(
            inNamespace(open + repeated(size, [](std::size_t) { return "<item/>"; }) + close));
    }));
}

TEST(StoreGrowth, FoldersAreNestedAndNamedAlike) {
    EXPECT_TRUE(staysInProportion(20, [](std::size_t size) {
        std::string const open = repeated(500, [](std::size_t) { return "<folder name='F'>"; });
        std::string const close = repeated(500, [](std::size_t) { return "</folder>"; });
        return measure(inNamespace(
            repeated(size, [&](std::size_t) { return open + "<a name='A'/>" + close; })));
    }));
}

TEST(StoreGrowth, IdsAreManyAndWereChosenToHashAlike) {
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        return measure(inNamespace(repeated(size,
                                            [](std::size_t number) {
                                                return "<a id='" +
                                                       alikeName(static_cast<unsigned>(number)) +
                                                       "'/>";
                                            })),
                       [](vex::Model const& model) {
                           for (std::size_t index = 2; index < model.elementCount(); ++index) {
                               I18NString id;
                               VexObject(model.getElement(index)).GetId(id);
                               EXPECT_EQ(model.findById(id), model.getElement(index));
                           }
                       });
    }));
}
