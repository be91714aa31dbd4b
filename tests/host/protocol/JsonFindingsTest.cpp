#include "host/protocol/JsonFindings.h"

#include "tests/host/protocol/WrittenText.h"

#include <gtest/gtest.h>

namespace {

using vex::Severity;

TEST(JsonFindings, AreCountedWhenThereAreNone) {
    EXPECT_EQ(jsonOf(vex::Diagnostics{}), R"({
  "errors": 0,
  "warnings": 0,
  "notes": 0,
  "findings": []
})");
}

TEST(JsonFindings, TellSeverityRulePlaceAndText) {
    EXPECT_EQ(
        jsonOf(vex::Diagnostics{{Severity::Error, "duplicate-id", "m.xml", 3, 14, "two \"a\""},
                                {Severity::Note, "object-in-no-view", "m.xml", 0, 0, "none"}}),
        R"({
  "errors": 1,
  "warnings": 0,
  "notes": 1,
  "findings": [
    {
      "severity": "error",
      "rule": "duplicate-id",
      "file": "m.xml",
      "line": 3,
      "column": 14,
      "text": "two \"a\""
    },
    {
      "severity": "note",
      "rule": "object-in-no-view",
      "file": "m.xml",
      "line": 0,
      "column": 0,
      "text": "none"
    }
  ]
})");
}

TEST(JsonFindings, AreUtf8WhateverTheFilesNameIs) {
    std::string const json =
        jsonOf(vex::Diagnostics{{Severity::Warning, "root", "a\xFFz", 1, 1, "t"}});
    EXPECT_NE(json.find("\"file\": \"a\xEF\xBF\xBDz\""), std::string::npos) << json;
}

} // namespace
