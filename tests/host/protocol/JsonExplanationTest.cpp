#include "host/protocol/JsonExplanation.h"

#include "tests/host/protocol/WrittenText.h"

#include <gtest/gtest.h>

namespace {

TEST(JsonExplanation, HasAnEmptyListOfEachWhenThereIsNothingToTell) {
    EXPECT_EQ(jsonOf(vex::Explanation{}), R"({
  "objects": [],
  "views": []
})");
}

TEST(JsonExplanation, TellsTheRuleTheSentencesAndTheViewsOfAnObject) {
    vex::ToldObject const object{{"q", "[Sales].[Orders]", "querySubject", "Orders \"all\""},
                                 false,
                                 VexAccessReason::NotInViews,
                                 "hidden: why",
                                 {"left out", "in no tree"},
                                 {{"v1", true, false, true, "v1 includes, hides it"}}};
    EXPECT_EQ(jsonOf(vex::Explanation{{object}, {}}), R"({
  "objects": [
    {
      "id": "q",
      "class": "querySubject",
      "name": "Orders \"all\"",
      "accessible": false,
      "rule": "not-in-views",
      "text": "hidden: why",
      "tree": [
        "left out",
        "in no tree"
      ],
      "views": [
        {
          "view": "v1",
          "included": true,
          "excluded": false,
          "hidden": true
        }
      ]
    }
  ],
  "views": []
})");
}

TEST(JsonExplanation, KeepsListsOfAnObjectThatNoViewNames) {
    vex::ToldObject object;
    object.accessible = true;
    EXPECT_EQ(jsonOf(vex::Explanation{{object}, {}}), R"({
  "objects": [
    {
      "id": "",
      "class": "",
      "name": "",
      "accessible": true,
      "rule": "unrestricted",
      "text": "",
      "tree": [],
      "views": []
    }
  ],
  "views": []
})");
}

TEST(JsonExplanation, TellsWhatAViewIs) {
    vex::ToldView const view{"v1",    "Clerks",  "v1 Clerks", true, VexViewRole::RoleHeld,
                             "clerk", "in force"};
    EXPECT_EQ(jsonOf(vex::Explanation{{}, {view}}), R"({
  "objects": [],
  "views": [
    {
      "id": "v1",
      "name": "Clerks",
      "inForce": true,
      "role": "role-held",
      "firstMemberRole": "clerk",
      "text": "in force"
    }
  ]
})");
}

} // namespace
