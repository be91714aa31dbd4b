#include "host/service/Service.h"

#include "VexAction.h"
#include "host/service/NameSuggestion.h"
#include "host/service/ObjectByName.h"
#include "host/service/PluginException.h"
#include "host/store/image/HostException.h"

namespace vex {

namespace {

/// Makes a call under its limits: `call` gives the code of the action. Sessions
/// outlast failures and limits, but not a broken rule.
template <class Call>
CallEnd endOf(SessionPool::Loan& loan, ActionLimits const& limits, Call const& call) {
    CallEnd end;
    try {
        Budget const budget(budgetOf(limits));
        end.code = call(loan.session());
        end.kind = CallEnd::Kind::Answered;
        if (end.code != VexErrorCode::Handled) {
            end.kind = CallEnd::Kind::NotHandled;
            end.text =
                "the plug-in does not know this action (code " + std::to_string(end.code) + ')';
        }
    } catch (VexException const& raised) {
        end.kind = CallEnd::Kind::Raised;
        end.failure = describeFailure(raised);
        end.text = raised.what();
    } catch (PluginException const& broken) {
        end.lacksExtension = broken.getFault() == PluginFault::NotOffered;
        if (!end.lacksExtension) {
            loan.spoil();
        }
        end.text = broken.what();
    } catch (KRLException const& stopped) {
        end.text = stopped.what();
    }
    return end;
}

/// What an action that was done appends: a long 1, and what it was asked for. Raises
/// `HostException` for less: an answer that nobody gave must not pass for an empty one.
void requireDone(VexParams const& out, std::size_t before, char const* wanted) {
    if (out.size() < before + 2 || out[before].GetType() != VexVariant::Long) {
        throw HostException(std::string("the plug-in gave no ") + wanted);
    }
}

bool verdictIn(VexParams const& out) {
    requireDone(out, 0, "verdict");
    auto const verdict = static_cast<long>(out[1]);
    if (out[1].GetType() != VexVariant::Long || (verdict != 0 && verdict != 1)) {
        throw HostException("the plug-in gave a verdict that is neither yes nor no");
    }
    return verdict == 1;
}

} // namespace

std::shared_ptr<PluginProxy> loadPlugin(std::string const& file) {
    auto plugin = std::make_shared<PluginProxy>(file.empty() ? findPluginFile() : file);
    plugin->Initialize();
    return plugin;
}

Service::Service(std::shared_ptr<PluginProxy> plugin, std::size_t mostIdleSessions)
    : m_plugin(plugin), m_sessions(std::move(plugin), mostIdleSessions) {}

MetadataAnswer Service::metadata(Visit const& visit, MetadataRequest const& request,
                                 ActionLimits const& limits) {
    KRLIDOM_OwnedDocument const document = request.toDocument();
    return metadata(visit, document.document(), limits);
}

MetadataAnswer Service::metadata(Visit const& visit, KRLIDOM_Document const& request,
                                 ActionLimits const& limits) {
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Metadata);
    I18NString path = visit.version->path();
    KRLIDOM_Node node = request;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&path));
    in.AddParam(VexVariant(&node));
    ActionResponse response(limits.response);
    MetadataAnswer answer;
    answer.end = endOf(loan, limits, [&](HostSession& session) {
        std::size_t const before = response.out().size();
        long const code =
            m_plugin->DoAction(session, VexVariant(VexAction::MetadataRequest), in, response.out())
                .GetCode();
        if (code == VexErrorCode::Handled) {
            requireDone(response.out(), before, "answer");
        }
        return code;
    });
    answer.response = response.takeDocument();
    return answer;
}

MetadataAnswer Service::observedMetadata(Visit const& visit, KRLIDOM_Document const& request,
                                         VexTreeObserver& observer, ActionLimits const& limits) {
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Metadata);
    KRLIDOM_Node node = request;
    ActionResponse response(limits.response);
    MetadataAnswer answer;
    answer.end = endOf(loan, limits, [&](HostSession& session) {
        m_plugin->explainTree(session, visit.version->path(), node, &response.element(), observer);
        return long{VexErrorCode::Handled};
    });
    answer.response = response.takeDocument();
    return answer;
}

Service::NamedObject Service::findNamed(Visit const& visit, I18NString const& idOrReference,
                                        ActionLimits const& limits) {
    Model const& model = visit.model();
    VEX_HANDLE const root = model.GetRootObject();
    VEX_HANDLE object;
    try {
        object = lookUpObject(model, idOrReference);
    } catch (KRLLimitException const& stopped) {
        return {{.text = stopped.what()}, {}};
    }
    bool const isKnown = object.IsNotNull() && object != root; // no tree starts at the root
    // Asked alike for a name that names nothing: a refusal must not tell which it was.
    Vex_Handle_Collection asked;
    asked.push_back(isKnown ? object : root);
    AccessAnswer const answer = access(visit, asked, 0, limits);
    if (!answer.end.isAnswered() || (isKnown && answer.verdicts.front())) {
        return {answer.end, object};
    }
    NamedObject none;
    none.end.kind = CallEnd::Kind::Unknown;
    none.end.text = unknownObjectText(
        idOrReference,
        suggestObjects(model, idOrReference, [&](Vex_Handle_Collection const& objects) {
            return access(visit, objects, 0, limits).verdicts;
        }));
    return none;
}

CallEnd Service::answerAt(Visit const& visit, I18NString const& idOrReference,
                          KRLIDOM_Document const& request, KRLIDOM_Node* response,
                          VexTreeObserver* observer, ActionLimits const& limits) {
    Budget const whole(budgetOf(limits)); // of all the calls that this makes
    NamedObject const named = findNamed(visit, idOrReference, limits);
    if (!named.end.isAnswered()) {
        return named.end;
    }
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Metadata);
    KRLIDOM_Node node = request;
    return endOf(loan, limits, [&](HostSession& session) {
        m_plugin->answerAt(session, visit.version->path(), node, response, named.object, observer);
        return long{VexErrorCode::Handled};
    });
}

MetadataAnswer Service::metadataAt(Visit const& visit, I18NString const& idOrReference,
                                   KRLIDOM_Document const& request, ActionLimits const& limits) {
    ActionResponse response(limits.response);
    MetadataAnswer answer;
    answer.end = answerAt(visit, idOrReference, request, &response.element(), nullptr, limits);
    answer.response = response.takeDocument();
    return answer;
}

CallEnd Service::explainTreeAt(Visit const& visit, I18NString const& idOrReference,
                               KRLIDOM_Document const& request, VexTreeObserver& observer,
                               ActionLimits const& limits) {
    return answerAt(visit, idOrReference, request, nullptr, &observer, limits);
}

AccessAnswer Service::access(Visit const& visit, Vex_Handle_Collection const& objects, long mode,
                             ActionLimits const& limits) {
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Access);
    I18NString path = visit.version->path();
    VexParams in;
    VexParams out; // such a request reads and writes no document
    AccessAnswer answer;
    answer.verdicts.reserve(objects.size());
    answer.end = endOf(loan, limits, [&](HostSession& session) {
        VexVariant const action(VexAction::AccessibilityRequest);
        for (VEX_HANDLE const object : objects) {
            Budget::charge(); // a plug-in that has worked it out already asks nothing
            in.clear();
            in.AddParam(VexVariant(0L));
            in.AddParam(VexVariant(&path));
            in.AddParam(VexVariant(object));
            in.AddParam(VexVariant(mode));
            out.clear();
            long const code = m_plugin->DoAction(session, action, in, out).GetCode();
            if (code != VexErrorCode::Handled) {
                return code;
            }
            answer.verdicts.push_back(verdictIn(out));
        }
        return long{VexErrorCode::Handled};
    });
    return answer;
}

AccessReasons Service::explainAccess(Visit const& visit, Vex_Handle_Collection const& objects,
                                     bool skipViewLists, ActionLimits const& limits) {
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Access);
    AccessReasons reasons;
    reasons.end = endOf(loan, limits, [&](HostSession& session) {
        m_plugin->explainAccess(session, visit.version->path(), objects, skipViewLists,
                                reasons.explanation);
        if (reasons.explanation.objects.size() != objects.size()) {
            throw HostException("the plug-in explained other objects than it was asked about");
        }
        return long{VexErrorCode::Handled};
    });
    return reasons;
}

CallEnd Service::explainTree(Visit const& visit, KRLIDOM_Document const& request,
                             VexTreeObserver& observer, ActionLimits const& limits) {
    SessionPool::Loan loan = m_sessions.take(visit, SessionKind::Metadata);
    KRLIDOM_Node node = request;
    return endOf(loan, limits, [&](HostSession& session) {
        m_plugin->explainTree(session, visit.version->path(), node, nullptr, observer);
        return long{VexErrorCode::Handled};
    });
}

} // namespace vex
