// A small plug-in: counts the objects of a class.

#include "KRLException.h"
#include "KRLPluginCreator.h"
#include "VexErrorCode.h"
#include "VexObject.h"
#include "VexPlatformVersion.h"
#include "VexPluginInterface.h"
#include "VexSession.h"

namespace {

class CountPlugin final : public VexPluginInterface {
public:
    /// `in`: names of classes. Appends to `out`, for each of them, how many
    /// objects of that class stand below the model's root.
    static constexpr long CountRequest = 41000;

    int Initialize(char const*) override { return 1; }
    int Terminate(char const*) override { return 1; }

    VexErrorCode DoAction(VexSession& session, VexVariant const& action, VexException&,
                          VexParams const& in, VexParams& out) override {
        if (static_cast<long>(action) != CountRequest) {
            return VexErrorCode(VexErrorCode::NotHandled, nullptr); // another plug-in's
        }
        VexObject const root(session.GetObjectStore().GetRootObject());
        for (std::size_t index = 0; index < in.size(); ++index) {
            I18NString const* const className = static_cast<I18NString*>(in[index]);
            if (className == nullptr) {
                throw KRLException("CountPlugin: every parameter is the name of a class");
            }
            Vex_Handle_Collection found;
            root.getElementsByTagName(*className, found);
            out.AddParam(VexVariant(static_cast<long>(found.size())));
        }
        return VexErrorCode(VexErrorCode::Handled, nullptr);
    }
    using VexPluginInterface::DoAction;

    void Notify(VexNotification const&) override {} // nothing is kept for a session
};

// Made while the library is loaded: tells the factory the plug-in's name.
KRLPluginCreator<std::string, VexPluginInterface, CountPlugin> creator("CountPlugin", nullptr,
                                                                       nullptr);

} // namespace

/// A host compares it with its own version before the first call.
extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}
