#pragma once

#include "provider/VexMDMaProvider.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/tree/VexMDMaProviderVisability.h"
#include "security/VexMDAccessEngine.h"
#include "tests/support/ExpectFailure.h"
#include "tests/support/TestDocument.h"
#include "tests/support/TestModel.h"
#include "tests/support/TestSession.h"

#include <string>
#include <vector>

/// A provider on a model, with all that it stands on.
class ProviderScene {
public:
    /// Without a content path nobody is restricted.
    explicit ProviderScene(std::string const& modelXml, char const* modelPath = "a model")
        : model(modelXml), session(model), provider(session, modelPath) {}

    /// What a request writes into the response's first child.
    std::string ask(std::string const& requestXml);
    /// The whole response.
    std::string askForResponse(std::string const& requestXml);

    /// Expects that a request ends with a failure of the provider's.
    void expectRefused(std::string const& requestXml, unsigned id, int line,
                       std::string const& function, std::vector<std::string> const& parameters = {},
                       char const* testFile = __builtin_FILE(), int testLine = __builtin_LINE());

    /// Lets the provider read the locales and find the root namespace, as each
    /// request does before anything is searched.
    void open();

    TestModel model;
    TestSession session;
    VexMDMaProvider provider;
};

/// What the members of a provider that a request calls later are given. The
/// provider is ready to write into the response, and nobody is restricted.
class RequestParts {
public:
    RequestParts(ProviderScene& scene, std::string const& requestXml);

    KRLIDOM_Node result() const { return response.result(); }

    TestRequest request;
    TestResponse response;
    VexMDMaProviderHelper helper;
    I18NLocale const* locale;
    VexMDAccessEngine engine;
    VexMDMaProviderVisability visibility;
};

/// The records as "class:name class:name ...", the object's own first.
std::string pathText(VexMDMaPath const& path);
