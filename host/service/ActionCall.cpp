#include "host/service/ActionCall.h"

namespace vex {

namespace {

KRLIDOM_Limits withOptions(KRLIDOM_Limits limits) {
    limits.elementsName = "--max-elements";
    limits.bytesName = "--max-bytes";
    return limits;
}

} // namespace

VexVariant ActionValues::text(I18NString text) {
    return VexVariant(&m_texts.emplace_back(std::move(text)));
}

VexVariant ActionValues::node(KRLIDOM_OwnedDocument document) {
    KRLIDOM_Node const node = document.document();
    return VexVariant(&m_nodes.emplace_back(HeldNode{std::move(document), node}).node);
}

ActionResponse::ActionResponse(KRLIDOM_Limits const& limits)
    : m_document("Response", withOptions(limits)),
      m_response(m_document.document().getDocumentElement()) {
    m_response.appendChild(m_document.document().createElement("Result"));
    m_out.AddParam(VexVariant(0L));
    m_out.AddParam(VexVariant(&m_response));
}

std::vector<VexVariant> ActionResponse::appended() const {
    constexpr std::size_t own = 2;
    std::vector<VexVariant> values;
    for (std::size_t index = own; index < m_out.size(); ++index) {
        values.push_back(m_out[index]);
    }
    return values;
}

Budget::Allowed budgetOf(ActionLimits const& limits) {
    Budget::Allowed allowed;
    if (limits.time) {
        allowed.deadline = std::chrono::steady_clock::now() + *limits.time;
    }
    allowed.cancelled = limits.cancelled;
    if (limits.response.bytes != 0) {
        allowed.bytes = limits.response.bytes;
    }
    return allowed;
}

ActionOutcome callAction(PluginProxy& plugin, HostSession& session, VexVariant const& action,
                         VexParams const& in, ActionLimits const& limits) {
    ActionOutcome outcome;
    ActionResponse response(limits.response);
    try {
        Budget const budget(budgetOf(limits));
        outcome.code = plugin.DoAction(session, action, in, response.out()).GetCode();
        outcome.end = ActionOutcome::End::Returned;
    } catch (VexException const& raised) {
        outcome.end = ActionOutcome::End::Raised;
        outcome.raised = raised;
        outcome.text = raised.what();
    } catch (ForeignPathException const&) {
        throw; // no call was made, so it has no outcome
    } catch (KRLException const& stopped) {
        outcome.text = stopped.what();
    }
    outcome.appended = response.appended();
    outcome.response = response.takeDocument();
    return outcome;
}

} // namespace vex
