#include "host/protocol/JsonDifferences.h"

#include "tests/host/protocol/WrittenText.h"

#include <gtest/gtest.h>

namespace {

using vex::Presence;
using Change = vex::ComparedObject::Change;

TEST(JsonDifferences, AreNoneBetweenTheSame) {
    EXPECT_EQ(jsonOf(vex::Differences{}), R"({
  "appear": 0,
  "disappear": 0,
  "change": 0,
  "renamed": 0,
  "objects": []
})");
}

TEST(JsonDifferences, LeaveOutWhatIsListedForWhatIsInsideIt) {
    vex::Differences differences;
    differences.appear = 1;
    differences.disappear = 1;
    differences.objects = {{Change::None,
                            {"n", "[S]", "namespace", "S"},
                            Presence::InItsPlace,
                            Presence::InItsPlace,
                            false,
                            {},
                            vex::ToldChange::NoContainer},
                           {Change::Appears,
                            {"f", "[S].[F]", "folder", "F"},
                            Presence::None,
                            Presence::InItsPlace,
                            false,
                            {},
                            0},
                           {Change::Disappears,
                            {"", "[S].[G]", "folder", "G"},
                            Presence::InItsPlace,
                            Presence::BehindShortcuts,
                            false,
                            {},
                            0}};
    EXPECT_EQ(jsonOf(differences), R"({
  "appear": 1,
  "disappear": 1,
  "change": 0,
  "renamed": 0,
  "objects": [
    {
      "change": "appears",
      "id": "f",
      "reference": "[S].[F]",
      "class": "folder",
      "name": "F",
      "presence": {
        "before": "none",
        "after": "in-its-place"
      }
    },
    {
      "change": "disappears",
      "id": "",
      "reference": "[S].[G]",
      "class": "folder",
      "name": "G",
      "presence": {
        "before": "in-its-place",
        "after": "behind-shortcuts"
      }
    }
  ]
})");
}

TEST(JsonDifferences, TellThePropertiesThatChangeInTheirOrder) {
    vex::Differences differences;
    differences.change = 1;
    differences.renamed = 1;
    differences.objects = {{Change::Changes,
                            {"i", "[S].[New]", "queryItem", "New"},
                            Presence::InItsPlace,
                            Presence::InItsPlace,
                            true,
                            {{"name", "Old", "New"}, {"ID", "", "i"}},
                            vex::ToldChange::NoContainer}};
    EXPECT_EQ(jsonOf(differences), R"({
  "appear": 0,
  "disappear": 0,
  "change": 1,
  "renamed": 1,
  "objects": [
    {
      "change": "changes",
      "id": "i",
      "reference": "[S].[New]",
      "class": "queryItem",
      "name": "New",
      "presence": {
        "before": "in-its-place",
        "after": "in-its-place"
      },
      "renamed": true,
      "properties": {
        "name": {
          "before": "Old",
          "after": "New"
        },
        "ID": {
          "before": "",
          "after": "i"
        }
      }
    }
  ]
})");
}

} // namespace
