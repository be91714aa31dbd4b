#include "Vex_I18NString_Collection.h"
#include "host/import/xml/ModelLoader.h"
#include "model/VexMembers.h"
#include "security/VexIdSet.h"
#include "tests/growth/Growth.h"

#include <cstring>

namespace {

I18NString numbered(char const* word, std::size_t number) {
    return I18NString((word + std::to_string(number)).c_str());
}

} // namespace

// Each change of the class is kept with the class's name, whatever its length.
TEST(MembersGrowth, AreAskedForByManyClassesThatTakeTurns) {
    EXPECT_TRUE(staysInProportion(4'000,
                                  [](std::size_t size) {
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
                                  },
                                  {.memory = 40}));
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

// As in VexIdSetTest: ids of eight units that a hash without a seed takes for one.
TEST(MembersGrowth, IdsThatWereChosenToHashAlikeAreLookedUp) {
    auto const alike = [](std::uint64_t number) {
        constexpr std::uint64_t factor = 0x9E37'79B9'7F4A'7C15;
        std::uint64_t const first = number * 0x0001'0001'0001'0001;
        std::uint64_t state = (8 * factor ^ first) * factor;
        state ^= state >> 32U;
        std::uint64_t const second = state ^ 0x0123'4567'89AB'CDEF;
        std::u16string id(8, u'\0');
        std::memcpy(id.data(), &first, sizeof first);
        std::memcpy(id.data() + 4, &second, sizeof second);
        return id;
    };
    EXPECT_TRUE(staysInProportion(2'000, [&](std::size_t size) {
        return countWork(16 * size, [&] {
            VexIdSet ids;
            for (std::size_t number = 0; number < size; ++number) {
                ids.insert(alike(number));
            }
            for (std::size_t number = 0; number < size; ++number) {
                EXPECT_TRUE(ids.contains(I18NString(alike(number))));
            }
        });
    }));
}
