#include "host/protocol/JsonVerification.h"

#include <gtest/gtest.h>

namespace {

using vex::ObjectLabel;

vex::UserVerification annWith(std::vector<vex::ToldLeak> leaks,
                              std::vector<vex::ToldDifference> differences) {
    vex::UserVerification user;
    user.user = "ann";
    user.objects = 628;
    user.leaks = std::move(leaks);
    user.differences = std::move(differences);
    return user;
}

TEST(JsonVerification, IsCleanWhenNothingWasFound) {
    EXPECT_EQ(vex::toJson(vex::Verification{{annWith({}, {})}}), R"({
  "clean": true,
  "finished": true,
  "users": [
    {
      "user": "ann",
      "objects": 628,
      "leaks": [],
      "differences": []
    }
  ]
})");
}

TEST(JsonVerification, TellsALeakByTheObjectTheTextAndWhatItNames) {
    ObjectLabel const object{"f", "[S].[F]", "filter", "Lines"};
    ObjectLabel const named{"", "[S].[Cost]", "queryItem", "Cost"};
    EXPECT_EQ(vex::toJson(
                  vex::Verification{{annWith({{object, "expression", "[S].[Cost]", named}}, {})}}),
              R"({
  "clean": false,
  "finished": true,
  "users": [
    {
      "user": "ann",
      "objects": 628,
      "leaks": [
        {
          "object": {
            "id": "f",
            "class": "filter",
            "name": "Lines"
          },
          "property": "expression",
          "reference": "[S].[Cost]",
          "named": {
            "id": "[S].[Cost]",
            "class": "queryItem",
            "name": "Cost"
          }
        }
      ],
      "differences": []
    }
  ]
})");
}

TEST(JsonVerification, TellsWhichDifferencesAreRequired) {
    ObjectLabel const object{"n", "[S]", "namespace", "S"};
    EXPECT_EQ(vex::toJson(vex::Verification{
                  {annWith({}, {{object, true, vex::DifferenceCause::Start},
                                {object, false, vex::DifferenceCause::Unexplained}})}}),
              R"({
  "clean": false,
  "finished": true,
  "users": [
    {
      "user": "ann",
      "objects": 628,
      "leaks": [],
      "differences": [
        {
          "object": {
            "id": "n",
            "class": "namespace",
            "name": "S"
          },
          "inTree": true,
          "accessible": false,
          "cause": "start",
          "required": true
        },
        {
          "object": {
            "id": "n",
            "class": "namespace",
            "name": "S"
          },
          "inTree": false,
          "accessible": true,
          "cause": "unexplained",
          "required": false
        }
      ]
    }
  ]
})");
}

TEST(JsonVerification, TellsWhetherBothOrOneOfTreesAndCheckAreRefused) {
    EXPECT_EQ(vex::toJson(vex::Verification{{vex::tellRefusal("nora", true, "No view."),
                                             vex::tellRefusal("", false, "No role.")}}),
              R"({
  "clean": false,
  "finished": true,
  "users": [
    {
      "user": "nora",
      "refused": "both",
      "text": "No view."
    },
    {
      "user": "",
      "refused": "one",
      "text": "No role."
    }
  ]
})");
}

} // namespace
