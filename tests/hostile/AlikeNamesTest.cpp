// Properties whose names were chosen to be slow to find in an answer.

#include "tests/support/AlikeNames.h"

#include "tests/hostile/HostileSession.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

using NameOf = std::function<std::string(unsigned number)>;

/// Query subjects that each have all the properties.
std::string modelOf(unsigned properties, NameOf const& name) {
    std::string subject = "<querySubject name='Q'>";
    for (unsigned number = 0; number < properties; ++number) {
        subject += "<property name='" + name(number) + "'>v</property>";
    }
    return "<model><namespace name='N'>" + repeated(subject + "</querySubject>", 2) +
           "</namespace></model>";
}

std::string requestOf(unsigned properties, NameOf const& name) {
    std::string request = "<Metadata><Property n='*/@name'/><Property n='*/querySubject'/>";
    for (unsigned number = 0; number < properties; ++number) {
        request += "<Property n='*/@" + name(number) + "'/>";
    }
    return request + "</Metadata>";
}

std::string numbered(unsigned number) {
    return "property" + std::to_string(number);
}

TEST(AlikeNames, OfPropertiesEndTheAnswerAndNoMore) {
    HostileSession session(modelOf(1'000, alikeName));
    std::string const refused = "are so much alike that the XML library finds them slowly";
    EXPECT_THAT(session.complaint(requestOf(1'000, alikeName)), HasSubstr(refused));
    EXPECT_THAT(session.ask(requestOf(200, alikeName)),
                StartsWith("<Response><Result><folder name=\"N\"><querySubject "));
}

TEST(AlikeNames, ThatNoObjectHasHarmNobody) {
    HostileSession session(modelOf(1, numbered));
    EXPECT_THAT(session.ask(requestOf(1'000, alikeName)),
                StartsWith("<Response><Result><folder name=\"N\"><querySubject name=\"Q\"/>"));
}

TEST(AlikeNames, AreNotNeededWhereThereAreTooManyNames) {
    HostileSession session(modelOf(60'000, numbered));
    EXPECT_THAT(session.complaint("<Metadata><Property n='*/@*'/><Property n='*/querySubject'/>"
                                  "</Metadata>"),
                HasSubstr("too many different names (50001; at most 50000 allowed)"));
}

TEST(AlikeNames, AreNotThoseOfAnswersWithManyProperties) {
    HostileSession session(modelOf(20'000, numbered));
    EXPECT_THAT(session.ask(requestOf(20'000, numbered)), HasSubstr("property19999=\"v\""));
}

} // namespace
