// A host that keeps no model of its own: it reads a catalogue and a model from files, or
// makes a model from rows, and asks the plug-in about it.
//
//     file_host libVexMAActionPlugin.vpl CATALOG.xml MODEL_PATH USER REQUEST.xml [LANGUAGE]
//     file_host libVexMAActionPlugin.vpl --rows REQUEST.xml [LANGUAGE]

#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexAction.h"
#include "VexCatalogue.h"
#include "VexException.h"
#include "VexHostSession.h"
#include "VexLoadedPlugin.h"
#include "VexLocaleChoice.h"
#include "VexModelRows.h"

#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string readFile(std::string const& name) {
    std::ifstream file(name);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// A model from data of the host's own.
std::shared_ptr<VexModel const> makeModel() {
    VexModelRows rows("en");
    rows.addLocale("en");
    rows.addLocale("de");
    VexModelRows::Row const shop = rows.add(VexModelRows::Root, "namespace", "n");
    rows.addProperty(shop, "name", "Shop", "en");
    rows.addProperty(shop, "name", "Laden", "de");
    VexModelRows::Row const orders = rows.add(shop, "querySubject", "q");
    rows.addProperty(orders, "name", "Orders", "en");
    rows.addProperty(orders, "name", "Aufträge", "de");
    for (char const* const name : {"Quantity", "Ordered"}) {
        rows.addProperty(rows.add(orders, "queryItem", name), "name", name);
    }
    return rows.load("example");
}

/// What is asked, and about what.
struct Question {
    std::shared_ptr<VexModel const> model;
    std::unique_ptr<VexCatalogueSecurity> security; // null: nobody is restricted
    I18NString modelPath;
    std::string requestFile;
    I18NLocale language;
};

Question readQuestion(std::vector<std::string> const& arguments) {
    bool const isRows = arguments[0] == "--rows";
    std::size_t const requestAt = isRows ? 1 : 3;
    Question question;
    question.requestFile = arguments[requestAt];
    if (isRows) {
        question.model = makeModel();
        question.modelPath = "rows:example"; // not below /content/
    } else {
        auto const catalogue = VexCatalogue::readFile(arguments[0]);
        question.modelPath = I18NString::fromUtf8(arguments[1]);
        question.model = VexModel::readFile(catalogue->modelFile(question.modelPath));
        question.security =
            std::make_unique<VexCatalogueSecurity>(catalogue, I18NString::fromUtf8(arguments[2]));
    }
    bool const isNamed = arguments.size() > requestAt + 1;
    question.language = VexChooseLocale(
        question.model->locales(),
        isNamed ? I18NLocale(I18NString::fromUtf8(arguments[requestAt + 1])) : I18NLocale(),
        question.model->defaultLocale());
    return question;
}

int ask(VexLoadedPlugin& plugin, VexSession& session, Question& question) {
    KRLIDOM_OwnedDocument const request =
        KRLIDOM_Reader::parse(readFile(question.requestFile), question.requestFile);
    KRLIDOM_OwnedDocument const response("Response");
    KRLIDOM_Node requestNode = request.document();
    KRLIDOM_Node responseNode = response.document().getDocumentElement();
    responseNode.appendChild(response.document().createElement("Result"));

    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&question.modelPath));
    in.AddParam(VexVariant(&requestNode));
    VexParams out;
    out.AddParam(VexVariant(0L));
    out.AddParam(VexVariant(&responseNode));
    if (!plugin.act(session, VexAction::MetadataRequest, in, out)) {
        std::cerr << plugin.file() << " serves no metadata requests\n";
        return 1;
    }
    KRLIDOM_Writer::write(std::cout, response.document(), true);
    return 0;
}

} // namespace

int main(int argc, char** argv) try {
    std::vector<std::string> const arguments(argv + 1, argv + argc);
    bool const isRows = arguments.size() > 1 && arguments[1] == "--rows";
    std::size_t const least = isRows ? 3 : 5;
    if (arguments.size() != least && arguments.size() != least + 1) {
        std::cerr << "usage: file_host PLUGIN.vpl CATALOG.xml MODEL_PATH USER REQUEST.xml "
                     "[LANGUAGE]\n"
                     "       file_host PLUGIN.vpl --rows REQUEST.xml [LANGUAGE]\n";
        return 2;
    }
    Question question = readQuestion({arguments.begin() + 1, arguments.end()});
    VexLoadedPlugin plugin(arguments[0]);
    VexHostSession session(question.model->store(), question.language, question.security.get());
    int status = 1;
    try {
        status = ask(plugin, session, question);
    } catch (VexException const& failure) {
        std::cerr << "failure " << failure.GetId() << ": " << failure.what() << '\n';
    }
    plugin.notify(session, VexNotification::SessionClosed);
    return status;
} catch (std::exception const& problem) { // a file, a limit, no memory
    std::cerr << problem.what() << '\n';
    return 3;
}
