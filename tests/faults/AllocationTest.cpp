#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexNotification.h"
#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/store/image/ImageFile.h"
#include "tests/faults/FaultModel.h"
#include "tests/faults/FaultRun.h"
#include "tests/faults/FaultSession.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

constexpr char const* wholeTree =
    R"(<Metadata Depth="0"><Property name="*/@*"/><Property name="*/@_path"/>
       <Property name="*/@_ref"/><Property name="*/*"/></Metadata>)";
constexpr char const* oneItem =
    R"(<Metadata start_at="[Sales of every store and of the shop on the web].[Facts].[Orders].[Quantity]">
       <Property name="*/@name"/><Property name="*/@datatype"/></Metadata>)";
constexpr char const* reference =
    R"(<Metadata start_atRef="[Vertrieb].[Orders].[Ordered]"><Property name="*/@name"/>
       <Property name="*/@_ref"/></Metadata>)";
constexpr char const* globals =
    R"(<Metadata Depth="1"><Property name="/@decimalSeparator"/><Property name="/@supportedLocales"/>
       <Property name="/@effectiveLocale"/><Property name="./@name"/></Metadata>)";
constexpr char const* package =
    R"(<Metadata><Functions scope="package"/><Property name="package/@screenTip"/></Metadata>)";
constexpr char const* refused =
    R"(<Metadata start_at="[Vertrieb].[There is no such object in this model]"/>)";

std::string answerTo(char const* request) {
    return FaultSession().ask(request);
}

class AllocationFailureOfRequest : public testing::TestWithParam<char const*> {};

TEST_P(AllocationFailureOfRequest, LeavesWhatTheSessionKeptFromEarlierRequests) {
    char const* const request = GetParam();
    std::string const expected = answerTo(request);
    FaultSession session;
    FaultRun run;
    run.expected = expected;
    EXPECT_EQ(session.ask(request), expected);
    run.prepare = [&] { return [&] { return session.ask(request); }; };
    run.check = [&] { EXPECT_EQ(session.ask(request), expected); };
    failEveryAllocation(run);
}

TEST_P(AllocationFailureOfRequest, LeavesAFreshSessionAndEveryOtherUsable) {
    char const* const request = GetParam();
    std::string const expected = answerTo(request);
    std::string const other = answerTo(wholeTree);
    FaultRun run;
    run.expected = expected;
    run.prepare = [&] {
        auto const fresh = std::make_shared<FaultSession>();
        return [fresh, request, &expected] {
            try {
                return fresh->ask(request);
            } catch (...) {
                // With memory for the second try, it answers.
                failingMemory::Pause const pause;
                EXPECT_EQ(fresh->ask(request), expected);
                throw;
            }
        };
    };
    run.check = [&] { EXPECT_EQ(answerTo(wholeTree), other); };
    failEveryAllocation(run);
}

INSTANTIATE_TEST_SUITE_P(Kinds, AllocationFailureOfRequest,
                         testing::Values(wholeTree, oneItem, reference, globals, package, refused));

TEST(AllocationFailure, OfAnAccessibilityRequestLeavesTheSessionUsable) {
    for (auto const& [id, included] : {std::pair("i", "1 1 "), std::pair("x", "1 0 ")}) {
        std::string const expected = std::string(included) + "<Response><Result/></Response>";
        FaultSession kept;
        EXPECT_EQ(kept.askAccess(id), expected);
        FaultRun run;
        run.expected = expected;
        run.prepare = [&] {
            auto const fresh = std::make_shared<FaultSession>();
            return [fresh, id = id, &expected] {
                try {
                    return fresh->askAccess(id);
                } catch (...) {
                    failingMemory::Pause const pause;
                    EXPECT_EQ(fresh->askAccess(id), expected);
                    throw;
                }
            };
        };
        run.check = [&] { EXPECT_EQ(kept.askAccess(id), expected); };
        failEveryAllocation(run);
    }
}

TEST(AllocationFailure, OfTheFirstRequestOfAllOnAModelLeavesItsSetsToBeMade) {
    for (char const* const request : {wholeTree, oneItem}) {
        std::string const expected = answerTo(request);
        FaultRun run;
        run.expected = expected;
        run.prepare = [&] {
            auto const model = vex::loadModelText(faultModel, "m.model.xml");
            auto const first = std::make_shared<FaultSession>(model);
            return [model, first, request, &expected] {
                try {
                    return first->ask(request);
                } catch (...) {
                    failingMemory::Pause const pause;
                    EXPECT_EQ(first->ask(request), expected);
                    EXPECT_EQ(FaultSession(model).ask(request), expected);
                    throw;
                }
            };
        };
        failEveryAllocation(run);
    }
}

TEST(AllocationFailure, OfAnAnswerAtAnObjectLeavesTheSessionUsable) {
    for (char const* const request : {wholeTree, globals}) {
        std::string const expected = FaultSession().askAt("q", request);
        std::string const kept = answerTo(oneItem);
        FaultSession session;
        EXPECT_EQ(session.ask(oneItem), kept);
        FaultRun run;
        run.expected = expected;
        run.prepare = [&] { return [&] { return session.askAt("q", request); }; };
        run.check = [&] {
            EXPECT_EQ(session.askAt("q", request), expected);
            EXPECT_EQ(session.ask(oneItem), kept);
        };
        failEveryAllocation(run);
    }
}

TEST(AllocationFailure, OfANotificationLeavesItToBeSentAgain) {
    std::string const expected = answerTo(oneItem);
    for (int const kind : {VexNotification::SessionOpened, VexNotification::SessionClosed,
                           VexNotification::ModelReloaded}) {
        FaultRun run;
        run.prepare = [&] {
            auto const session = std::make_shared<FaultSession>();
            EXPECT_EQ(session->ask(oneItem), expected);
            return [session, kind, &expected] {
                try {
                    session->notify(kind);
                } catch (...) {
                    failingMemory::Pause const pause;
                    EXPECT_EQ(session->ask(oneItem), expected);
                    throw;
                }
                return std::string();
            };
        };
        failEveryAllocation(run);
    }
}

TEST(AllocationFailure, OfALoadLeavesNothingLoaded) {
    FaultRun run;
    run.expected = std::to_string(FaultSession::model()->elementCount());
    run.prepare = [] {
        return [] {
            vex::LoadOptions options;
            options.keepPositions = true;
            return std::to_string(
                vex::loadModelText(faultModel, "m.model.xml", options)->elementCount());
        };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfAnImageLeavesNothingOpen) {
    static std::string const image =
        vex::imageBytesOf(*vex::loadModelText(faultModel, "m.model.xml"));
    static std::string const document = vex::modelDocumentOf(*vex::openImageBytes(image, "m.vexm"));
    FaultRun run;
    run.expected = "same";
    run.prepare = [] {
        return [] {
            auto const model = vex::openImageBytes(image, "m.vexm");
            bool const isSame =
                vex::imageBytesOf(*model) == image && vex::modelDocumentOf(*model) == document;
            return std::string(isSame ? "same" : "another");
        };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfALoadThatIsRefusedAnywayEndsNoWorse) {
    FaultRun run;
    run.expected = "2";
    run.prepare = [] {
        return [] {
            vex::Diagnostics found;
            vex::loadModelText("<model><property>text</property><a id='1'/><a id='1'/></model>",
                               "m.model.xml", {}, found);
            return std::to_string(found.size());
        };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfACatalogueLeavesNothingLoaded) {
    FaultRun run;
    run.expected = "1 1";
    run.prepare = [] {
        return [] {
            vex::Diagnostics found;
            auto const catalogue = vex::readCatalogueText(faultCatalogue, "c.xml", ".", found);
            return std::to_string(catalogue->models.size()) + " " +
                   std::to_string(catalogue->users.size());
        };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfReadingAndWritingADocumentLeavesNoneBehind) {
    std::string const text =
        R"(<a b="1"><c d="a text that is not kept inside of a string">e</c></a>)";
    FaultRun run;
    run.expected = text;
    run.prepare = [&] {
        return
            [&] { return KRLIDOM_Writer::toUtf8(KRLIDOM_Reader::parse(text, "a.xml").document()); };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfReadingWithTheParserThatTheThreadKeepsLeavesNoneBehind) {
    FaultRun run;
    run.expected = "<c d=\"another text that is longer\"/>";
    run.prepare = [&] {
        KRLIDOM_Reader::parse("<a b='1'>a text that the parser was made for</a>", "a.xml");
        return [&] {
            return KRLIDOM_Writer::toUtf8(KRLIDOM_Reader::parse(run.expected, "c.xml").document());
        };
    };
    failEveryAllocation(run);
}

TEST(AllocationFailure, OfALocaleThatNobodyAskedForBeforeLeavesItToBeMade) {
    // Locales are kept for good: each try has a name of its own, and what it
    // leaves is no leak.
    for (std::size_t nth = 1; nth < 60; ++nth) {
        std::string const number = std::to_string(nth);
        I18NString const asked(("de-at-posix" + number).c_str());
        {
            failingMemory::Scope const failing(nth, failingMemory::Mode::Once);
            try {
                I18NLocale(asked).getDecimalSeparator();
            } catch (std::bad_alloc const&) {
            }
        }
        I18NLocale const made(asked);
        EXPECT_EQ(made.getName().toUtf8(), "de_AT_POSIX" + number);
        EXPECT_EQ(made.getParent().getName().toUtf8(), "de_AT") << number;
        EXPECT_EQ(made.getDecimalSeparator().toUtf8(), ",") << number;
    }
}

} // namespace
