#include "provider/tree/VexMDMaProviderVisability.h"

#include "model/VexCollections.h"
#include "security/VexMDAccessEngine.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

// A model of which some ids are included, and a fresh visibility on it.
class Sight {
public:
    explicit Sight(std::string const& content, std::string const& included = "")
        : model("<model id=\"m\">" + content + "<securityViews><securityView id=\"v\">" +
                "<set kind=\"included\">" + included + "</set></securityView></securityViews>" +
                "</model>"),
          session(model), engine(&session, {"v"}, {}, I18NLocale("en"), false),
          visibility(I18NLocale("en"), &session, &engine, nullptr) {}

    int verdictOn(char const* id) {
        VEX_HANDLE object = model.byId(id);
        return visibility.IsVisible(object);
    }
    int examinationOf(char const* id) {
        VEX_HANDLE object = model.byId(id);
        return visibility.ExamineNamespaceVisability(object);
    }

    TestModel model;
    TestSession session;
    VexMDAccessEngine engine;
    VexMDMaProviderVisability visibility;
};

std::string item(char const* id) {
    return std::string("<item>") + id + "</item>";
}

} // namespace

TEST(VexMDMaProviderVisability, AnIncludedObjectIsVisibleAndRemembered) {
    Sight on("<namespace id=\"a\"/>", item("a"));
    EXPECT_EQ(on.verdictOn("a"), 1);
    on.model.calls().reset();
    EXPECT_EQ(on.verdictOn("a"), 1);
    EXPECT_EQ(on.model.calls().count(Call::GetId), 1);
    EXPECT_EQ(on.model.calls().count(Call::ChildObjects), 0);
}

TEST(VexMDMaProviderVisability, NothingFoundIsAnsweredOnceAndNotVisibleFromThenOn) {
    Sight on("<namespace id=\"a\"><filter id=\"x\"/></namespace>");
    EXPECT_EQ(on.verdictOn("a"), 2);
    EXPECT_EQ(on.verdictOn("a"), 0);
    on.model.calls().reset();
    EXPECT_EQ(on.verdictOn("a"), 0);
    EXPECT_EQ(on.model.calls().count(Call::ChildObjects), 0);
}

// covers quirk: verdict-before-examination
TEST(VexMDMaProviderVisability, ContentOfTheNamespaceItselfComesTooLateToMakeItVisible) {
    Sight on("<namespace id=\"a\"><querySubject id=\"q\"/></namespace>", item("q"));
    EXPECT_EQ(on.examinationOf("a"), 1);
    Sight fresh("<namespace id=\"a\"><querySubject id=\"q\"/></namespace>", item("q"));
    EXPECT_EQ(fresh.verdictOn("a"), 0);
    EXPECT_EQ(fresh.verdictOn("a"), 0);
}

TEST(VexMDMaProviderVisability, ANamespaceExaminedBeforeItIsAskedForIsVisible) {
    Sight on("<namespace id=\"a\"><querySubject id=\"q\"/></namespace>", item("q"));
    EXPECT_EQ(on.examinationOf("a"), 1);
    EXPECT_EQ(on.verdictOn("a"), 1);
}

TEST(VexMDMaProviderVisability, TheNamespaceAroundFoundContentIsVisibleWithoutExamination) {
    Sight on("<namespace id=\"b\"><folder id=\"f\"><filter id=\"x\"/></folder></namespace>",
             item("x"));
    EXPECT_EQ(on.verdictOn("f"), 1);
    on.model.calls().reset();
    EXPECT_EQ(on.verdictOn("b"), 1);
    EXPECT_EQ(on.model.calls().count(Call::ChildObjects), 0);
    EXPECT_EQ(on.verdictOn("f"), 0);
}

TEST(VexMDMaProviderVisability, VerdictsDependOnWhatIsAskedFirst) {
    char const* const model =
        "<namespace id=\"b\"><folder id=\"f\"><filter id=\"x\"/></folder></namespace>";
    Sight on(model, item("x"));
    EXPECT_EQ(on.verdictOn("b"), 0);
    EXPECT_EQ(on.verdictOn("f"), 0);
    EXPECT_EQ(on.verdictOn("b"), 0);
}

TEST(VexMDMaProviderVisability, TheHandleIsReplacedByTheNamespaceThatWasFound) {
    Sight on("<namespace id=\"b\"><folder id=\"f\"><filter id=\"x\"/></folder></namespace>",
             item("x"));
    VEX_HANDLE object = on.model.byId("f");
    on.visibility.IsVisible(object);
    EXPECT_EQ(object, on.model.byId("b"));
}

TEST(VexMDMaProviderVisability, TheHandleStaysWhenContentIsFoundFurtherDown) {
    Sight on("<namespace id=\"a\"><folder id=\"f\"><folder id=\"g\"><filter id=\"x\"/></folder>"
             "</folder></namespace>",
             item("x"));
    VEX_HANDLE object = on.model.byId("a");
    EXPECT_EQ(on.visibility.ExamineNamespaceVisability(object), 1);
    EXPECT_EQ(object, on.model.byId("a"));
    EXPECT_EQ(on.verdictOn("a"), 1);
}

TEST(VexMDMaProviderVisability, SevenClassesAreExaminedAndNoOther) {
    for (char const* const name : {"folder", "querySubject", "queryItem", "queryItemFolder",
                                   "filter", "calculation", "shortcut"}) {
        Sight on(std::string("<namespace id=\"a\"><") + name + " id=\"x\"/></namespace>",
                 item("x"));
        EXPECT_EQ(on.examinationOf("a"), 1) << name;
    }
    for (char const* const name : {"namespace", "function", "relationship", "unknown"}) {
        Sight on(std::string("<namespace id=\"a\"><") + name + " id=\"x\"/></namespace>",
                 item("x"));
        EXPECT_EQ(on.examinationOf("a"), 2) << name;
    }
}

TEST(VexMDMaProviderVisability, ContentBelowANestedNamespaceIsNotFound) {
    Sight on("<namespace id=\"a\"><namespace id=\"b\"><filter id=\"x\"/></namespace></namespace>",
             item("x"));
    EXPECT_EQ(on.verdictOn("a"), 2);
}

TEST(VexMDMaProviderVisability, EveryExaminedBranchIsWalkedUntilOneHoldsContent) {
    Sight on("<namespace id=\"a\"><folder id=\"f\"><filter id=\"w\"/></folder>"
             "<folder id=\"g\"><querySubject id=\"q\"><queryItem id=\"x\"/></querySubject></folder>"
             "</namespace>",
             item("x"));
    EXPECT_EQ(on.examinationOf("a"), 1);
    EXPECT_EQ(on.verdictOn("a"), 1);
}

TEST(VexMDMaProviderVisability, FoundContentOutsideEveryNamespaceMarksTheEmptyId) {
    Sight on("<folder id=\"f\"><filter id=\"x\"/></folder><filter/>", item("x"));
    VEX_HANDLE object = on.model.byId("f");
    EXPECT_EQ(on.visibility.IsVisible(object), 1);
    EXPECT_EQ(object, 0);
    EXPECT_EQ(on.visibility.IsVisible(object), 1);
}

TEST(VexMDMaProviderVisability, ObjectsWithoutAnIdShareOneVerdict) {
    Sight on("<namespace id=\"a\"><filter/><querySubject/></namespace>");
    Vex_Handle_Collection found;
    LoadCollection(on.model.byId("a"), "filter", found);
    LoadCollection(on.model.byId("a"), "querySubject", found);
    VEX_HANDLE first = found[0];
    VEX_HANDLE second = found[1];
    EXPECT_EQ(on.visibility.IsVisible(first), 2);
    EXPECT_EQ(on.visibility.IsVisible(second), 0);
}

TEST(VexMDMaProviderVisability, AskedForNamespacesTheIncludedChildIsVisibleAndTheObjectIsNot) {
    Sight on("<namespace id=\"a\"><namespace id=\"b\"/><namespace id=\"c\"/></namespace>",
             item("c"));
    VEX_HANDLE object = on.model.byId("a");
    Vex_Handle_Collection found;
    EXPECT_TRUE(on.visibility.hasIncludedChild(object, "namespace", found));
    EXPECT_EQ(object, on.model.byId("c"));
    EXPECT_EQ(found.size(), 2U);
    EXPECT_EQ(on.verdictOn("a"), 2);
    EXPECT_EQ(on.verdictOn("c"), 1);
}

TEST(VexMDMaProviderVisability, AVerdictOnceReachedIsNeverChanged) {
    Sight on("<namespace id=\"a\"><namespace id=\"c\"/></namespace>", item("c"));
    EXPECT_EQ(on.verdictOn("a"), 2);
    VEX_HANDLE object = on.model.byId("a");
    Vex_Handle_Collection found;
    EXPECT_TRUE(on.visibility.hasIncludedChild(object, "namespace", found));
    EXPECT_EQ(on.verdictOn("a"), 0);
}

TEST(VexMDMaProviderVisability, HandlesFoundEarlierAreTestedAgain) {
    Sight on("<namespace id=\"a\"/><namespace id=\"b\"><filter id=\"x\"/></namespace>", item("x"));
    VEX_HANDLE object = on.model.byId("a");
    Vex_Handle_Collection found = on.model.byIds({"x"});
    EXPECT_TRUE(on.visibility.hasIncludedChild(object, "querySubject", found));
    EXPECT_EQ(object, on.model.byId("b"));
    EXPECT_EQ(found.size(), 1U);
}

TEST(VexMDMaProviderVisability, WithoutAnIncludedChildHandleAndVerdictsStay) {
    Sight on("<namespace id=\"a\"><filter id=\"x\"/></namespace>");
    VEX_HANDLE object = on.model.byId("a");
    Vex_Handle_Collection found;
    EXPECT_FALSE(on.visibility.hasIncludedChild(object, "filter", found));
    EXPECT_EQ(object, on.model.byId("a"));
    EXPECT_EQ(found.size(), 1U);
    EXPECT_EQ(on.verdictOn("a"), 2);
}

TEST(VexMDMaProviderVisability, WhatTheEngineRaisesComesThroughAndNothingIsRemembered) {
    TestModel model("<model id=\"m\"><namespace id=\"a\"/></model>");
    TestSession session(model);
    VexMDAccessEngine engine(&session, {"v"}, {}, I18NLocale("en"), false);
    VexMDMaProviderVisability visibility(I18NLocale("en"), &session, &engine, nullptr);
    VEX_HANDLE object = model.byId("a");
    for (int attempt = 0; attempt < 2; ++attempt) {
        expectFailure([&] { visibility.IsVisible(object); }, 1170839636, "VexMDAccessEngine", 0,
                      "VexMDAccessEngine::populateAccessInfo");
    }
}
