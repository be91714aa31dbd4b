#include "model/VexMDMaProviderUtility.h"

#include "tests/support/ExpectFailure.h"
#include "tests/support/TestModel.h"

#include <gtest/gtest.h>

namespace {

using Utility = VexMDMaProviderUtility;

// The wrappers that answer yes or no, each with what it makes the host do. The
// last argument collects whatever the host gives out.
struct Given {
    I18NString text = "before";
    Vex_Handle_Collection handles;
};

struct Wrapper {
    char const* name;
    Call hostCall;
    bool (*ask)(VEX_HANDLE object, Given& given);
};

Wrapper const wrappers[] = {
    {"getElementsByTagName", Call::GetElementsByTagName,
     [](VEX_HANDLE object, Given& given) {
         return Utility::getElementsByTagName(object, "filter", given.handles);
     }},
    {"Properties", Call::Properties,
     [](VEX_HANDLE object, Given& given) {
         return Utility::Properties(object, given.handles, nullptr, nullptr, false);
     }},
    {"childObjects", Call::ChildObjects,
     [](VEX_HANDLE object, Given& given) {
         return Utility::childObjects(object, given.handles, nullptr, nullptr);
     }},
    {"GetId", Call::GetId,
     [](VEX_HANDLE object, Given& given) { return Utility::GetId(object, given.text); }},
    {"GetParentId", Call::GetParent,
     [](VEX_HANDLE object, Given& given) { return Utility::GetParentId(object, given.text); }},
    {"GetRole", Call::GetRole,
     [](VEX_HANDLE object, Given& given) { return Utility::GetRole(object, given.text); }},
    {"GetClass", Call::GetClass,
     [](VEX_HANDLE object, Given& given) { return Utility::GetClass(object, given.text); }},
    {"GetName", Call::GetName,
     [](VEX_HANDLE object, Given& given) { return Utility::GetName(object, given.text); }},
    {"GetValue", Call::GetValue,
     [](VEX_HANDLE object, Given& given) { return Utility::GetValue(object, given.text, true); }},
    {"hasChildObjects", Call::HasChildObjects,
     [](VEX_HANDLE object, Given&) { return Utility::hasChildObjects(object); }},
    {"hasProperties", Call::HasProperties,
     [](VEX_HANDLE object, Given&) { return Utility::hasProperties(object); }},
};

class VexMDMaProviderUtilityTest : public testing::Test {
protected:
    void expectNo(Wrapper const& wrapper, VEX_HANDLE object) {
        Given given;
        EXPECT_FALSE(wrapper.ask(object, given)) << wrapper.name;
        EXPECT_EQ(given.text, "before") << wrapper.name;
        EXPECT_TRUE(given.handles.empty()) << wrapper.name;
    }

    TestModel m_model{R"(
        <model id="m">
          <namespace id="n" role="r" class="c">
            <property name="name" locale="en">Sales</property>
            <property name="name" locale="de">Vertrieb</property>
            <property name="empty"/>
            <property name="usage" role="use">fact</property>
            text
            <filter id="x1" role="a"/><filter id="x2" role="b"/><folder id="f" role="b"/>
          </namespace>
        </model>)"};
    VEX_HANDLE m_root = m_model.GetRootObject();
    VEX_HANDLE m_namespace = m_model.byId("n");
};

} // namespace

TEST_F(VexMDMaProviderUtilityTest, ANullHandleIsAnsweredWithoutTheHost) {
    m_model.calls().reset();
    for (Wrapper const& wrapper : wrappers) {
        expectNo(wrapper, VEX_HANDLE());
    }
    EXPECT_EQ(Utility::GetParent(VEX_HANDLE()), 0);
    EXPECT_EQ(Utility::GetLocale(VEX_HANDLE()), nullptr);
    EXPECT_EQ(m_model.calls().total(), 0);
}

TEST_F(VexMDMaProviderUtilityTest, AnInvalidObjectIsAnsweredLikeANullHandle) {
    m_model.invalidate(m_namespace);
    for (Wrapper const& wrapper : wrappers) {
        m_model.calls().reset();
        expectNo(wrapper, m_namespace);
        EXPECT_EQ(m_model.calls().count(Call::IsObject), 1) << wrapper.name;
        EXPECT_EQ(m_model.calls().total(), 1) << wrapper.name;
    }
    EXPECT_EQ(Utility::GetParent(m_namespace), 0);
    EXPECT_EQ(Utility::GetLocale(m_namespace), nullptr);
}

TEST_F(VexMDMaProviderUtilityTest, AnUnloadedModelIsAnsweredLikeANullHandle) {
    VEX_HANDLE left;
    {
        TestModel const unloaded("<model id=\"m\"><filter id=\"x\"/></model>");
        left = unloaded.byId("x");
        EXPECT_NE(Utility::GetParent(left), 0);
    }
    for (Wrapper const& wrapper : wrappers) {
        expectNo(wrapper, left);
    }
    EXPECT_EQ(Utility::GetParent(left), 0);
}

TEST_F(VexMDMaProviderUtilityTest, AUsableObjectIsAskedOnceAndItsAnswerGivenUnchanged) {
    for (Wrapper const& wrapper : wrappers) {
        m_model.calls().reset();
        Given given;
        EXPECT_TRUE(wrapper.ask(m_namespace, given)) << wrapper.name;
        EXPECT_EQ(m_model.calls().count(wrapper.hostCall), 1) << wrapper.name;
        EXPECT_GE(m_model.calls().count(Call::IsObject), 1) << wrapper.name;
    }
    m_model.calls().reset();
    EXPECT_EQ(Utility::GetParent(m_namespace), m_root);
    EXPECT_EQ(m_model.calls().count(Call::GetParent), 1);
    EXPECT_EQ(Utility::GetLocale(m_namespace)->getName(), "en_US");
    EXPECT_EQ(m_model.calls().count(Call::GetLocale), 1);
}

TEST_F(VexMDMaProviderUtilityTest, TextsComeOutAsTheHostGivesThem) {
    I18NString text;
    Utility::GetId(m_namespace, text);
    EXPECT_EQ(text, "n");
    Utility::GetRole(m_namespace, text);
    EXPECT_EQ(text, "r");
    Utility::GetClass(m_namespace, text);
    EXPECT_EQ(text, "c");
    Utility::GetName(m_namespace, text);
    EXPECT_EQ(text, "namespace");
    Utility::GetValue(m_namespace, text, true);
    EXPECT_EQ(text, "text");
    Utility::GetParentId(m_namespace, text);
    EXPECT_EQ(text, "m");
}

TEST_F(VexMDMaProviderUtilityTest, TheFlagOfAValueIsPassedOn) {
    I18NString text;
    Utility::GetValue(m_namespace, text, true);
    EXPECT_TRUE(m_model.lastResolve());
    Utility::GetValue(m_namespace, text, false);
    EXPECT_FALSE(m_model.lastResolve());
}

TEST_F(VexMDMaProviderUtilityTest, FiltersArePassedOnAndListsAppendedTo) {
    I18NString const filter("filter");
    I18NString const role("b");
    Vex_Handle_Collection found;
    found.push_back(m_root);
    Utility::childObjects(m_namespace, found, &filter, &role);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], m_root);
    EXPECT_EQ(found[1], m_model.byId("x2"));

    I18NString const usage("usage");
    I18NString const use("use");
    Utility::Properties(m_namespace, found, &usage, &use, true);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[2], m_model.property(m_namespace, "usage"));
}

TEST_F(VexMDMaProviderUtilityTest, ARootHasNoParentIdAndTheTextStays) {
    I18NString id("before");
    EXPECT_FALSE(Utility::GetParentId(m_root, id));
    EXPECT_EQ(id, "before");
    EXPECT_EQ(Utility::GetParent(m_root), 0);
}

TEST_F(VexMDMaProviderUtilityTest, AParentThatIsNotValidGivesNoId) {
    m_model.invalidate(m_root);
    I18NString id("before");
    EXPECT_FALSE(Utility::GetParentId(m_namespace, id));
    EXPECT_EQ(id, "before");
    EXPECT_EQ(m_model.calls().count(Call::GetId), 0);
}

// covers quirk: property-lookup-unguarded
TEST_F(VexMDMaProviderUtilityTest, APropertyIsLookedUpOnAnInvalidObjectTooAndTheHostAnswers) {
    m_model.invalidate(m_namespace);
    I18NString name("usage");
    I18NString role("use");
    EXPECT_EQ(Utility::GetPropertyByName(m_namespace, name, nullptr), 0);
    EXPECT_EQ(Utility::GetPropertyByRole(m_namespace, role, nullptr), 0);
    EXPECT_EQ(m_model.calls().count(Call::GetPropertyByName), 1);
    EXPECT_EQ(m_model.calls().count(Call::GetPropertyByRole), 1);
}

TEST_F(VexMDMaProviderUtilityTest, APropertyOfANullHandleIsTheNullHandle) {
    I18NString name("usage");
    EXPECT_EQ(Utility::GetPropertyByName(VEX_HANDLE(), name, nullptr), 0);
    EXPECT_EQ(Utility::GetPropertyByRole(VEX_HANDLE(), name, nullptr), 0);
}

TEST_F(VexMDMaProviderUtilityTest, APropertyIsFoundByNameByRoleAndByLocale) {
    I18NString usage("usage");
    I18NString role("use");
    VEX_HANDLE const property = m_model.property(m_namespace, "usage");
    EXPECT_EQ(Utility::GetPropertyByName(m_namespace, usage, nullptr), property);
    EXPECT_EQ(Utility::GetPropertyByRole(m_namespace, role, nullptr), property);
    I18NString name("name");
    I18NLocale const german("de_AT");
    I18NString value;
    Utility::GetStringPropertyValue(m_namespace, name, value, &german);
    EXPECT_EQ(value, "Vertrieb");
}

TEST_F(VexMDMaProviderUtilityTest, APropertyValueIsReadWithTheFlagTrue) {
    I18NString name("usage");
    I18NString value;
    Utility::GetStringPropertyValue(m_namespace, name, value, nullptr);
    EXPECT_EQ(value, "fact");
    EXPECT_TRUE(m_model.lastResolve());
}

TEST_F(VexMDMaProviderUtilityTest, APropertyValueIsMatchedAsItWouldBeRead) {
    I18NLocale const german("de_AT");
    auto const match = [](VEX_HANDLE object, char const* name, char const* text,
                          I18NLocale const* locale) {
        VexTextMatch result = VexTextMatch::Same;
        Utility::FindStringPropertyValue({&object, 1}, name, text, locale, result);
        return result;
    };
    EXPECT_EQ(match(m_namespace, "name", "Vertrieb", &german), VexTextMatch::Same);
    EXPECT_EQ(match(m_namespace, "name", "Sales", &german), VexTextMatch::Different);
    EXPECT_EQ(match(m_namespace, "usage", "fact", nullptr), VexTextMatch::Same);
    EXPECT_TRUE(m_model.lastResolve());
    EXPECT_EQ(match(m_namespace, "empty", "", nullptr), VexTextMatch::NoText);
    EXPECT_EQ(match(m_namespace, "nothing", "", nullptr), VexTextMatch::NoText);
    EXPECT_EQ(match(VEX_HANDLE(), "name", "", nullptr), VexTextMatch::NoText);
}

TEST_F(VexMDMaProviderUtilityTest, ElementsAreFoundWithinTheObjectsThatHaveAText) {
    auto const count = [&](char const* text, VEX_HANDLE object) {
        Vex_Handle_Collection found;
        Utility::FindElementsWithin({&object, 1}, "usage", text, nullptr, "filter", found);
        return found.size();
    };
    EXPECT_EQ(count("fact", m_namespace), 2U);
    EXPECT_EQ(count("other", m_namespace), 0U);
    EXPECT_EQ(count("fact", VEX_HANDLE()), 0U);
}

TEST_F(VexMDMaProviderUtilityTest, ASetOfTextsIsTheHostsOrNone) {
    auto const find = [](VEX_HANDLE object) {
        return Utility::FindTextSet(object, "namespace", "usage", "fact", "filter");
    };
    VEX_HANDLE const root = m_model.GetRootObject();
    EXPECT_EQ(find(root), nullptr);
    m_model.offerTextSets();
    ASSERT_NE(find(root), nullptr);
    EXPECT_EQ(find(root)->size(), 1U);
    EXPECT_TRUE(find(root)->contains(""));
    EXPECT_EQ(find(VEX_HANDLE()), nullptr);
    m_model.calls().failAt(Call::FindTextSet, 1);
    expectInjectedFailure([&] { find(root); });
    m_model.invalidate(root);
    EXPECT_EQ(find(root), nullptr);
}

TEST_F(VexMDMaProviderUtilityTest, AMissingPropertyLeavesTheTextAsItWas) {
    for (char const* const missing : {"nothing", "empty"}) {
        I18NString name(missing);
        I18NString value;
        Utility::GetStringPropertyValue(m_namespace, name, value, nullptr);
        EXPECT_EQ(value, "");
        value = "before";
        Utility::GetStringPropertyValue(m_namespace, name, value, nullptr);
        EXPECT_EQ(value, "before");
        Utility::GetStringPropertyValue(VEX_HANDLE(), name, value, nullptr);
        EXPECT_EQ(value, "before");
    }
}

TEST_F(VexMDMaProviderUtilityTest, WhatTheHostRaisesComesThroughEveryWrapper) {
    for (Wrapper const& wrapper : wrappers) {
        for (Call const call : {Call::IsObject, wrapper.hostCall}) {
            m_model.calls().failAt(call, 1);
            Given given;
            expectInjectedFailure([&] { wrapper.ask(m_namespace, given); });
            EXPECT_TRUE(wrapper.ask(m_namespace, given)) << wrapper.name;
        }
    }
    I18NString name("usage");
    I18NString value;
    for (Call const call : {Call::GetPropertyByName, Call::IsObject, Call::GetValue}) {
        m_model.calls().failAt(call, 1);
        expectInjectedFailure(
            [&] { Utility::GetStringPropertyValue(m_namespace, name, value, nullptr); });
    }
    m_model.calls().failAt(Call::GetPropertyByRole, 1);
    expectInjectedFailure([&] { Utility::GetPropertyByRole(m_namespace, name, nullptr); });
    m_model.calls().failAt(Call::GetParent, 1);
    expectInjectedFailure([&] { Utility::GetParent(m_namespace); });
    m_model.calls().failAt(Call::GetLocale, 1);
    expectInjectedFailure([&] { Utility::GetLocale(m_namespace); });
}
