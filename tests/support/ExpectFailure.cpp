#include "tests/support/ExpectFailure.h"

#include "VexException.h"
#include "tests/support/CallCounter.h"

#include <gtest/gtest.h>

namespace {

void check(VexException const& failure, unsigned id, std::string const& source, int line,
           std::string const& function, std::vector<std::string> const& parameters) {
    EXPECT_EQ(failure.GetId(), id);
    EXPECT_EQ(failure.GetLocation().source, source);
    if (line != 0) {
        EXPECT_EQ(failure.GetLocation().line, line);
    } else {
        EXPECT_GT(failure.GetLocation().line, 0);
    }
    EXPECT_EQ(failure.GetFunction(), function);
    EXPECT_STREQ(failure.GetKind(), "KRL_THROW");
    ASSERT_EQ(failure.GetMessages().size(), 1U);
    EXPECT_EQ(failure.GetMessages()[0].GetId(), id);
    std::vector<std::string> found;
    for (KRLMessageParm const& parameter :
         failure.GetMessages()[0].GetComponents().GetParameters()) {
        found.push_back(parameter.GetText().toUtf8());
    }
    EXPECT_EQ(found, parameters);
}

} // namespace

void expectFailure(std::function<void()> const& call, unsigned id, std::string const& source,
                   int line, std::string const& function,
                   std::vector<std::string> const& parameters, char const* testFile, int testLine) {
    testing::ScopedTrace const trace(testFile, testLine, "the failure expected here");
    try {
        call();
    } catch (VexException const& failure) {
        check(failure, id, source, line, function, parameters);
        return;
    }
    ADD_FAILURE() << "nothing was raised";
}

void expectInjectedFailure(std::function<void()> const& call, char const* testFile, int testLine) {
    testing::ScopedTrace const trace(testFile, testLine, "the failure expected here");
    try {
        call();
    } catch (VexException const& failure) {
        EXPECT_EQ(failure.GetId(), CallCounter::InjectedFailure);
        return;
    }
    ADD_FAILURE() << "nothing was raised";
}
