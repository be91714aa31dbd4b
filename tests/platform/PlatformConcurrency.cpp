#include "I18NLocale.h"
#include "KRLIDOM_Platform.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "KRLPluginCreator.h"
#include "VexObject.h"
#include "VexTrace.h"
#include "resources.h"
#include "tests/platform/objects/PlatformFakes.h"

#include <atomic>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr unsigned threadCount = 8;

// Runs `work(thread number)` on all threads, which start together.
template <class Work> void together(Work work) {
    std::atomic<unsigned> ready{0};
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            ++ready;
            while (ready.load() < threadCount) {
                std::this_thread::yield();
            }
            work(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// First in this file: in a process of its own it races the first start of the
// XML library.
TEST(KRLIDOMInitialize, StartsOnceWhoeverComesFirst) {
    std::atomic<int> right{0};
    together([&](unsigned) {
        KRLIDOM_Initialize();
        KRLIDOM_OwnedDocument const owner = KRLIDOM_Reader::parse("<a n='1'><b/></a>", "t");
        right += KRLIDOM_Writer::toUtf8(owner.document()) == "<a n=\"1\"><b/></a>";
    });
    EXPECT_EQ(right.load(), static_cast<int>(threadCount));
}

TEST(I18NStringShared, GivesUtf8ToAllThreads) {
    for (int round = 0; round < 200; ++round) {
        I18NString const text("Verk\xC3\xA4ufe");
        std::vector<char const*> found(threadCount);
        together([&](unsigned number) { found[number] = text.c_str(); });
        for (char const* each : found) {
            ASSERT_EQ(each, text.c_str());
            ASSERT_STREQ(each, "Verk\xC3\xA4ufe");
        }
    }
}

TEST(I18NStringShared, IsReadAndCopiedByAllThreads) {
    // Copies inside and outside the object, and the longest that could be inside.
    for (int length : {0, 5, 26, 27, 28, 100}) {
        I18NString const original(std::u16string(static_cast<std::size_t>(length), u'x'));
        I18NString const text(original);
        std::atomic<int> wrong{0};
        together([&](unsigned) {
            for (int i = 0; i < 500; ++i) {
                wrong += text.utf16()[length] != 0;
                I18NString const copy(text);
                wrong += copy.utf16()[length] != 0;
                wrong += copy != text;
                wrong += text.view() != original.view();
            }
        });
        EXPECT_EQ(wrong.load(), 0) << length;
    }
}

TEST(I18NLocaleShared, IsMadeOnceForEachName) {
    std::vector<std::vector<std::uint32_t>> numbers(threadCount);
    together([&](unsigned number) {
        for (int i = 0; i < 300; ++i) {
            std::string const name = "de__V" + std::to_string(1'000 + i);
            I18NLocale const locale{I18NString(name.c_str())};
            numbers[number].push_back(locale.getNumber());
            if (locale.getDecimalSeparator() != "," || locale.getParent() != I18NLocale("de")) {
                numbers[number].push_back(0);
            }
        }
    });
    std::set<std::uint32_t> const distinct(numbers[0].begin(), numbers[0].end());
    EXPECT_EQ(distinct.size(), 300U);
    for (std::vector<std::uint32_t> const& each : numbers) {
        EXPECT_EQ(each, numbers[0]);
    }
}

TEST(ResourcesShared, AreTheSameForAllThreads) {
    std::atomic<int> right{0};
    together([&](unsigned) {
        right += std::u16string_view(resources::getString(278).utf16()) == u"name";
    });
    EXPECT_EQ(right.load(), static_cast<int>(threadCount));
}

TEST(VexObjectModelShared, GivesEachModelHandlesOfItsOwn) {
    std::vector<std::vector<std::uint32_t>> firsts(threadCount);
    std::atomic<int> wrong{0};
    FakeModel const standing(10);
    together([&](unsigned number) {
        for (int i = 0; i < 100; ++i) {
            auto model = std::make_unique<FakeModel>(5'000);
            VEX_HANDLE const last = model->At(4'999);
            wrong += !VexObject(last).IsValid();
            wrong += !VexObject(standing.At(9)).IsValid();
            firsts[number].push_back(model->First());
            model.reset();
            wrong += VexObject(last).IsValid();
        }
    });
    EXPECT_EQ(wrong.load(), 0);
    std::set<std::uint32_t> distinct;
    for (std::vector<std::uint32_t> const& each : firsts) {
        distinct.insert(each.begin(), each.end());
    }
    EXPECT_EQ(distinct.size(), threadCount * 100U);
}

TEST(KRLIDOMShared, BuildsDocumentsOnAllThreads) {
    I18NString const tag("element");
    I18NString const text(u"a value that is longer than fits inside");
    std::vector<std::string> written(threadCount);
    together([&](unsigned number) {
        KRLIDOM_OwnedDocument const owner(tag);
        KRLIDOM_Document const document = owner.document();
        for (int i = 0; i < 100; ++i) {
            KRLIDOM_Element const element = document.createElement(tag);
            element.setAttribute(tag, text);
            document.getDocumentElement().appendChild(element);
        }
        written[number] = KRLIDOM_Writer::toUtf8(document);
    });
    for (std::string const& each : written) {
        EXPECT_EQ(each, written[0]);
    }
}

TEST(VexPluginFactoryShared, RegistersAndFindsFromAllThreads) {
    class Creator final : public KRLPluginCreatorBase<VexPluginInterface> {
    public:
        explicit Creator(std::string const& library) : KRLPluginCreatorBase(library) {}
        VexPluginInterface* create() const override { return nullptr; }
        void clean() override {}
    };
    VexPluginFactory& factory = *VexPluginFactory_getInstance();
    std::atomic<int> wrong{0};
    together([&](unsigned number) {
        std::string const library = "lib" + std::to_string(number);
        Creator creator(library);
        for (int i = 0; i < 200; ++i) {
            wrong += !factory.RegisterCreator(library, &creator);
            wrong += factory.FindCreator(library) != &creator;
            factory.ForgetLibrary(library);
        }
    });
    EXPECT_EQ(wrong.load(), 0);
}

std::atomic<int> traces{0};

TEST(OutputDebugStringShared, TracesWhileTheSinkChanges) {
    together([&](unsigned number) {
        for (int i = 0; i < 1'000; ++i) {
            if (number == 0) {
                VexSetTraceSink(i % 2 == 0 ? [](char const*) { ++traces; } : VexTraceSink{});
            }
            OutputDebugString("line");
        }
    });
    VexSetTraceSink(nullptr);
    EXPECT_GT(traces.load(), 0);
}

} // namespace
