// A plug-in that ends the process, or raises what it may not, where and how the variable
// ENDING says: "PLACE HOW".

#include "KRLPluginCreator.h"
#include "VexException.h"
#include "VexPlatformVersion.h"
#include "VexPluginInterface.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include <unistd.h>

namespace {

struct Ending {
    char const* name;
    void (*end)();
};

void raiseForeign() {
    throw std::runtime_error("a foreign one");
}

// What is volatile keeps it from being no recursion at all.
int useUpStack(int depth) {
    char volatile room[1024];
    room[static_cast<unsigned>(depth) % sizeof room] = 1;
    return depth < 0 ? 0 : useUpStack(depth + 1) + room[0];
}

Ending const endings[] = {
    {"exit", [] { std::exit(0); }},
    {"quick_exit", [] { std::quick_exit(0); }},
    {"_exit", [] { ::_exit(0); }},
    {"_Exit", [] { std::_Exit(0); }},
    {"abort", [] { std::abort(); }},
    {"terminate", [] { [&]() noexcept { raiseForeign(); }(); }},
    {"foreign", [] { raiseForeign(); }},
    {"number", [] { throw 7; }},
    {"platform", [] { throw KRLException("a plain one"); }},
    {"memory", [] { throw std::bad_alloc(); }},
    {"crash", [] { std::raise(SIGSEGV); }},
    {"stack", [] { useUpStack(0); }},
    {"thread", [] { std::thread([] { std::exit(0); }).join(); }},
};

/// Ends as asked for when this is the place.
void pass(char const* place) {
    char const* const asked = std::getenv("ENDING");
    std::size_t const length = std::strlen(place);
    if (asked == nullptr || std::strncmp(asked, place, length) != 0 || asked[length] != ' ') {
        return;
    }
    for (Ending const& each : endings) {
        if (std::strcmp(each.name, asked + length + 1) == 0) {
            each.end();
        }
    }
}

struct Initialiser {
    Initialiser() { pass("initialiser"); }
    ~Initialiser() noexcept(false) { pass("finaliser"); }
};

class EndingPlugin final : public VexPluginInterface {
public:
    EndingPlugin() { pass("constructor"); }
    ~EndingPlugin() override { pass("destructor"); }

    int Initialize(char const*) override {
        pass("Initialize");
        return 1;
    }
    int Terminate(char const*) override {
        pass("Terminate");
        char const* const asked = std::getenv("ENDING");
        return asked != nullptr && std::strcmp(asked, "Terminate refuses") == 0 ? 0 : 1;
    }
    VexErrorCode DoAction(VexSession&, VexVariant const&, VexException&, VexParams const&,
                          VexParams& out) override {
        pass("DoAction");
        out.AddParam(VexVariant(0L));
        out.AddParam(VexVariant(1L)); // accessible
        return {VexErrorCode::Handled, nullptr};
    }
    void Notify(VexNotification const&) override { pass("Notify"); }
};

Initialiser const initialiser;
KRLPluginCreator<std::string, VexPluginInterface, EndingPlugin> creator(
    "EndingPlugin", [] { pass("hook"); }, [] { pass("last hook"); });

} // namespace

extern "C" __attribute__((visibility("default"))) int VexPlugin_platformVersion() {
    pass("version");
    return VEX_PLATFORM_VERSION;
}
