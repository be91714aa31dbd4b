#pragma once

#include "KRLIDOM_OwnedDocument.h"
#include "host/service/PluginProxy.h"
#include "host/store/image/Budget.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vex {

/// What values for an action point to. It stays where it is until this object
/// goes: keep it through the call.
class ActionValues {
public:
    VexVariant text(I18NString text);
    /// Takes the document; the value is its document node.
    VexVariant node(KRLIDOM_OwnedDocument document);

private:
    struct HeldNode {
        KRLIDOM_OwnedDocument document;
        KRLIDOM_Node node;
    };
    std::deque<I18NString> m_texts;
    std::deque<HeldNode> m_nodes;
};

/// What a call may use up.
struct ActionLimits {
    KRLIDOM_Limits response;
    std::optional<std::chrono::milliseconds> time;
    std::atomic<bool> const* cancelled = nullptr; // set by another thread or a signal handler
};

/// What an action writes into: a long 0, then the element "Response" of a new
/// document, whose only child is an empty element "Result".
class ActionResponse {
public:
    explicit ActionResponse(KRLIDOM_Limits const& limits);
    ActionResponse(ActionResponse const&) = delete;
    ActionResponse& operator=(ActionResponse const&) = delete;

    VexParams& out() { return m_out; }
    /// The element that the answer is written into.
    KRLIDOM_Node& element() { return m_response; }
    /// What was added to the two entries.
    std::vector<VexVariant> appended() const;
    KRLIDOM_OwnedDocument takeDocument() { return std::move(m_document); }

private:
    KRLIDOM_OwnedDocument m_document;
    KRLIDOM_Node m_response;
    VexParams m_out;
};

/// What a call that begins now may use up.
Budget::Allowed budgetOf(ActionLimits const& limits);

/// How a call ended, and the response document as it stood then.
struct ActionOutcome {
    enum class End {
        Returned, // with `code` and `appended`
        Raised,   // the plug-in raised `raised`
        Stopped,  // a limit of the host, or a broken rule: see `text`
    };

    End end = End::Stopped;
    long code = 0;
    std::vector<VexVariant> appended; // what the plug-in added after the host's two entries
    std::optional<VexException> raised;
    std::string text; // for people, when the call did not return
    KRLIDOM_OwnedDocument response;
};

/// Calls an action with a new response document. Raises `ForeignPathException` for a model
/// path that the session may not be asked about; nothing is called then.
ActionOutcome callAction(PluginProxy& plugin, HostSession& session, VexVariant const& action,
                         VexParams const& in, ActionLimits const& limits);

} // namespace vex
