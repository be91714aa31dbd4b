// A small plug-in: counts the objects of a class. As an extension it tells which
// classes there are.

#include "CountClasses.h"
#include "KRLException.h"
#include "KRLPluginCreator.h"
#include "VexErrorCode.h"
#include "VexObject.h"
#include "VexPlatformVersion.h"
#include "VexPluginExtension.h"
#include "VexPluginInterface.h"
#include "VexSession.h"

#include <algorithm>
#include <cstring>

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

void addClassesBelow(VexObject const& object, std::vector<I18NString>& classes) {
    Vex_Handle_Collection members;
    object.childObjects(members, nullptr, nullptr);
    for (VEX_HANDLE const handle : members) {
        VexObject const member(handle);
        I18NString name;
        member.GetName(name);
        if (std::find(classes.begin(), classes.end(), name) == classes.end()) {
            classes.push_back(name);
        }
        addClassesBelow(member, classes);
    }
}

std::vector<I18NString> listClasses(VexSession& session) {
    std::vector<I18NString> classes;
    addClassesBelow(VexObject(session.GetObjectStore().GetRootObject()), classes);
    return classes;
}

constexpr CountClasses countClasses{listClasses};

} // namespace

/// A host compares it with its own version before the first call.
extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    return VEX_PLATFORM_VERSION;
}

/// A host asks it for what the plug-in can do beside its actions.
extern "C" __attribute__((visibility("default"))) void const*
VexPlugin_getExtension(char const* id) {
    return std::strcmp(id, CountClasses::Id) == 0 ? &countClasses : nullptr;
}
