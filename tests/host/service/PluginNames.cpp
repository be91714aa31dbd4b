// A library that registers a plug-in under each name of REGISTERED_NAMES, or none.

#include "KRLPluginCreator.h"
#include "VexPlatformVersion.h"

namespace {

class IdlePlugin final : public VexPluginInterface {
public:
    int Initialize(char const*) override { return 1; }
    int Terminate(char const*) override { return 1; }
    VexErrorCode DoAction(VexSession&, VexVariant const&, VexException&, VexParams const&,
                          VexParams&) override {
        return {VexErrorCode::NotHandled, nullptr};
    }
    using VexPluginInterface::DoAction;
    void Notify(VexNotification const&) override {}
};

#ifdef REGISTERED_NAMES
using Creator = KRLPluginCreator<std::string, VexPluginInterface, IdlePlugin>;

struct NamedCreator {
    explicit NamedCreator(char const* name) : creator(name, nullptr, nullptr) {}
    Creator creator;
};
NamedCreator creators[] = {REGISTERED_NAMES};
#endif

} // namespace

extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}
