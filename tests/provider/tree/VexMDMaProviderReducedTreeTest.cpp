#include "provider/VexMDMaProvider.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestDocument.h"
#include "tests/support/TestSession.h"

#include <gtest/gtest.h>

namespace {

// What the reduced tree of the model's root holds in one language.
class ReducedTree {
public:
    explicit ReducedTree(std::string const& model) : m_model(model) {}

    std::string below(char const* id, char const* locale = "en") {
        TestResponse response;
        I18NLocale const language(locale);
        m_provider.GetReducedElementTree(m_model.byId(id), &language, response.node());
        return response.resultText();
    }
    TestModel& model() { return m_model; }
    VexMDMaProvider& provider() { return m_provider; }

private:
    TestModel m_model;
    TestSession m_session{m_model};
    VexMDMaProvider m_provider{m_session, "/content/m"};
};

} // namespace

TEST(ReducedTree, EveryObjectHasItsFourAttributes) {
    ReducedTree on(R"(<model id="m"><namespace id="n" role="r" class="c">
                        <property name="name" locale="en">Sales</property>
                        <property name="name" locale="de">Vertrieb</property>
                      </namespace></model>)");
    EXPECT_EQ(on.below("m"), R"(<namespace ID="n" class="c" name="Sales" role="r"/>)");
    EXPECT_EQ(on.below("m", "de_AT"), R"(<namespace ID="n" class="c" name="Vertrieb" role="r"/>)");
}

TEST(ReducedTree, WhatAnObjectLacksIsWrittenEmpty) {
    ReducedTree on("<model id=\"m\"><unknown/></model>");
    EXPECT_EQ(on.below("m"), R"(<unknown ID="" class="" name="" role=""/>)");
}

TEST(ReducedTree, ANameMissingInTheLanguageIsWrittenEmpty) {
    ReducedTree on(R"(<model id="m"><filter id="x">
                        <property name="name" locale="fr">Ventes</property></filter></model>)");
    EXPECT_EQ(on.below("m"), R"(<filter ID="x" class="" name="" role=""/>)");
}

TEST(ReducedTree, SixClassesAreEnteredAndNoOther) {
    for (char const* const name :
         {"namespace", "folder", "querySubject", "dataSources", "parameterMaps", "packages"}) {
        ReducedTree on(std::string("<model id=\"m\"><") + name + " id=\"a\"><x id=\"b\"/></" +
                       name + "></model>");
        EXPECT_EQ(on.below("m"), std::string("<") + name + R"( ID="a" class="" name="" role="">)" +
                                     R"(<x ID="b" class="" name="" role=""/></)" + name + ">");
    }
    for (char const* const name :
         {"queryItem", "queryItemFolder", "shortcut", "package", "Namespace", "model"}) {
        ReducedTree on(std::string("<model id=\"m\"><") + name + " id=\"a\"><x id=\"b\"/></" +
                       name + "></model>");
        EXPECT_EQ(on.below("m"), std::string("<") + name + R"( ID="a" class="" name="" role=""/>)");
    }
}

TEST(ReducedTree, AQueryItemIsWrittenAndItsChildrenAreNot) {
    ReducedTree on(R"(<model id="m"><querySubject id="q"><queryItem id="i"><property name="name">I
                      </property><queryItem id="j"/></queryItem></querySubject></model>)");
    EXPECT_EQ(on.below("m"), R"(<querySubject ID="q" class="" name="" role="">)"
                             R"(<queryItem ID="i" class="" name="I" role=""/></querySubject>)");
}

TEST(ReducedTree, RelationshipsAndSecurityViewsAreLeftOutWithAllBelow) {
    ReducedTree on(R"(<model id="m"><relationship id="r"><folder id="f"/></relationship>
                      <securityViews><securityView id="v"/></securityViews>
                      <namespace id="n"><relationship id="s"/><securityViews id="t"/></namespace>
                      <securityView id="w"/></model>)");
    EXPECT_EQ(on.below("m"), R"(<namespace ID="n" class="" name="" role=""/>)"
                             R"(<securityView ID="w" class="" name="" role=""/>)");
}

TEST(ReducedTree, ChildrenStandInTheModelsOrder) {
    ReducedTree on(R"(<model id="m"><folder id="c"><x id="3"/><y id="1"/><x id="2"/></folder>
                      <folder id="a"/></model>)");
    EXPECT_EQ(on.below("m"), R"(<folder ID="c" class="" name="" role="">)"
                             R"(<x ID="3" class="" name="" role=""/>)"
                             R"(<y ID="1" class="" name="" role=""/>)"
                             R"(<x ID="2" class="" name="" role=""/></folder>)"
                             R"(<folder ID="a" class="" name="" role=""/>)");
}

TEST(ReducedTree, TheObjectItselfIsNotWritten) {
    ReducedTree on(R"(<model id="m"><namespace id="n"><filter id="x"/></namespace></model>)");
    EXPECT_EQ(on.below("n"), R"(<filter ID="x" class="" name="" role=""/>)");
}

TEST(ReducedTree, OfAnObjectOfAnyClassTheChildrenAreWritten) {
    ReducedTree on(R"(<model id="m"><relationship id="r"><x id="1"/></relationship></model>)");
    EXPECT_EQ(on.below("r"), R"(<x ID="1" class="" name="" role=""/>)");
}

TEST(ReducedTree, AnObjectWithoutChildrenWritesNothing) {
    ReducedTree on(R"(<model id="m"><namespace id="n"/></model>)");
    EXPECT_EQ(on.below("n"), "");
}

TEST(ReducedTree, NothingIsAskedOfTheSecurityInformation) {
    ReducedTree on(R"(<model id="m"><namespace id="n"/></model>)");
    on.below("m");
    EXPECT_EQ(on.model().calls().count(Call::GetModelService), 0);
}

TEST(ReducedTree, ASubtreeHoldsTheObjectItself) {
    ReducedTree on(R"(<model id="m"><namespace id="n"><filter id="x"/></namespace></model>)");
    TestResponse response;
    on.provider().AddSubtree(on.model().byId("n"), nullptr, response.result());
    EXPECT_EQ(response.resultText(), R"(<namespace ID="n" class="" name="" role="">)"
                                     R"(<filter ID="x" class="" name="" role=""/></namespace>)");
}

TEST(ReducedTree, WhatTheHostRaisesComesThroughAndTheObjectIsNotAppended) {
    ReducedTree on(R"(<model id="m"><namespace id="n"><filter id="x"/></namespace></model>)");
    TestResponse response;
    on.model().calls().failAt(Call::GetClass, 2);
    expectInjectedFailure(
        [&] { on.provider().AddSubtree(on.model().byId("n"), nullptr, response.result()); });
    EXPECT_EQ(response.resultText(), "");
}

TEST(ReducedTree, AClassThatIsNoXmlNameIsLeftOutWithAllBelow) {
    ReducedTree on(R"(<model id="m"><namespace id="n"><folder id="f"><filter id="x"/></folder>
                      <filter id="y"/></namespace></model>)");
    for (char const* const odd : {"a b", "1x", ""}) {
        on.model().setClass(on.model().byId("f"), odd);
        EXPECT_EQ(on.below("m"), R"(<namespace ID="n" class="" name="" role="">)"
                                 R"(<filter ID="y" class="" name="" role=""/></namespace>)");
    }
}

TEST(ReducedTree, TheParentOfEachObjectIsAskedForItsId) {
    ReducedTree on(R"(<model id="m"><namespace id="n"><filter id="x"/></namespace></model>)");
    on.below("m");
    EXPECT_EQ(on.model().calls().count(Call::GetParent), 2);
    EXPECT_EQ(on.model().calls().count(Call::GetId), 4); // the object's own and its parent's
}
