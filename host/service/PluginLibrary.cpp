#include "host/service/PluginLibrary.h"

#include "KRLPluginCreator.h"
#include "VexPlatformVersion.h"
#include "VexTrace.h"
#include "host/service/PluginException.h"
#include "host/service/PluginGuard.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <set>
#include <vector>

#include <dlfcn.h>
#include <sys/auxv.h>
#include <sys/stat.h>

namespace vex {

namespace {

constexpr char const* pluginFileName = "libVexMAActionPlugin.vpl";
constexpr char const* pluginName = "VexMAActionPlugin";
constexpr char const* loading = "the loading";

// Their header says that these raise nothing. What initialisers of a library raise comes
// out of them all the same, and could not be caught by who believes that.
void* (*volatile const openLibrary)(char const*, int) = &::dlopen;
int (*volatile const closeLibrary)(void*) = &::dlclose;

/// Tells static initialisers of a library, while it is loaded, which it is.
class CurrentLibrary {
public:
    explicit CurrentLibrary(std::string const& file) {
        VexPluginFactory_getInstance()->SetCurrentLibrary(file);
    }
    CurrentLibrary(CurrentLibrary const&) = delete;
    CurrentLibrary& operator=(CurrentLibrary const&) = delete;
    ~CurrentLibrary() { VexPluginFactory_getInstance()->SetCurrentLibrary(""); }
};

std::string absolutePath(std::string const& file) {
    std::error_code failed;
    std::filesystem::path const path = std::filesystem::canonical(file, failed);
    if (failed) {
        throw PluginException(PluginFault::NotLoaded,
                              "the plug-in " + file + " cannot be opened: " + failed.message());
    }
    return path.string();
}

/// The file of the running program; empty when the system does not tell.
std::filesystem::path programFile() {
    std::error_code failed;
    std::filesystem::path const link = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (!failed) {
        return link;
    }
    // Where /proc is not mounted: what the program was started as.
    auto const* const started = reinterpret_cast<char const*>(::getauxval(AT_EXECFN));
    return started == nullptr ? std::filesystem::path()
                              : std::filesystem::canonical(started, failed);
}

} // namespace

std::string findPluginFile() {
    std::filesystem::path const program = programFile();
    if (program.empty()) {
        throw PluginException(PluginFault::NotLoaded, "the system does not tell where the program "
                                                      "stands, and so where its plug-in is; "
                                                      "name its file");
    }
    std::filesystem::path const folder = program.parent_path();
    std::filesystem::path const places[] = {
        folder / pluginFileName,
        folder.parent_path() / VEX_INSTALL_LIBDIR / "vex" / pluginFileName,
        folder.parent_path() / "lib" / "vex" / pluginFileName,
    };
    std::string searched;
    for (std::filesystem::path const& place : places) {
        std::error_code failed;
        if (std::filesystem::is_regular_file(place, failed)) {
            return place.string();
        }
        searched += (searched.empty() ? "" : ", ") + place.string();
    }
    throw PluginException(PluginFault::NotLoaded,
                          "the plug-in is not installed; name its file, or put it where one of "
                          "these is looked for: " +
                              searched);
}

/// Holds a file's place among the loaded ones.
struct PluginLibrary::Claim {
    explicit Claim(std::string const& file) {
        struct stat status {};
        if (::stat(file.c_str(), &status) != 0) {
            throw PluginException(PluginFault::NotLoaded,
                                  "the plug-in " + file +
                                      " cannot be opened: " + std::strerror(errno));
        }
        identity = {status.st_dev, status.st_ino};
        std::lock_guard const lock(mutex());
        if (!loaded().insert(identity).second) {
            throw PluginException(PluginFault::LoadedTwice,
                                  "the plug-in " + file +
                                      " is loaded already, or failed in it; use the one that is "
                                      "loaded, or start the program anew");
        }
    }
    Claim(Claim const&) = delete;
    Claim& operator=(Claim const&) = delete;
    ~Claim() {
        if (!isForGood) {
            std::lock_guard const lock(mutex());
            loaded().erase(identity);
        }
    }

    static std::mutex& mutex() {
        static std::mutex guard;
        return guard;
    }
    static std::set<FileIdentity>& loaded() {
        static std::set<FileIdentity> files;
        return files;
    }

    FileIdentity identity;
    bool isForGood = false;
};

PluginLibrary::PluginLibrary(std::string const& file)
    : m_file(absolutePath(file)), m_claim(std::make_unique<Claim>(m_file)),
      m_handle(nullptr, &::dlclose) {
    load();
    try {
        checkVersion();
    } catch (PluginException const&) {
        unload();
        throw;
    }
}

PluginLibrary::~PluginLibrary() {
    try {
        unload();
    } catch (PluginException const& problem) {
        OutputDebugString(problem.what()); // nobody is left to be told
    }
}

void PluginLibrary::load() {
    try {
        // The libraries that the plug-in needs are the ones that this process
        // has loaded already, so its run path "." is never looked at;
        // scripts/check-install tries it.
        CurrentLibrary const current(m_file);
        guardedCall(m_file, loading, PluginRaises::Nothing,
                    [this] { m_handle.reset(openLibrary(m_file.c_str(), RTLD_NOW | RTLD_LOCAL)); });
    } catch (PluginException const&) {
        // It stays in the process, half made: a second load would take it for whole.
        m_claim->isForGood = true;
        VexPluginFactory_getInstance()->ForgetLibrary(m_file);
        throw;
    }
    if (m_handle == nullptr) {
        throw PluginException(PluginFault::NotLoaded,
                              std::string("the plug-in cannot be loaded: ") + ::dlerror());
    }
}

void PluginLibrary::unload() {
    VexPluginFactory_getInstance()->ForgetLibrary(m_file);
    if (void* const handle = m_handle.release()) {
        guardedCall(m_file, "the unloading", PluginRaises::Nothing,
                    [handle] { closeLibrary(handle); });
    }
}

void* PluginLibrary::findExport(char const* name) const {
    return ::dlsym(m_handle.get(), name);
}

void PluginLibrary::checkVersion() const {
    void* const symbol = findExport("VexPlugin_platformVersion");
    if (symbol == nullptr) {
        throw PluginException(PluginFault::WrongVersion,
                              m_file + " does not say which version of the platform it was built "
                                       "for; it is no plug-in");
    }
    int const version = guardedCall(m_file, "VexPlugin_platformVersion", PluginRaises::Nothing,
                                    [symbol] { return reinterpret_cast<int (*)()>(symbol)(); });
    if (version != VexPlatform_version()) {
        throw PluginException(PluginFault::WrongVersion,
                              m_file + " was built for version " + std::to_string(version) +
                                  " of the platform, this is version " +
                                  std::to_string(VexPlatform_version()) + "; build it anew");
    }
}

std::string PluginLibrary::chooseName() const {
    std::vector<std::string> const names = VexPluginFactory_getInstance()->ListNames(m_file);
    if (std::find(names.begin(), names.end(), pluginName) != names.end()) {
        return pluginName;
    }
    if (names.empty()) {
        throw PluginException(PluginFault::NotLoaded,
                              m_file + " registers no plug-in while it is loaded; give it a "
                                       "KRLPluginCreator as a static object, under a name that no "
                                       "other loaded library has");
    }
    if (names.size() > 1) {
        std::string list;
        for (std::string const& name : names) {
            list += (list.empty() ? "\"" : ", \"") + name + '"';
        }
        throw PluginException(PluginFault::NotLoaded,
                              m_file + " registers several plug-ins, " + list + ", none named \"" +
                                  pluginName +
                                  "\"; build the one to use into a library of its own");
    }
    return names.front();
}

VexPluginFactory::Creator& PluginLibrary::findCreator(std::string const& nameOrNone) const {
    std::string const name = nameOrNone.empty() ? chooseName() : nameOrNone;
    VexPluginFactory::Creator* const creator = VexPluginFactory_getInstance()->FindCreator(name);
    if (creator == nullptr) {
        throw PluginException(PluginFault::NotLoaded,
                              m_file + " registers no plug-in named \"" + name + '"');
    }
    if (creator->library() != m_file) {
        throw PluginException(PluginFault::NotLoaded, "the plug-in name \"" + name + "\" of " +
                                                          m_file + " is taken by " +
                                                          creator->library());
    }
    return *creator;
}

} // namespace vex
