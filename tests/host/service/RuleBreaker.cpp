#include "tests/host/service/RuleBreaker.h"

#include "KRLException.h"
#include "KRLIDOM_Document.h"
#include "KRLPluginCreator.h"
#include "VexAction.h"
#include "VexException.h"
#include "VexNotification.h"
#include "VexObject.h"
#include "VexPlatformVersion.h"
#include "VexPluginInterface.h"
#include "VexSession.h"
#include "VexTrace.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace {

/// The action that a call asks for: by its number, or by the model path of one
/// of the numbers that the metadata plug-in serves.
long actionOf(VexVariant const& action, VexParams const& in) {
    auto const number = static_cast<long>(action);
    if (number != VexAction::MetadataRequest && number != VexAction::AccessibilityRequest) {
        return number;
    }
    return std::strtol(static_cast<I18NString*>(in[1])->c_str(), nullptr, 10);
}

/// A failure whose text and code go with the plug-in.
class OwnFailure final : public KRLException {
public:
    OwnFailure() : KRLException("") {}
    char const* what() const noexcept override { return ruleBreaker::ownText; }
};

class RuleBreaker final : public VexPluginInterface {
public:
    int Initialize(char const* parameters) override {
        return std::strcmp(parameters, ruleBreaker::notReady) == 0 ? 0 : 1;
    }

    int Terminate(char const* parameters) override {
        if (std::strcmp(parameters, ruleBreaker::throwAtEnd) == 0) {
            throw 1;
        }
        return 1;
    }

    VexErrorCode DoAction(VexSession& session, VexVariant const& action, VexException&,
                          VexParams const& in, VexParams& out) override {
        KRLIDOM_Node* const response = static_cast<KRLIDOM_Node*>(out[1]);
        switch (actionOf(action, in)) {
        case ruleBreaker::Answer: {
            VexVariant value(7L);
            out.AddParam(value);
            value = static_cast<void*>(response);
            out.AddParam(value);
            out.AddParam(VexVariant());
            return {VexErrorCode::Handled, nullptr};
        }
        case ruleBreaker::ThrowInt:
            throw 1;
        case ruleBreaker::ThrowStandard:
            throw std::runtime_error("a standard one");
        case ruleBreaker::ThrowBadAlloc:
            throw std::bad_alloc();
        case ruleBreaker::ThrowPlatform:
            throw KRLException("a plain one");
        case ruleBreaker::Raise: {
            VexMessage message(5);
            message << KRLMessageParm("one") << KRLMessageParm("two");
            VexException exception(5);
            exception << message;
            exception.raise({"RuleBreaker", 12}, "RuleBreaker::DoAction", "KRL_THROW");
        }
        case ruleBreaker::CallBack:
            (*static_cast<std::function<void()>*>(static_cast<void*>(in[0])))();
            return {VexErrorCode::Handled, nullptr};
        case ruleBreaker::ReadForEver:
            for (;;) {
                Vex_Handle_Collection found;
                VexObject(session.GetObjectStore().GetRootObject())
                    .childObjects(found, nullptr, nullptr);
            }
        case ruleBreaker::GrowForEver:
            for (;;) {
                response->appendChild(response->getOwnerDocument().createElement("more"));
            }
        case ruleBreaker::ThrowOwn:
            throw OwnFailure();
        case ruleBreaker::AnswerNothing:
            return {VexErrorCode::Handled, nullptr};
        default:
            return {VexErrorCode::NotHandled, nullptr};
        }
    }

    void Notify(VexNotification const& notification) override {
        OutputDebugString(notification.GetKind() == VexNotification::SessionOpened
                              ? ruleBreaker::openedTrace
                              : ruleBreaker::otherTrace);
        if (notification.GetKind() == ruleBreaker::throwingKind) {
            throw std::string("no exception at all");
        }
    }
};

KRLPluginCreator<std::string, VexPluginInterface, RuleBreaker> creator("RuleBreaker", nullptr,
                                                                       nullptr);

} // namespace

#if defined(RULE_BREAKER_VERSION)
extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return RULE_BREAKER_VERSION;
}
#endif
