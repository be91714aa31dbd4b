#include "host/insight/DiagnosticRules.h"
#include "host/protocol/JsonFindings.h"
#include "tests/host/protocol/WrittenText.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using vex::Severity;

std::string sarifOf(vex::Diagnostic const& found) {
    return sarifLogOf(vex::Diagnostics{found}, "1.2.3");
}

TEST(SarifFindings, AreALogOfOneRunThatNamesTheProgramAndItsVersion) {
    std::string const log = sarifLogOf(vex::Diagnostics{}, "1.2.3");
    EXPECT_THAT(log, StartsWith(R"({
  "$schema": "https://json.schemastore.org/sarif-2.1.0.json",
  "version": "2.1.0",
  "runs": [
    {
      "tool": {
        "driver": {
          "name": "vexma",
          "version": "1.2.3",
          "rules": [
            {
              "id": "unreadable",
              "shortDescription": {
                "text": "The model file cannot be read."
              },
              "defaultConfiguration": {
                "level": "error"
              }
            },
)"));
    EXPECT_THAT(log, EndsWith(R"(
      "columnKind": "utf16CodeUnits",
      "results": []
    }
  ]
})"));
}

TEST(SarifFindings, NameEveryRule) {
    std::string const log = sarifLogOf(vex::Diagnostics{}, "1");
    for (vex::DiagnosticRule const& rule : vex::diagnosticRules) {
        EXPECT_THAT(log, HasSubstr("\"id\": \"" + std::string(rule.name) + '"'));
    }
}

TEST(SarifFindings, HaveRuleLevelMessageAndPlace) {
    EXPECT_THAT(sarifOf({Severity::Error, "not-well-formed", "dir/a model.xml", 3, 14, "broken"}),
                EndsWith(R"(
      "results": [
        {
          "ruleId": "not-well-formed",
          "ruleIndex": 1,
          "level": "error",
          "message": {
            "text": "broken"
          },
          "locations": [
            {
              "physicalLocation": {
                "artifactLocation": {
                  "uri": "dir/a%20model.xml"
                },
                "region": {
                  "startLine": 3,
                  "startColumn": 14
                }
              }
            }
          ]
        }
      ]
    }
  ]
})"));
}

TEST(SarifFindings, LeaveOutWhatIsUnknownOfAPlace) {
    EXPECT_THAT(sarifOf({Severity::Warning, "root", "m.xml", 3, 0, "t"}), HasSubstr(R"(
                "region": {
                  "startLine": 3
                }
)"));
    EXPECT_THAT(sarifOf({Severity::Warning, "root", "m.xml", 0, 7, "t"}), HasSubstr(R"(
              "physicalLocation": {
                "artifactLocation": {
                  "uri": "m.xml"
                }
              }
)"));
}

TEST(SarifFindings, WriteAFilesNameAsAUriReference) {
    EXPECT_THAT(sarifOf({Severity::Note, "root", "/a-b_c.d~/\xC3\xBC%:?", 1, 1, "t"}),
                HasSubstr(R"("uri": "/a-b_c.d~/%C3%BC%25%3A%3F")"));
}

} // namespace
