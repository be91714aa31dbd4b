#include "tests/hostile/HostileSession.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexNotification.h"
#include "host/catalogue/Catalogue.h"

#include <cstdlib>

#include <gtest/gtest.h>

HostileSession::HostileSession(std::string const& model, std::string const& catalogue)
    : m_path(catalogue.empty() ? "a model file" : "/content/m") {
    auto const loaded = vex::loadModelText(model, "test.model.xml");
    vex::Diagnostics found;
    auto const read =
        catalogue.empty() ? nullptr : vex::readCatalogueText(catalogue, "catalog.xml", ".", found);
    m_session = std::make_unique<vex::HostSession>(
        loaded, I18NLocale(), read, read == nullptr ? nullptr : read->findUser("ann"));
}

HostileSession::~HostileSession() {
    plugin().Notify(*m_session, VexNotification::SessionClosed);
}

vex::PluginProxy& HostileSession::plugin() {
    static vex::PluginProxy proxy(VEX_PLUGIN_FILE);
    static bool const initialised = (proxy.Initialize(), true);
    static_cast<void>(initialised);
    return proxy;
}

vex::ActionOutcome HostileSession::call(std::string const& request) {
    constexpr long metadata = 31000;
    vex::ActionValues values;
    VexParams in;
    in.AddParam(values.Long(0));
    in.AddParam(values.String(m_path));
    in.AddParam(values.Node(KRLIDOM_Reader::parse(request, "request")));
    return vex::callAction(plugin(), *m_session, VexVariant(metadata), in, limits);
}

std::string HostileSession::ask(std::string const& request) {
    vex::ActionOutcome const outcome = call(request);
    EXPECT_EQ(outcome.text, "");
    return KRLIDOM_Writer::toUtf8(outcome.response.document());
}

std::string HostileSession::complaint(std::string const& request) {
    vex::ActionOutcome const outcome = call(request);
    return outcome.end == vex::ActionOutcome::End::Returned ? "answered" : outcome.text;
}

bool HostileSession::isIncluded(char const* id) {
    constexpr long accessibility = 32000;
    vex::ActionValues values;
    VexParams in;
    in.AddParam(values.Long(0));
    in.AddParam(values.String(m_path));
    in.AddParam(values.Handle(m_session->findObject(id)));
    in.AddParam(values.Long(0));
    auto const outcome =
        vex::callAction(plugin(), *m_session, VexVariant(accessibility), in, limits);
    EXPECT_EQ(outcome.text, "");
    return outcome.appended.size() == 2 && static_cast<long>(outcome.appended[1]) == 1;
}

std::string repeated(std::string const& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::size_t hostileSize(std::size_t usual) {
    char const* const chosen = std::getenv("VEX_HOSTILE_SIZE");
    return chosen == nullptr ? usual : std::strtoull(chosen, nullptr, 10);
}
