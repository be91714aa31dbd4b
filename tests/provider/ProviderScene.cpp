#include "tests/provider/ProviderScene.h"

#include "KRLIDOM_Helper.h"

std::string ProviderScene::ask(std::string const& requestXml) {
    TestRequest request(requestXml);
    TestResponse response;
    provider.doRequest(request.node(), response.node());
    return response.resultText();
}

std::string ProviderScene::askForResponse(std::string const& requestXml) {
    TestRequest request(requestXml);
    TestResponse response;
    provider.doRequest(request.node(), response.node());
    return response.text();
}

void ProviderScene::expectRefused(std::string const& requestXml, unsigned id, int line,
                                  std::string const& function,
                                  std::vector<std::string> const& parameters, char const* testFile,
                                  int testLine) {
    expectFailure([&] { ask(requestXml); }, id, "VexMDMaProvider", line, function, parameters,
                  testFile, testLine);
}

void ProviderScene::open() {
    ask("<Metadata Depth='1'/>");
}

RequestParts::RequestParts(ProviderScene& scene, std::string const& requestXml)
    : request(requestXml), helper(KRLIDOM_Helper::findFirstElement(request.node(), "Metadata")),
      locale(scene.session.GetCurrentLocale()), engine(&scene.session, {}, {}, *locale, true),
      visibility(*locale, &scene.session, &engine, &scene.provider) {
    helper.ProcessClientRequest();
    TestRequest empty("<Metadata/>"); // asks for no attribute, so nothing is written
    scene.provider.doRequest(empty.node(), response.node());
}

std::string pathText(VexMDMaPath const& path) {
    std::string text;
    for (VexMDMaModelElementInfo const& record : path) {
        text += (text.empty() ? "" : " ") + record.className.toUtf8() + ":" + record.name.toUtf8();
    }
    return text;
}
