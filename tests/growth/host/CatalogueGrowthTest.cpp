#include "I18NLocale.h"
#include "host/catalogue/Catalogue.h"
#include "tests/growth/Growth.h"

#include <functional>

namespace {

Measurement measure(std::string const& content) {
    std::string const text = "<catalog>" + content + "</catalog>";
    return countWork(text.size(), [&] { vex::loadCatalogueText(text, "c.xml", ""); });
}

std::string repeated(std::size_t count,
                     std::function<std::string(std::string const&)> const& text) {
    std::string all;
    for (std::size_t number = 0; number < count; ++number) {
        all += text(std::to_string(number));
    }
    return all;
}

} // namespace

TEST(CatalogueGrowth, ThereAreManyUsersOfManyRoles) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return measure(repeated(size, [](std::string const& number) {
            return "<user name='user" + number + "'><role>reader</role><role>role" + number +
                   "</role></user>";
        }));
    }));
}

TEST(CatalogueGrowth, ThereAreManyModels) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return measure(repeated(size, [](std::string const& number) {
            return "<model path='/content/" + number + "' file='model.xml'/>";
        }));
    }));
}

TEST(CatalogueGrowth, APropertyOfAPackageHasManyLanguages) {
    for (int number = 0; number < 4'000; ++number) { // the process keeps those that it has met
        I18NLocale const known(I18NString(("de_AT_X" + std::to_string(number)).c_str()));
    }
    EXPECT_TRUE(staysInProportion(1'000, [](std::size_t size) {
        return measure("<model path='/content/m' file='m.xml'><package>" +
                       repeated(size,
                                [](std::string const& number) {
                                    return "<property name='screenTip' locale='de_AT_X" + number +
                                           "'>Text</property>";
                                }) +
                       "</package></model>");
    }));
}
