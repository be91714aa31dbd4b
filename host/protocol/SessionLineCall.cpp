#include "host/protocol/SessionLineCall.h"

#include "KRLIDOM_Writer.h"
#include "VexNotification.h"
#include "VexObject.h"
#include "host/store/image/Budget.h"
#include "host/store/image/HostException.h"

#include <new>

namespace vex {

namespace {

using JsonKind = SessionValue::Kind;

/// Makes variants of a line's values, which it holds.
class ValueMaker {
public:
    ValueMaker(HostSession const& session, SessionLineLimits const& limits)
        : m_session(session), m_limits(limits) {}

    VexVariant make(SessionValue const& value) {
        switch (value.kind) {
        case JsonKind::Empty:
            return {};
        case JsonKind::Long:
            return VexVariant(value.number);
        case JsonKind::String:
            return m_values.text(I18NString::fromUtf8(value.text));
        case JsonKind::Handle:
            return VexVariant(m_session.findObject(I18NString::fromUtf8(value.text)));
        case JsonKind::Node:
            return m_values.node(read(value.text));
        case JsonKind::Unusable:
            break;
        }
        throw HostException(value.text);
    }

private:
    /// Each may be as long as a request, and so may all of them together.
    KRLIDOM_OwnedDocument read(std::string const& xml) {
        if (++m_nodes > SessionLineLimits::MostNodes) {
            throw HostException("the line holds more than " +
                                std::to_string(SessionLineLimits::MostNodes) +
                                " nodes, which is the limit; send fewer");
        }
        KRLIDOM_OwnedDocument document = KRLIDOM_Reader::parse(xml, "node", m_limits.document);
        m_nodeBytes += xml.size();
        if (m_nodeBytes > m_limits.document.bytes) {
            throw HostException("the nodes of the line hold more than " +
                                std::to_string(m_limits.document.bytes) +
                                " bytes together, which is the limit; send fewer, or raise it "
                                "with --max-request");
        }
        Budget::chargeBytes(document.byteCount());
        return document;
    }

    HostSession const& m_session;
    SessionLineLimits const& m_limits;
    ActionValues m_values;
    std::size_t m_nodes = 0;
    std::size_t m_nodeBytes = 0;
};

SessionValue appendedValue(VexVariant const& value) {
    switch (value.GetType()) {
    case VexVariant::Long:
        return {JsonKind::Long, static_cast<long>(value), {}};
    case VexVariant::Handle: {
        I18NString id;
        VexObject(static_cast<VEX_HANDLE>(value)).GetId(id);
        return {JsonKind::Handle, 0, id.toUtf8()};
    }
    case VexVariant::String: {
        auto const* const text = static_cast<I18NString*>(value);
        return {JsonKind::String, 0, text == nullptr ? "" : text->toUtf8()};
    }
    case VexVariant::Empty:
        return {};
    default: // a node, or a pointer to one
        return {JsonKind::Node, 0, {}};
    }
}

SessionReply replyTo(ActionOutcome const& outcome) {
    std::string response = KRLIDOM_Writer::toUtf8(outcome.response.document());
    if (outcome.end == ActionOutcome::End::Returned) {
        ReturnedReply reply{outcome.code, {}, std::move(response)};
        for (VexVariant const& value : outcome.appended) {
            reply.appended.push_back(appendedValue(value));
        }
        return reply;
    }
    if (outcome.raised) {
        return RaisedReply{describeFailure(*outcome.raised), std::move(response)};
    }
    return StoppedReply{outcome.text, std::move(response)};
}

/// Carries out each kind of line.
struct Performer {
    HostSession const& session;
    SessionLineLimits const& limits;
    SessionCalls const& calls;

    SessionReply operator()(SessionAction const& line) const {
        ValueMaker values(session, limits);
        VexVariant const action = values.make(line.action);
        VexParams in;
        for (SessionValue const& value : line.in) {
            in.AddParam(values.make(value));
        }
        return replyTo(calls.action(action, in));
    }

    SessionReply operator()(SessionNotification const& line) const {
        std::string problem = line.kind == VexNotification::ModelReloaded ? reload() : "";
        calls.notify(line.kind);
        return NotifiedReply{line.kind, std::move(problem)};
    }

    SessionReply operator()(UnusableLine const& line) const { return UnusedReply{line.problem}; }

private:
    /// What kept the model from being read anew; "" when nothing did.
    std::string reload() const {
        constexpr char const* kept = "; the model that was read before stays in use";
        try {
            if (calls.reload) {
                calls.reload();
            }
            return "";
        } catch (KRLException const& problem) {
            return problem.what() + std::string(kept);
        } catch (std::bad_alloc const&) {
            return std::string("there is not enough memory for the model") + kept;
        }
    }
};

} // namespace

SessionReply carryOut(SessionLine const& line, HostSession const& session,
                      SessionLineLimits const& limits, SessionCalls const& calls) {
    try {
        return std::visit(Performer{session, limits, calls}, line);
    } catch (KRLException const& problem) {
        return UnusedReply{problem.what()};
    }
}

std::string answerSessionLine(std::string_view line, HostSession const& session,
                              SessionLineLimits const& limits, SessionCalls const& calls) {
    std::string id;
    try {
        ReadLine read = readSessionLine(line, limits.values);
        id = std::move(read.id);
        return toJson(carryOut(read.says, session, limits, calls), id);
    } catch (KRLLimitException const& stopped) {
        return toJson(UnusedReply{stopped.what()}, id);
    } catch (std::bad_alloc const&) {
        return toJson(UnusedReply{"there is not enough memory for this line; ask for less"}, id);
    }
}

} // namespace vex
