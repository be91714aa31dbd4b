#include "tests/naive/NaiveProvider.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace naive {

namespace {

Text const providerSource = u"VexMDMaProvider";
Text const doRequestFunction = u"VexMDMaProvider::doRequest";
Text const providerSecurityFunction = u"VexMDMaProvider::RetrieveSecurityInfo";
Text const engineFunction = u"VexMDMaProvider::getAccessEngine";

int clampedToInt(long number) {
    long const low = std::numeric_limits<int>::min();
    long const high = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(number, low, high));
}

} // namespace

NaiveProvider::NaiveProvider(NaiveHost const& host, Text const& modelPath)
    : m_host(host), m_model(host.model) {
    if (findText(modelPath, u"path:") == 0) {
        m_modelPath = substring(modelPath, 5, -1);
        return;
    }
    if (substring(modelPath, 0, 9) != u"/content/") {
        m_nonContentPath = true;
    }
    m_modelPath = modelPath;
}

void NaiveProvider::doRequest(NaiveRequest const& request, ResponseDocument& document,
                              WorkBudget& budget) {
    if (!request.hasMetadata()) {
        raise(1444379513, providerSource, anyLine, doRequestFunction);
    }
    if (!m_nonContentPath) {
        retrieveSecurityInfo();
    }
    int const depth = clampedToInt(leadingInteger(request.option(u"Depth")));
    if (request.option(u"function").empty()) {
        answerModelRequest(request, depth, document, budget);
    } else {
        answerFunctionRequest(request, document);
    }
}

void NaiveProvider::retrieveSecurityInfo() {
    if (m_securityRetrieved) {
        return;
    }
    m_source = m_host.catalogue
                   ? m_host.catalogue->source(m_modelPath, m_host.user, m_model.defaultLocale())
                   : std::nullopt;
    if (!m_source) {
        raise(1444335572, providerSource, anyLine, providerSecurityFunction);
    }
    m_availableViews = m_source->views;
    if (m_availableViews.empty()) {
        raise(1170699671, providerSource, anyLine, providerSecurityFunction);
    }
    m_roles = m_source->roles;
    // The role list may be empty: it is the views that are tested again.
    if (m_availableViews.empty()) {
        raise(1170699671, providerSource, anyLine, providerSecurityFunction);
    }
    m_securityRetrieved = true;
}

void NaiveProvider::answerFunctionRequest(NaiveRequest const& request, ResponseDocument& document) {
    std::unique_ptr<ResponseElement> package = document.createElement(u"package");
    if (m_source) {
        package->attributes[u"name"] = m_source->packageValue(m_host.locale);
        for (Text const& name : request.propertiesForClass(u"package")) {
            Text const value = m_source->packageProperty(m_host.locale, name);
            if (!value.empty() && isXmlName(name)) {
                package->attributes[name] = value;
            }
        }
    }
    document.result().children.push_back(std::move(package));
}

void NaiveProvider::answerModelRequest(NaiveRequest const& request, int depth,
                                       ResponseDocument& document, WorkBudget& budget) {
    getModelLocales();
    writeGlobals(request, document);
    bool const isReference = !request.option(u"start_atRef").empty();
    Text startPath = request.option(u"start_atRef");
    if (startPath.empty()) {
        startPath = request.option(u"start_atPath");
    }
    if (startPath.empty()) {
        startPath = request.option(u"start_at");
    }
    Texts parts;
    if (!splitStartPath(startPath, parts)) {
        raise(1170869272, providerSource, 145, doRequestFunction);
    }
    NaiveAccessEngine engine = accessEngine(request);
    NaiveVisibility visibility(m_model, engine);
    RequestScope scope{request, m_host.locale, depth, engine, visibility, document, budget, {}};
    processRequest(scope, parts, startPath, isReference);
}

NaiveAccessEngine NaiveProvider::accessEngine(NaiveRequest const& request) const {
    Texts views;
    if (!m_nonContentPath) {
        if (m_availableViews.empty()) {
            raise(1170699671, providerSource, 212, engineFunction);
        }
        Texts requested;
        Text const wanted = request.option(u"securityView");
        if (wanted.empty()) {
            views = m_availableViews;
        } else {
            requested.push_back(wanted);
            std::set_intersection(m_availableViews.begin(), m_availableViews.end(),
                                  requested.begin(), requested.end(), std::back_inserter(views));
        }
        if (views.empty()) {
            raise(1170551942, providerSource, 241, engineFunction,
                  {joined(m_availableViews), joined(requested)});
        }
    }
    return NaiveAccessEngine(m_model, views, m_roles, m_nonContentPath);
}

Texts NaiveProvider::allAttributes(Handles const& properties) const {
    Texts names = {u"ID"};
    for (Handle property : properties) {
        if (!m_model.hasChildObjects(property) && !m_model.hasProperties(property)) {
            names.push_back(classOf(property));
        }
    }
    return names;
}

Texts NaiveProvider::allCollections(Handles const& properties) const {
    Texts names;
    for (Handle property : properties) {
        if (m_model.hasChildObjects(property)) {
            names.push_back(classOf(property));
        }
    }
    return names;
}

Text NaiveProvider::nameOf(Handle object) const {
    Text name;
    m_model.readProperty(object, u"name", name, m_host.locale);
    return name;
}

Text NaiveProvider::classOf(Handle object) const {
    Text className;
    m_model.getName(object, className);
    return className;
}

} // namespace naive
