#include "provider/VexMDMaProvider.h"

#include "KRLIDOM_Helper.h"
#include "VexSession.h"
#include "model/VexFailure.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/start/VexStartPath.h"
#include "provider/tree/VexMDMaProviderVisability.h"
#include "resources.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iterator>

namespace {

int depthOf(VexMDMaProviderHelper const& helper) {
    long const depth =
        std::strtol(helper.GetAttributeValueForAttribute("Depth").c_str(), nullptr, 10);
    return static_cast<int>(std::clamp(depth, long{INT_MIN}, long{INT_MAX}));
}

// Clients send the language that a model is written in under two names. It is read and
// has no effect: answers are in the session's.
void readAuthoringLocale(VexMDMaProviderHelper const& helper) {
    if (helper.GetAttributeValueForAttribute("authoringLocale").empty()) {
        helper.GetAttributeValueForAttribute("xml:lang");
    }
}

} // namespace

VexMDMaProvider::VexMDMaProvider(VexSession& session, I18NString const& modelPath)
    : m_session(&session), m_security(session, MetadataSecurityRules) {
    Initialize(modelPath);
}

void VexMDMaProvider::Initialize(I18NString const& modelPath) {
    m_security.setModelPath(modelPath);
}

void VexMDMaProvider::doRequest(KRLIDOM_Node& request, KRLIDOM_Node& response) {
    KRLIDOM_Element const metadata = KRLIDOM_Helper::findFirstElement(request, "Metadata");
    if (metadata.isNull()) {
        RaiseFailure(VexFailure::MetadataElementMissing);
    }
    VexMDMaProviderHelper helper(metadata);
    helper.ProcessClientRequest();
    doRequest(helper, response);
}

void VexMDMaProvider::doRequest(VexMDMaProviderHelper& helper, KRLIDOM_Node responseNode) {
    if (!m_security.isOutsideContent()) {
        RetrieveSecurityInfo();
    }
    m_document = KRLIDOM_Document(responseNode);
    // Taken before anything is written: settings go behind it, and it stays the
    // first child whatever they add.
    KRLIDOM_Node const result = responseNode.getFirstChild();
    // Made for every request; only that for functions gives it a place.
    KRLIDOM_Element const package =
        m_document.createSpareElement(resources::getString(resources::Package));
    readAuthoringLocale(helper);
    int const depth = depthOf(helper);
    if (helper.GetAttributeValueForAttribute("function").empty()) {
        answerModelRequest(helper, responseNode, result, depth);
    } else {
        answerFunctionRequest(helper, result, package);
    }
}

void VexMDMaProvider::answerModelRequest(VexMDMaProviderHelper const& helper,
                                         KRLIDOM_Node const& response, KRLIDOM_Node const& result,
                                         int depth) {
    if (result.isNull()) {
        RaiseFailure(VexFailure::MetadataParameterType); // there is nothing to take the tree
    }
    getModelLocales();
    I18NLocale const* const locale = m_session->GetCurrentLocale();
    KRLIDOM_Element responseElement(response);
    ProcessGlobal(helper, locale, responseElement);

    I18NString startPath = helper.GetAttributeValueForAttribute("start_atRef");
    bool const isReference = !startPath.empty();
    if (!isReference) {
        startPath = helper.GetAttributeValueForAttribute("start_atPath");
        if (startPath.empty()) {
            startPath = helper.GetAttributeValueForAttribute("start_at");
        }
    }
    NameParts parts;
    if (!GetNamePartsFromStartPath(startPath, parts)) {
        RaiseFailure(VexFailure::StartPathMalformed);
    }
    VexMDAccessEngine engine = getAccessEngine(helper, *locale);
    VexMDMaProviderVisability visibility(*locale, m_session, &engine, this);
    ProcessRequest(helper, parts, startPath, depth, locale, engine, visibility, isReference,
                   result);
}

void VexMDMaProvider::answerFunctionRequest(VexMDMaProviderHelper const& helper,
                                            KRLIDOM_Node const& result,
                                            KRLIDOM_Element const& package) {
    I18NLocale const& locale = *m_session->GetCurrentLocale();
    VexSecurityInfoSource* const source = m_security.source();
    if (source != nullptr) {
        I18NString value;
        source->GetPackageValue(m_security.modelPath(), value, locale);
        package.setAttribute(resources::getString(resources::Name), value);
    }
    m_document.appendSpare(result, package);
    NameParts names;
    helper.GetPropertiesForClass(resources::getString(resources::Package), names);
    for (I18NString const& name : names) {
        if (source == nullptr) {
            continue;
        }
        I18NString const value =
            source->GetPackagePropertyValue(m_security.modelPath(), locale, name);
        if (!value.empty() && KRLIDOM_Helper::isName(name)) {
            package.setAttribute(name, value);
        }
    }
    result.appendChild(package);
}

VexMDAccessEngine VexMDMaProvider::getAccessEngine(VexMDMaProviderHelper const& helper,
                                                   I18NLocale const& locale) {
    std::vector<I18NString> views;
    if (!m_security.isOutsideContent()) {
        std::vector<I18NString> const& available = m_security.availableViews();
        if (available.empty()) {
            RaiseFailure(VexFailure::EngineWithoutViews);
        }
        std::vector<I18NString> requested;
        I18NString const view =
            helper.GetAttributeValueForAttribute(resources::getString(resources::SecurityView));
        if (view.empty()) {
            views = available;
        } else {
            requested.push_back(view);
            std::set_intersection(available.begin(), available.end(), requested.begin(),
                                  requested.end(), std::back_inserter(views));
        }
        if (views.empty()) {
            I18NString availableText;
            getItemsStringFromList(available, availableText);
            I18NString requestedText;
            getItemsStringFromList(requested, requestedText);
            RaiseFailure(VexFailure::RequestedViewUnavailable, {availableText, requestedText});
        }
    }
    return m_security.makeEngine(views, locale);
}
