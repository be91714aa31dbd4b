#include "Vex_I18NString_Collection.h"
#include "host/import/xml/ModelLoader.h"
#include "model/VexMembers.h"
#include "security/VexIdSet.h"
#include "tests/growth/Growth.h"
#include "tests/support/AlikeNames.h"

#include <string>

namespace {

I18NString numbered(char const* word, std::size_t number) {
    return I18NString((word + std::to_string(number)).c_str());
}

} // namespace

TEST(MembersGrowth, AreAskedForByManyClassesThatTakeTurns) {
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        std::string text = "<model><namespace>";
        for (std::size_t number = 0; number < size; ++number) {
            text += number % 2 == 0 ? "<a/>" : "<b/>";
        }
        text += "</namespace></model>";
        auto const model = vex::loadModelText(text, "m.xml");
        return countWork(text.size(), [&] {
            VexMembers members;
            members.read(model->getElement(1));
            Vex_Handle_Collection found;
            for (std::size_t number = 0; number < size; ++number) {
                members.appendOfClass(numbered("c", number), found);
            }
            members.appendOfClass("a", found);
            EXPECT_EQ(found.size(), size / 2);
        });
    }));
}

TEST(MembersGrowth, AreAskedForByEachOfManyClassesAmongOthers) {
    constexpr std::size_t eighth = 8;
    EXPECT_TRUE(staysInProportion(4'000, [](std::size_t size) {
        std::string text = "<model><namespace>";
        for (std::size_t number = 0; number < size; ++number) {
            text += number % eighth == 0 ? "<c" + std::to_string(number) + "/>"
                    : number % 2 == 0    ? "<a/>"
                                         : "<b/>";
        }
        text += "</namespace></model>";
        auto const model = vex::loadModelText(text, "m.xml");
        return countWork(text.size(), [&] {
            VexMembers members;
            members.read(model->getElement(1));
            Vex_Handle_Collection found;
            for (std::size_t number = 0; number < size; number += eighth) {
                members.appendOfClass(numbered("c", number), found);
            }
            EXPECT_EQ(found.size(), size / eighth);
        });
    }));
}

TEST(MembersGrowth, DistinctTextsAreCollected) {
    EXPECT_TRUE(staysInProportion(2'000, [](std::size_t size) {
        return countWork(20 * size, [&] {
            Vex_I18NString_Collection texts;
            for (std::size_t number = 0; number < 2 * size; ++number) {
                texts.Add(numbered("text", number % size));
            }
            EXPECT_EQ(texts.Size(), size);
        });
    }));
}

TEST(MembersGrowth, IdsThatWereChosenToHashAlikeAreLookedUp) {
    EXPECT_TRUE(staysInProportion(2'000, [&](std::size_t size) {
        return countWork(16 * size, [&] {
            VexIdSet ids;
            for (std::size_t number = 0; number < size; ++number) {
                ids.insert(alikeId(number));
            }
            for (std::size_t number = 0; number < size; ++number) {
                EXPECT_TRUE(ids.contains(I18NString(alikeId(number))));
            }
        });
    }));
}
