// A small host: shows a table as a model and asks a plug-in about it.
//
//     small_host libVexMAActionPlugin.vpl REQUEST.xml [LANGUAGE]
//     small_host libCountPlugin.vpl --count [CLASS...]

#include "../plugin/CountClasses.h"
#include "KRLIDOM_Document.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "RowModel.h"
#include "VexAction.h"
#include "VexException.h"
#include "VexHostSession.h"
#include "VexLoadedPlugin.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string readFile(char const* name) {
    std::ifstream file(name);
    if (!file) {
        throw std::runtime_error(std::string(name) + ": cannot be read");
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Asks for metadata and prints the answer.
int ask(VexLoadedPlugin& plugin, VexSession& session, char const* requestFile) {
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
        if (!plugin.act(session, VexAction::MetadataRequest, in, out)) {
            std::cerr << plugin.file() << " serves no metadata requests\n";
            return 1;
        }
    } catch (VexException const& failure) {
        std::cerr << "failure " << failure.GetId() << ": " << failure.what() << '\n';
        return 1;
    }
    KRLIDOM_Writer::write(std::cout, response.document(), true);
    return 0;
}

/// Asks how many objects of each class there are and prints the numbers; of all
/// classes, when none is named and the plug-in can tell them.
int count(VexLoadedPlugin& plugin, VexSession& session, std::vector<I18NString> classes) {
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
    if (!plugin.act(session, countRequest, in, out)) {
        std::cerr << plugin.file() << " does not count\n";
        return 1;
    }
    for (std::size_t index = 0; index < classes.size(); ++index) {
        std::cout << classes[index].c_str() << ' ' << static_cast<long>(out[index]) << '\n';
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) try {
    bool const counts = argc > 2 && std::string_view(argv[2]) == "--count";
    if (argc < 3 || (!counts && argc > 4)) {
        std::cerr << "usage: small_host libVexMAActionPlugin.vpl REQUEST.xml [LANGUAGE]\n"
                     "       small_host libCountPlugin.vpl --count [CLASS...]\n";
        return 2;
    }
    RowModel model;
    VexLoadedPlugin plugin(argv[1]);
    VexHostSession session(model, I18NLocale(!counts && argc == 4 ? argv[3] : "en"));
    int status = 3;
    try {
        status = counts ? count(plugin, session, {argv + 3, argv + argc})
                        : ask(plugin, session, argv[2]);
    } catch (std::exception const& problem) { // a file, a limit, no memory
        std::cerr << problem.what() << '\n';
    }
    plugin.notify(session, VexNotification::SessionClosed);
    return status;
} catch (std::exception const& problem) { // such as a plug-in that cannot be loaded
    std::cerr << problem.what() << '\n';
    return 3;
}
