#include "tests/kit/TellingPlugin.h"

#include "KRLPluginCreator.h"
#include "VexException.h"
#include "VexNotification.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "VexSession.h"

#include <cstring>
#include <stdexcept>

namespace {

std::string* log = nullptr;

void tell(std::string const& what) {
    if (log != nullptr) {
        *log += what + ' ';
    }
}

/// A failure whose code goes with the plug-in.
class OwnFailure final : public KRLException {
public:
    OwnFailure() : KRLException("") {}
    ~OwnFailure() override { m_text.clear(); }
    char const* what() const noexcept override { return m_text.c_str(); }

private:
    std::string m_text = "a failure of a type of the plug-in's own";
};

struct NoText {
    ~NoText() { tell("forgotten"); }
};

int answer(char const* parameters) {
    if (std::strcmp(parameters, tellingThrowOwn) == 0) {
        throw OwnFailure();
    }
    return std::strcmp(parameters, tellingRefusal) == 0 ? 0 : 1;
}

class TellingPlugin final : public VexPluginInterface {
public:
    ~TellingPlugin() override { tell("deleted"); }
    int Initialize(char const* parameters) override { return answer(parameters); }
    int Terminate(char const* parameters) override {
        tell("terminated");
        if (std::strcmp(parameters, tellingThrow) == 0) {
            throw std::runtime_error("not in order");
        }
        return answer(parameters);
    }
    VexErrorCode DoAction(VexSession& session, VexVariant const& action, VexException&,
                          VexParams const&, VexParams& out) override {
        switch (static_cast<long>(action)) {
        case tellingDone:
            out.AddParam(VexVariant(7L));
            return {VexErrorCode::Handled, nullptr};
        case tellingOdd:
            return {tellingOdd, nullptr};
        case tellingThrowInt:
            throw 3;
        case tellingRaiseOwn:
            throw OwnFailure();
        case tellingThrowNoText:
            throw NoText();
        case tellingRaise:
            VexException(42).raise({"Telling", 12}, "TellingPlugin::DoAction", "KRL_THROW");
        case tellingAskHost:
            session.GetModelService()->GetSecurityInfoSource("anywhere");
            return {VexErrorCode::Handled, nullptr};
        default:
            return {VexErrorCode::NotHandled, nullptr};
        }
    }
    using VexPluginInterface::DoAction;
    void Notify(VexNotification const& notification) override {
        tell("notified:" + std::to_string(notification.GetKind()));
        if (notification.GetKind() == tellingRaiseOwn) {
            throw OwnFailure();
        }
    }
};

void whenFirst() {
    tell("first");
}
void whenLast() {
    tell("last");
}

KRLPluginCreator<std::string, VexPluginInterface, TellingPlugin> creator("Telling", &whenFirst,
                                                                         &whenLast);

constexpr TellingLog tellingLog{[](std::string* target) { log = target; }};

} // namespace

extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}

extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* id) {
    return std::strcmp(id, TellingLog::Id) == 0 ? &tellingLog : nullptr;
}
