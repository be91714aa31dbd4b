#include "tests/faults/FaultSession.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexAction.h"
#include "VexNotification.h"
#include "host/service/Service.h"
#include "tests/faults/FaultModel.h"

#include <new>
#include <utility>

namespace {

constexpr long metadata = VexAction::MetadataRequest;
constexpr long accessibility = VexAction::AccessibilityRequest;

} // namespace

FaultSession::FaultSession() : FaultSession(model()) {}

FaultSession::FaultSession(std::shared_ptr<vex::Model const> model)
    : m_session(std::move(model), I18NLocale("de_AT"), catalogue(), catalogue()->findUser("carl")) {
}

FaultSession::~FaultSession() {
    notify(VexNotification::SessionClosed);
}

std::shared_ptr<vex::PluginProxy> const& FaultSession::sharedPlugin() {
    static std::shared_ptr<vex::PluginProxy> const loaded = vex::loadPlugin(VEX_PLUGIN_FILE);
    return loaded;
}

std::shared_ptr<vex::Catalogue const> const& FaultSession::catalogue() {
    static std::shared_ptr<vex::Catalogue const> const read = [] {
        vex::Diagnostics found;
        return vex::readCatalogueText(faultCatalogue, "catalog.xml", ".", found);
    }();
    return read;
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

std::string FaultSession::askAt(char const* id, char const* request) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(request, "request");
    KRLIDOM_Node node = document.document();
    vex::ActionResponse response({});
    try {
        plugin().answerAt(m_session, "/content/m", node, &response.element(),
                          m_session.findObject(id), nullptr);
    } catch (VexException const& raised) {
        return raised.what();
    } catch (KRLException const&) {
        throw std::bad_alloc();
    }
    return KRLIDOM_Writer::toUtf8(response.takeDocument().document());
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
