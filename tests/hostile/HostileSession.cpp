#include "tests/hostile/HostileSession.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "host/content/MemoryContent.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/ObjectByName.h"

#include <cstdlib>

#include <gtest/gtest.h>

HostileSession::HostileSession(std::string const& model, std::string const& catalogue) {
    vex::Diagnostics found;
    vex::MemoryContent content(
        catalogue.empty() ? nullptr : vex::readCatalogueText(catalogue, "catalog.xml", ".", found));
    I18NString const path = catalogue.empty() ? "a model file" : "/content/m";
    content.setModel(path, vex::loadModelText(model, "test.model.xml"));
    m_visit = vex::openVisit(content, {path, "ann", I18NLocale()});
}

vex::Service& HostileSession::service() {
    static vex::Service serving(vex::loadPlugin(VEX_PLUGIN_FILE));
    return serving;
}

vex::MetadataAnswer HostileSession::call(std::string const& request) {
    return service().metadata(m_visit, KRLIDOM_Reader::parse(request, "request").document(),
                              limits);
}

std::string HostileSession::ask(std::string const& request) {
    vex::MetadataAnswer const answer = call(request);
    EXPECT_EQ(answer.end.text, "");
    return KRLIDOM_Writer::toUtf8(answer.response.document());
}

std::string HostileSession::complaint(std::string const& request) {
    vex::MetadataAnswer const answer = call(request);
    return answer.end.isAnswered() ? "answered" : answer.end.text;
}

bool HostileSession::isIncluded(char const* id) {
    Vex_Handle_Collection object;
    object.push_back(vex::findObject(m_visit.model(), id));
    vex::AccessAnswer const answer = service().access(m_visit, object, 0, limits);
    EXPECT_EQ(answer.end.text, "");
    return answer.verdicts == std::vector<bool>{true};
}

std::string repeated(std::string const& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::size_t hostileSize(std::size_t usual) {
    char const* const chosen = std::getenv("VEX_HOSTILE_SIZE");
    return chosen == nullptr ? usual : std::strtoull(chosen, nullptr, 10);
}
