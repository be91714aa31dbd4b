#include "provider/VexMDMaProvider.h"

#include "KRLIDOM_Helper.h"
#include "VexSession.h"
#include "model/VexFailure.h"
#include "provider/VexConstants.h"
#include "provider/request/VexMDMaProviderHelper.h"
#include "provider/start/VexObjectStart.h"
#include "provider/start/VexStartPath.h"
#include "provider/tree/VexMDMaProviderVisability.h"
#include "resources.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iterator>
#include <optional>

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

/// Where a request says to start.
struct RequestedStart {
    I18NString text; // "": the root namespace
    bool isReference = false;
    VexNameParts parts;

    explicit RequestedStart(VexMDMaProviderHelper const& helper)
        : text(helper.GetAttributeValueForAttribute("start_atRef")), isReference(!text.empty()) {
        if (!isReference) {
            text = helper.GetAttributeValueForAttribute("start_atPath");
            if (text.empty()) {
                text = helper.GetAttributeValueForAttribute("start_at");
            }
        }
        if (!GetNamePartsFromStartPath(text, parts)) {
            RaiseFailure(VexFailure::StartPathMalformed);
        }
    }
};

KRLIDOM_Element findMetadata(KRLIDOM_Node const& request) {
    KRLIDOM_Element const metadata = KRLIDOM_Helper::findFirstElement(request, "Metadata");
    if (metadata.isNull()) {
        RaiseFailure(VexFailure::MetadataElementMissing);
    }
    return metadata;
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
    VexMDMaProviderHelper helper(findMetadata(request));
    helper.ProcessClientRequest();
    doRequest(helper, response);
}

void VexMDMaProvider::doRequest(VexMDMaProviderHelper& helper, KRLIDOM_Node responseNode) {
    answer(helper, responseNode, VEX_HANDLE());
}

void VexMDMaProvider::doRequestAt(KRLIDOM_Node& request, KRLIDOM_Node& response,
                                  VEX_HANDLE object) {
    if (!IsElementOfModel(*m_session, object)) {
        RaiseFailure(VexFailure::MetadataParameterType);
    }
    VexMDMaProviderHelper helper(findMetadata(request));
    helper.ProcessClientRequest();
    answer(helper, response, object);
}

void VexMDMaProvider::answer(VexMDMaProviderHelper const& helper, KRLIDOM_Node const& response,
                             VEX_HANDLE object) {
    if (!m_security.isOutsideContent()) {
        RetrieveSecurityInfo();
    }
    m_document = KRLIDOM_Document(response);
    // Taken before anything is written: settings go behind it, and it stays the
    // first child whatever they add.
    KRLIDOM_Node const result = response.getFirstChild();
    // Made for every request; only that for functions gives it a place.
    KRLIDOM_Element const package =
        m_document.createSpareElement(resources::getString(resources::Package));
    readAuthoringLocale(helper);
    int const depth = depthOf(helper);
    if (helper.GetAttributeValueForAttribute("function").empty()) {
        answerModelRequest(helper, response, result, depth, object);
    } else {
        answerFunctionRequest(helper, result, package);
    }
}

void VexMDMaProvider::answerModelRequest(VexMDMaProviderHelper const& helper,
                                         KRLIDOM_Node const& response, KRLIDOM_Node const& result,
                                         int depth, VEX_HANDLE object) {
    if (result.isNull()) {
        RaiseFailure(VexFailure::MetadataParameterType); // there is nothing to take the tree
    }
    getModelLocales();
    I18NLocale const* const locale = m_session->GetCurrentLocale();
    KRLIDOM_Element responseElement(response);
    ProcessGlobal(helper, locale, responseElement);

    bool const isSought = !object.IsNotNull();
    std::optional<RequestedStart> start;
    if (isSought) {
        start.emplace(helper);
    }
    VexMDAccessEngine engine = getAccessEngine(helper, *locale);
    VexMDMaProviderVisability visibility(*locale, m_session, &engine, this);
    if (isSought) {
        ProcessRequest(helper, start->parts, start->text, depth, locale, engine, visibility,
                       start->isReference, result);
    } else {
        ProcessRequestAt(helper, object, depth, locale, engine, visibility, result);
    }
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
