#include "tests/faults/FaultSession.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexNotification.h"
#include "tests/faults/FaultModel.h"

#include <new>

namespace {

constexpr long metadata = 31000;
constexpr long accessibility = 32000;

std::shared_ptr<vex::Catalogue const> const& catalogue() {
    static std::shared_ptr<vex::Catalogue const> const read = [] {
        vex::Diagnostics found;
        return vex::readCatalogueText(faultCatalogue, "catalog.xml", ".", found);
    }();
    return read;
}

} // namespace

FaultSession::FaultSession()
    : m_session(model(), I18NLocale("de_AT"), catalogue(), catalogue()->findUser("carl")) {}

FaultSession::~FaultSession() {
    notify(VexNotification::SessionClosed);
}

vex::PluginProxy& FaultSession::plugin() {
    static vex::PluginProxy proxy(VEX_PLUGIN_FILE);
    static bool const initialised = (proxy.Initialize(), true);
    static_cast<void>(initialised);
    return proxy;
}

std::shared_ptr<vex::Model const> const& FaultSession::model() {
    static std::shared_ptr<vex::Model const> const loaded =
        vex::loadModelText(faultModel, "m.model.xml");
    return loaded;
}

std::string FaultSession::ask(char const* request) {
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text("/content/m"));
    in.AddParam(values.node(KRLIDOM_Reader::parse(request, "request")));
    return call(metadata, in);
}

std::string FaultSession::askAccess(char const* id) {
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text("/content/m"));
    in.AddParam(VexVariant(m_session.findObject(id)));
    in.AddParam(VexVariant(0L));
    return call(accessibility, in);
}

std::string FaultSession::call(long action, VexParams const& in) {
    using End = vex::ActionOutcome::End;
    vex::ActionOutcome const outcome =
        vex::callAction(plugin(), m_session, VexVariant(action), in, {});
    if (outcome.end == End::Stopped) {
        throw std::bad_alloc();
    }
    std::string answer = outcome.text;
    for (VexVariant const& value : outcome.appended) {
        answer +=
            value.GetType() == VexVariant::Long ? std::to_string(static_cast<long>(value)) : "node";
        answer += ' ';
    }
    return answer + KRLIDOM_Writer::toUtf8(outcome.response.document());
}

void FaultSession::notify(int kind) {
    plugin().Notify(m_session, kind);
}
