#include "VexHostSession.h"

#include "VexModelRows.h"

#include <gtest/gtest.h>

namespace {

std::shared_ptr<VexModel const> emptyModel() {
    return VexModelRows("en").load();
}

TEST(HostSession, GivesWhatItWasGiven) {
    auto const model = emptyModel();
    VexHostSession session(model->store(), I18NLocale("de-AT"));
    EXPECT_EQ(session.GetCurrentLocale()->getName(), "de_AT");
    EXPECT_EQ(&session.GetObjectStore(), &model->store());
    EXPECT_EQ(session.GetModelService(), nullptr);
}

TEST(HostSession, KeepsTheLocalesThatItHandsOut) {
    auto const model = emptyModel();
    VexHostSession const session(model->store(), I18NLocale("en"));
    I18NLocale const* const german = session.GetLocale("de");
    EXPECT_EQ(session.GetLocale("fr")->getName(), "fr");
    EXPECT_EQ(session.GetLocale("de"), german);
    EXPECT_EQ(session.GetLocale("")->getName(), "");
}

TEST(HostSession, KeepsItsDataItselfUnlessTheHostDoes) {
    auto const model = emptyModel();
    VexHostSession session(model->store(), I18NLocale("en"));
    VexObjectCustomData(session).SetCustomDataProperty("key", "own", false, "a");
    VexSessionCustomData hosts;
    VexHostSession other(model->store(), I18NLocale("en"), nullptr, &hosts);
    VexObjectCustomData(other).SetCustomDataProperty("key", "host's", false, "a");
    EXPECT_EQ(VexObjectCustomData(session).GetCustomDataProperty("key", "a"), "own");
    EXPECT_EQ(hosts.Get("key", "a"), "host's");
}

TEST(HostSession, GoesOverToOtherObjects) {
    auto const model = emptyModel();
    auto const newer = emptyModel();
    VexHostSession session(model->store(), I18NLocale("en"));
    session.takeObjects(newer->store(), I18NLocale("de"));
    EXPECT_EQ(&session.GetObjectStore(), &newer->store());
    EXPECT_EQ(session.GetCurrentLocale()->getName(), "de");
}

TEST(HostSession, IsNamedByItsEvents) {
    auto const model = emptyModel();
    VexHostSession session(model->store(), I18NLocale("en"));
    VexSessionEvent const event(VexNotification::ModelReloaded, session);
    EXPECT_EQ(event.GetKind(), 2);
    EXPECT_EQ(&event.GetSession(), &session);
}

} // namespace
