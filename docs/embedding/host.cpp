// A small host: shows a table as a model and asks the plug-in about it.
//
//     small_host PLUGIN.vpl REQUEST.xml

#include "KRLIDOM_Document.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "KRLPluginCreator.h"
#include "RowModel.h"
#include "VexException.h"
#include "VexNotification.h"
#include "VexObjectCustomData.h"
#include "VexPlatformVersion.h"
#include "VexPluginFactory.h"

#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <dlfcn.h>

namespace {

/// One user's work on the model.
class Session final : public VexSession {
public:
    explicit Session(RowModel& model) : m_model(model) {}

    I18NLocale const* GetCurrentLocale() const override { return &m_locale; }
    I18NLocale const* GetLocale(I18NString const& name) const override {
        return &m_locales.try_emplace(name, I18NLocale(name)).first->second;
    }
    VexObjectStore& GetObjectStore() const override { return m_model; }
    VexModelService* GetModelService() override { return nullptr; } // nobody is restricted
    VexCustomDataStore& GetCustomDataStore() override { return m_customData; }

private:
    RowModel& m_model;
    I18NLocale m_locale{"en"};
    mutable std::map<I18NString, I18NLocale> m_locales;
    VexCustomDataStore m_customData;
};

class SessionClosed final : public VexNotification {
public:
    explicit SessionClosed(VexSession& session) : m_session(session) {}
    int GetKind() const override { return VexNotification::SessionClosed; }
    VexSession& GetSession() const override { return m_session; }

private:
    VexSession& m_session;
};

/// Loads the plug-in library and makes the plug-in; unloads it at the end.
class Plugin {
public:
    explicit Plugin(std::string file) : m_file(std::move(file)) {
        VexPluginFactory& factory = *VexPluginFactory_getInstance();
        factory.SetCurrentLibrary(m_file); // loading registers the creator
        m_library.reset(dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL));
        factory.SetCurrentLibrary("");
        if (m_library == nullptr) {
            throw std::runtime_error(dlerror());
        }
        auto const version =
            reinterpret_cast<int (*)()>(dlsym(m_library.get(), "VexPlugin_platformVersion"));
        VexPluginFactory::Creator const* const creator = factory.FindCreator("VexMAActionPlugin");
        if (version == nullptr || version() != VexPlatform_version() || creator == nullptr) {
            throw std::runtime_error(m_file + " is not the plug-in of this platform");
        }
        m_plugin.reset(creator->create());
        m_plugin->Initialize("");
    }
    ~Plugin() {
        if (m_plugin != nullptr) {
            m_plugin->Terminate("");
            m_plugin.reset(); // before the library that holds its code
        }
        VexPluginFactory_getInstance()->ForgetLibrary(m_file);
    }
    Plugin(Plugin const&) = delete;
    Plugin& operator=(Plugin const&) = delete;

    VexPluginInterface& operator*() const { return *m_plugin; }

private:
    struct Close {
        void operator()(void* library) const { dlclose(library); }
    };
    std::string m_file;
    std::unique_ptr<void, Close> m_library;
    std::unique_ptr<VexPluginInterface> m_plugin;
};

std::string readFile(char const* name) {
    std::ifstream file(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Asks for metadata and prints the answer.
int ask(VexPluginInterface& plugin, VexSession& session, char const* requestFile) {
    constexpr long metadataRequest = 31000;
    KRLIDOM_OwnedDocument const request = KRLIDOM_Reader::parse(readFile(requestFile), requestFile);
    KRLIDOM_OwnedDocument const response("Response");
    KRLIDOM_Node requestNode = request.document();
    KRLIDOM_Node responseNode = response.document().getDocumentElement();
    responseNode.appendChild(response.document().createElement("Result"));
    I18NString modelPath("table:shop"); // not below /content/: nobody is restricted

    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&modelPath));
    in.AddParam(VexVariant(&requestNode));
    VexParams out;
    out.AddParam(VexVariant(0L));
    out.AddParam(VexVariant(&responseNode));
    try {
        VexException unused(0);
        plugin.DoAction(session, VexVariant(metadataRequest), unused, in, out);
    } catch (VexException const& failure) {
        std::cerr << "failure " << failure.GetId() << ": " << failure.what() << '\n';
        return 1;
    }
    KRLIDOM_Writer::write(std::cout, response.document(), true);
    return 0;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3) {
        std::cerr << "usage: small_host PLUGIN.vpl REQUEST.xml\n";
        return 2;
    }
    RowModel model;
    Plugin const plugin(argv[1]);
    Session session(model);
    int const status = ask(*plugin, session, argv[2]);
    (*plugin).Notify(SessionClosed(session));
    return status;
} catch (std::exception const& problem) {
    std::cerr << problem.what() << '\n';
    return 3;
}
