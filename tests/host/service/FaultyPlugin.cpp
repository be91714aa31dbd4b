#include "tests/host/service/FaultyPlugin.h"

#include "KRLException.h"
#include "KRLIDOM_Document.h"
#include "KRLIDOM_Element.h"
#include "KRLIDOM_Node.h"
#include "KRLPluginCreator.h"
#include "VexAccessExplanation.h"
#include "VexAction.h"
#include "VexException.h"
#include "VexMessageTexts.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "VexPluginInterface.h"
#include "VexTreeExplanation.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include <dlfcn.h>

namespace {

void* realLibrary() {
    static void* const library =
        ::dlopen(std::getenv(faultyPlugin::realVariable), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        std::abort(); // the test named no plug-in
    }
    return library;
}

template <class Extension> Extension const& realExtension() {
    auto const entry =
        reinterpret_cast<VexGetExtension>(::dlsym(realLibrary(), VexGetExtensionName));
    return *static_cast<Extension const*>(entry(Extension::Id));
}

/// What is to go wrong, and how often each thing was asked for.
class Fault {
public:
    Fault() {
        char const* const text = std::getenv(faultyPlugin::faultVariable);
        std::istringstream(text == nullptr ? "" : text) >> m_what >> m_first >> m_last >> m_how;
    }

    /// How the call that begins now goes wrong; "" when it does not.
    std::string next(std::string const& what) {
        bool const isNow =
            (what == m_what || m_what == "any") && ++m_calls >= m_first && m_calls <= m_last;
        return isNow ? m_how : "";
    }

private:
    std::string m_what;
    std::string m_how;
    int m_first = 0;
    int m_last = 0;
    int m_calls = 0;
};

Fault& fault() {
    static Fault of;
    return of;
}

[[noreturn]] void raise(unsigned id) {
    VexException exception(id);
    exception << VexMessage(id);
    exception.raise({"FaultyPlugin", 1}, "FaultyPlugin::DoAction", "KRL_THROW");
}

/// Its code goes with the plug-in.
class OwnFailure final : public KRLException {
public:
    OwnFailure() : KRLException("") {}
    char const* what() const noexcept override { return "a failure of its own"; }
};

void goWrong(std::string const& how) {
    if (how == "foreign") {
        throw 1;
    }
    if (how == "platform") {
        throw KRLException("a plain one");
    }
    if (how == "own") {
        throw OwnFailure();
    }
    if (how == "raise") {
        raise(5);
    }
    if (how == "refuse") {
        raise(VexFailureId::NoViewOrRole);
    }
    if (how == "interrupt") {
        std::raise(SIGINT);
    }
}

void goWrongAfterwards(std::string const& how) {
    if (how == "late") {
        throw std::runtime_error("too late");
    }
    if (how == "after") {
        std::raise(SIGINT);
    }
}

/// Appends what an action appends that is done: a verdict that is none; an empty tree, or one
/// of something else.
void answerOddly(bool isAccess, bool isStrange, VexParams& out) {
    VexVariant value(1L);
    KRLIDOM_Node* const response = static_cast<KRLIDOM_Node*>(out[1]);
    if (isStrange) {
        KRLIDOM_Element element = response->getOwnerDocument().createElement("folder");
        element.setAttribute("ID", "elsewhere");
        response->getFirstChild().appendChild(element);
    }
    out.AddParam(value);
    if (isAccess) {
        value = 2L;
    } else {
        value = static_cast<void*>(response);
    }
    out.AddParam(value);
}

class FaultyPlugin final : public VexPluginInterface {
public:
    int Initialize(char const* parameters) override {
        realLibrary();
        m_real.reset(VexPluginFactory_getInstance()->FindCreator("VexMAActionPlugin")->create());
        return m_real->Initialize(parameters);
    }
    int Terminate(char const* parameters) override { return m_real->Terminate(parameters); }

    VexErrorCode DoAction(VexSession& session, VexVariant const& action, VexException& exception,
                          VexParams const& in, VexParams& out) override {
        bool const isAccess = static_cast<long>(action) == VexAction::AccessibilityRequest;
        std::string const how = fault().next(isAccess ? "access" : "metadata");
        goWrong(how);
        if (how == "code") {
            return {77, nullptr};
        }
        if (how == "nothing") {
            return {VexErrorCode::Handled, nullptr};
        }
        if (how == "odd" || how == "strange") {
            answerOddly(isAccess, how == "strange", out);
            return {VexErrorCode::Handled, nullptr};
        }
        VexErrorCode const code = m_real->DoAction(session, action, exception, in, out);
        goWrongAfterwards(how);
        return code;
    }

    void Notify(VexNotification const& notification) override { m_real->Notify(notification); }

private:
    std::unique_ptr<VexPluginInterface> m_real;
};

KRLPluginCreator<std::string, VexPluginInterface, FaultyPlugin> creator("FaultyPlugin", nullptr,
                                                                        nullptr);

void explainTree(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                 KRLIDOM_Node* response, VexTreeObserver& observer) {
    std::string const how = fault().next("tree");
    goWrong(how);
    if (how == "nothing") {
        return;
    }
    realExtension<VexExplainTree>().explain(session, modelPath, request, response, observer);
    goWrongAfterwards(how);
}

constexpr VexExplainTree treeExplanation{explainTree};

} // namespace

extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}

extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* id) {
    if (std::strcmp(id, VexExplainTree::Id) == 0) {
        return &treeExplanation;
    }
    return std::strcmp(id, VexExplainAccess::Id) == 0 ? &realExtension<VexExplainAccess>()
                                                      : nullptr;
}
