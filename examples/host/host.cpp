// A small host: shows a table as a model and asks a plug-in about it.
//
//     small_host libVexMAActionPlugin.vpl REQUEST.xml
//     small_host libCountPlugin.vpl --count [CLASS...]

#include "../plugin/CountClasses.h"
#include "KRLIDOM_Document.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "LoadedPlugin.h"
#include "RowModel.h"
#include "VexException.h"
#include "VexNotification.h"
#include "VexObjectCustomData.h"

#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

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
    VexSessionCustomData m_customData;
};

class SessionClosed final : public VexNotification {
public:
    explicit SessionClosed(VexSession& session) : m_session(session) {}
    int GetKind() const override { return VexNotification::SessionClosed; }
    VexSession& GetSession() const override { return m_session; }

private:
    VexSession& m_session;
};

std::string readFile(char const* name) {
    std::ifstream file(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Asks for metadata and prints the answer.
int ask(LoadedPlugin const& plugin, VexSession& session, char const* requestFile) {
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
        plugin->DoAction(session, VexVariant(metadataRequest), unused, in, out);
    } catch (VexException const& failure) {
        std::cerr << "failure " << failure.GetId() << ": " << failure.what() << '\n';
        return 1;
    }
    KRLIDOM_Writer::write(std::cout, response.document(), true);
    return 0;
}

/// Asks how many objects of each class there are and prints the numbers; of all
/// classes, when none is named and the plug-in can tell them.
int count(LoadedPlugin const& plugin, VexSession& session, std::vector<I18NString> classes) {
    constexpr long countRequest = 41000;
    CountClasses const* const all = plugin.findExtension<CountClasses>();
    if (classes.empty() && all != nullptr) {
        classes = all->list(session);
    }
    VexParams in;
    for (I18NString& name : classes) {
        in.AddParam(VexVariant(&name));
    }
    VexParams out;
    VexException unused(0);
    plugin->DoAction(session, VexVariant(countRequest), unused, in, out);
    for (std::size_t index = 0; index < classes.size(); ++index) {
        std::cout << classes[index].c_str() << ' ' << static_cast<long>(out[index]) << '\n';
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) try {
    bool const counts = argc > 2 && std::string_view(argv[2]) == "--count";
    if (!counts && argc != 3) {
        std::cerr << "usage: small_host libVexMAActionPlugin.vpl REQUEST.xml\n"
                     "       small_host libCountPlugin.vpl --count [CLASS...]\n";
        return 2;
    }
    RowModel model;
    LoadedPlugin const plugin(argv[1], counts ? "CountPlugin" : "VexMAActionPlugin");
    Session session(model);
    int const status =
        counts ? count(plugin, session, {argv + 3, argv + argc}) : ask(plugin, session, argv[2]);
    plugin->Notify(SessionClosed(session));
    return status;
} catch (std::exception const& problem) {
    std::cerr << problem.what() << '\n';
    return 3;
}
