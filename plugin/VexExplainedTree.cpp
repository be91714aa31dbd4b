#include "plugin/VexExplainedTree.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "KRLIDOM_OwnedDocument.h"
#include "VexVariant.h"
#include "model/VexFailure.h"
#include "plugin/VexParameters.h"
#include "provider/VexConstants.h"
#include "provider/VexMDMaProvider.h"
#include "provider/tree/VexTreeObservation.h"

#include <optional>

namespace {

void addSize(VexTreeSize& size, I18NString const& text) {
    ++size.attributes;
    size.characters += static_cast<std::size_t>(text.length());
}

/// Settings and the package: a few elements, some with a text.
void addSize(VexTreeSize& size, KRLIDOM_Node const& node) {
    if (node.getNodeType() == KRLIDOM_Node::TextNode) {
        addSize(size, node.getNodeValue());
        return;
    }
    ++size.elements;
    KRLIDOM_NamedNodeMap const attributes = node.getAttributes();
    for (std::size_t index = 0; index < attributes.getLength(); ++index) {
        addSize(size, attributes.item(index).getValue());
    }
    for (KRLIDOM_Node child = node.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        addSize(size, child);
    }
}

/// Lets `run` answer into `response`, or into a place that is only measured, with a
/// provider of its own: the one of the session's action stays as it is.
template <class Run>
void answerWithFreshProvider(VexSession& session, I18NString const& modelPath,
                             KRLIDOM_Node* response, VexTreeObserver* observer, Run const& run) {
    if (response == nullptr ? observer == nullptr : !HoldsElement(VexVariant(response))) {
        RaiseFailure(VexFailure::MetadataParameterType);
    }
    VexMDMaProvider provider(session, modelPath);
    std::optional<VexTreeObservation> observation;
    if (observer != nullptr) {
        provider.observe(&observation.emplace(*observer, response != nullptr));
    }
    if (response != nullptr) {
        run(provider, *response);
        return;
    }
    // What stands beside the tree is small: it is built to be measured.
    KRLIDOM_OwnedDocument const outside("Response");
    KRLIDOM_Node place = outside.document().getDocumentElement();
    place.appendChild(outside.document().createElement("Result"));
    run(provider, place);
    VexTreeSize size;
    addSize(size, place);
    observer->reportOutside(size);
}

} // namespace

void ExplainTree(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
                 KRLIDOM_Node* response, VexTreeObserver& observer) {
    answerWithFreshProvider(session, modelPath, response, &observer,
                            [&](VexMDMaProvider& provider, KRLIDOM_Node& place) {
                                provider.doRequest(request, place);
                            });
}

void AnswerAt(VexSession& session, I18NString const& modelPath, KRLIDOM_Node& request,
              KRLIDOM_Node* response, VEX_HANDLE object, VexTreeObserver* observer) {
    answerWithFreshProvider(session, modelPath, response, observer,
                            [&](VexMDMaProvider& provider, KRLIDOM_Node& place) {
                                provider.doRequestAt(request, place, object);
                            });
}
