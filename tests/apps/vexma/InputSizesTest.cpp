#include "tests/apps/vexma/ToolRun.h"

#include <ostream>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

struct TooLong {
    char const* what;
    std::string command; // of a shell
    char const* says;
};

void PrintTo(TooLong const& input, std::ostream* out) {
    *out << input.what;
}

class InputsThatAreTooLong : public testing::TestWithParam<TooLong> {};

TEST_P(InputsThatAreTooLong, AreRefusedAtTheLimitWithTheOptionThatRaisesIt) {
    ToolResult const result = ToolFolder().RunShell(GetParam().command);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.error, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    InputSizes, InputsThatAreTooLong,
    testing::Values(
        TooLong{"a model", "\"$VEXMA\" tree small.model.xml --max-model 100",
                "small.model.xml: is longer than 100 bytes, which is the limit; raise it with "
                "--max-model"},
        TooLong{"a model from standard input",
                "\"$VEXMA\" tree - --max-model 100 < small.model.xml",
                "standard input: is longer than 100 bytes, which is the limit; raise it with "
                "--max-model"},
        TooLong{"a model without an end",
                "{ echo '<model>'; yes ' '; } | \"$VEXMA\" tree /dev/stdin --max-model 100000",
                "is longer than 100000 bytes"},
        TooLong{"standard input without an end", "\"$VEXMA\" tree - --max-model 100000 < /dev/zero",
                "is longer than 100000 bytes"},
        TooLong{"a model of a catalogue",
                "\"$VEXMA\" tree --catalog small.catalog.xml --model /content/small --user ann "
                "--max-model 100",
                "bytes, which is the limit; raise it with --max-model"},
        TooLong{"a catalogue",
                "\"$VEXMA\" tree --catalog small.catalog.xml --model /content/small --user ann "
                "--max-catalog 10",
                "small.catalog.xml: is longer than 10 bytes, which is the limit; raise it with "
                "--max-catalog"},
        TooLong{"a catalogue without an end",
                "\"$VEXMA\" tree --catalog /dev/zero --model /content/small --user ann "
                "--max-catalog 100000",
                "/dev/zero: is longer than 100000 bytes"},
        TooLong{"a model to validate", "\"$VEXMA\" validate small.model.xml --max-model 100",
                "raise it with --max-model"},
        TooLong{"a file to validate without an end",
                "\"$VEXMA\" validate /dev/zero --max-model 100000", "raise it with --max-model"},
        TooLong{"a catalogue to validate",
                "\"$VEXMA\" validate --catalog small.catalog.xml --max-catalog 10",
                "raise it with --max-catalog"},
        TooLong{"a request",
                "\"$VEXMA\" metadata small.model.xml --request /dev/zero --max-request 100000",
                "/dev/zero: is longer than 100000 bytes, which is the limit; raise it with "
                "--max-request"},
        TooLong{"accepted findings",
                "\"$VEXMA\" verify --catalog small.catalog.xml --model /content/small --accept "
                "/dev/zero --max-accepted 100000",
                "/dev/zero: is longer than 100000 bytes, which is the limit; raise it with "
                "--max-accepted"},
        TooLong{"rules", "\"$VEXMA\" validate small.model.xml --rules /dev/zero",
                "/dev/zero: is longer than 65536 bytes, which is the limit"}));

} // namespace
