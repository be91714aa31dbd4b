// docs/headers.md against the headers that are installed.

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(HeadersPage, NamesEveryHeader) {
    std::ostringstream text;
    text << std::ifstream(VEX_SOURCE_DIR "/docs/headers.md").rdbuf();
    std::string const page = text.str();
    int headers = 0;
    for (char const* const folder : {"platform/include", "kit/include"}) {
        for (auto const& file :
             std::filesystem::directory_iterator(std::filesystem::path(VEX_SOURCE_DIR) / folder)) {
            ++headers;
            std::string const name = file.path().stem();
            EXPECT_NE(page.find('`' + name + '`'), std::string::npos) << name;
        }
    }
    EXPECT_GT(headers, 40);
}

} // namespace
