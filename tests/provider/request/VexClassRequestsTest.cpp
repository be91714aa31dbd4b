#include "provider/request/VexClassRequests.h"

#include <string>

#include <gtest/gtest.h>

namespace {

// What begins with the class and "/" among the requests about it.
std::string about(VexClassRequests const& requests, std::string const& className) {
    std::string found;
    for (I18NString const& request : requests.about(className.c_str())) {
        std::string const text = request.toUtf8();
        if (text.rfind(className + "/", 0) == 0) {
            found += text + " ";
        }
    }
    return found;
}

} // namespace

TEST(VexClassRequests, AreTheSameHoweverOftenTheyWereAskedFor) {
    VexClassRequests requests;
    for (char const* const request : {"C/@A", "none", "*/@A", "C/D/@E", "/x", "C/@A", "CC/@A"}) {
        requests.add(request);
    }
    for (int question = 0; question < 500; ++question) {
        ASSERT_EQ(about(requests, "C"), "C/@A C/D/@E C/@A ");
        ASSERT_EQ(about(requests, "C/D"), "C/D/@E ");
        ASSERT_EQ(about(requests, ""), "/x ");
        ASSERT_EQ(about(requests, "none"), "");
        ASSERT_EQ(about(requests, "*"), "*/@A ");
    }
    EXPECT_EQ(requests.about("C").size(), 3U);
    EXPECT_EQ(requests.about("D").size(), 0U);
}

TEST(VexClassRequests, OneThatIsAddedLaterIsFoundToo) {
    VexClassRequests requests;
    requests.add("C/@A");
    for (int question = 0; question < 500; ++question) {
        ASSERT_EQ(about(requests, "C"), "C/@A ");
    }
    requests.add("C/@B");
    EXPECT_EQ(about(requests, "C"), "C/@A C/@B ");
    EXPECT_EQ(requests.all().size(), 2U);
}
