// A host that keeps no model of its own: it reads a catalogue and a model from files, or
// makes a model from rows, and asks the plug-in about it.
//
//     file_host libVexMAActionPlugin.vpl CATALOG.xml MODEL_PATH USER REQUEST.xml [LANGUAGE [ID]]
//     file_host libVexMAActionPlugin.vpl --rows REQUEST.xml [LANGUAGE [ID]]
//
// With an ID the answer starts at that object, wherever the request says that it starts.

#include "AnswerAt.h"
#include "KRLIDOM_OwnedDocument.h"
#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexCatalogue.h"
#include "VexException.h"
#include "VexHostSession.h"
#include "VexLocaleChoice.h"
#include "VexModelRows.h"

#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string readFile(std::string const& name) {
    std::ifstream file(name);
    if (!file) {
        throw std::runtime_error(name + ": cannot be read");
    }
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
    I18NString startId; // empty: where the request says
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
        question.model = catalogue->readModel(question.modelPath);
        question.security =
            std::make_unique<VexCatalogueSecurity>(catalogue, I18NString::fromUtf8(arguments[2]));
    }
    auto const textAt = [&arguments](std::size_t at) {
        return at < arguments.size() ? I18NString::fromUtf8(arguments[at]) : I18NString();
    };
    question.language =
        VexChooseLocale(question.model->locales(), I18NLocale(textAt(requestAt + 1)),
                        question.model->defaultLocale());
    question.startId = textAt(requestAt + 2);
    return question;
}

/// Has the plug-in answer into `response`; false, and a reason is told, when it does not.
bool answer(VexLoadedPlugin& plugin, VexSession& session, Question& question, KRLIDOM_Node& request,
            KRLIDOM_Node& response) {
    if (!question.startId.empty()) {
        bool const isKnown = answerAt(plugin, session, question.modelPath, *question.model,
                                      question.startId, request, response);
        if (!isKnown) {
            std::cerr << "there is no object " << question.startId.c_str() << '\n';
        }
        return isKnown;
    }
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&question.modelPath));
    in.AddParam(VexVariant(&request));
    VexParams out;
    out.AddParam(VexVariant(0L));
    out.AddParam(VexVariant(&response));
    bool const isDone = plugin.act(session, VexAction::MetadataRequest, in, out);
    if (!isDone) {
        std::cerr << plugin.file() << " serves no metadata requests\n";
    }
    return isDone;
}

int ask(VexLoadedPlugin& plugin, VexSession& session, Question& question) {
    KRLIDOM_OwnedDocument const request =
        KRLIDOM_Reader::parse(readFile(question.requestFile), question.requestFile);
    KRLIDOM_OwnedDocument const response("Response");
    KRLIDOM_Node requestNode = request.document();
    KRLIDOM_Node responseNode = response.document().getDocumentElement();
    responseNode.appendChild(response.document().createElement("Result"));
    if (!answer(plugin, session, question, requestNode, responseNode)) {
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
    if (arguments.size() < least || arguments.size() > least + 2) {
        std::cerr << "usage: file_host PLUGIN.vpl CATALOG.xml MODEL_PATH USER REQUEST.xml "
                     "[LANGUAGE [ID]]\n"
                     "       file_host PLUGIN.vpl --rows REQUEST.xml [LANGUAGE [ID]]\n";
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
    } catch (std::exception const& problem) { // a limit, no memory: the session ends all the same
        std::cerr << problem.what() << '\n';
        status = 3;
    }
    plugin.notify(session, VexNotification::SessionClosed);
    return status;
} catch (std::exception const& problem) { // a file, a limit, no memory
    std::cerr << problem.what() << '\n';
    return 3;
}
