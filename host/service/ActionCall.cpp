#include "host/service/ActionCall.h"

#include "host/store/image/CallLimits.h"

namespace vex {

VexVariant ActionValues::String(I18NString text) {
    return VexVariant(&m_texts.emplace_back(std::move(text)));
}

VexVariant ActionValues::Node(KRLIDOM_OwnedDocument document) {
    KRLIDOM_Node const node = document.document();
    return VexVariant(&m_nodes.emplace_back(HeldNode{std::move(document), node}).node);
}

std::optional<std::chrono::steady_clock::time_point> deadlineOf(ActionLimits const& limits) {
    if (!limits.time) {
        return std::nullopt;
    }
    return std::chrono::steady_clock::now() + *limits.time;
}

ActionOutcome callAction(PluginProxy& plugin, HostSession& session, VexVariant const& action,
                         VexParams const& in, ActionLimits const& limits) {
    ActionOutcome outcome;
    outcome.response = KRLIDOM_OwnedDocument("Response", limits.response);
    KRLIDOM_Document const document = outcome.response.document();
    KRLIDOM_Node response = document.getDocumentElement();
    response.appendChild(document.createElement("Result"));

    VexParams out;
    out.AddParam(VexVariant(0L));
    out.AddParam(VexVariant(&response));
    std::size_t const own = out.size();

    try {
        CallLimits const callLimits(deadlineOf(limits), limits.cancelled);
        outcome.code = plugin.DoAction(session, action, in, out).GetCode();
        outcome.end = ActionOutcome::End::Returned;
    } catch (VexException const& raised) {
        outcome.end = ActionOutcome::End::Raised;
        outcome.raised = raised;
        outcome.text = raised.what();
    } catch (KRLException const& stopped) {
        outcome.text = stopped.what();
    }
    for (std::size_t index = own; index < out.size(); ++index) {
        outcome.appended.push_back(out[index]);
    }
    return outcome;
}

} // namespace vex
