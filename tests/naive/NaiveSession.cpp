#include "tests/naive/NaiveSession.h"

namespace naive {

namespace {

constexpr long metadataCode = 31000;
constexpr long accessCode = 32000;

void validate(std::vector<Value> const& in, std::size_t index, Value::Type expected,
              Text const& source, int line) {
    if (index >= in.size() || in[index].type != expected) {
        raise(1444379511, source, line, u"VexAction::validateParameter");
    }
}

[[noreturn]] void refuseMissingAction(Text const& key) {
    raise(1444379512, u"VexMAActionPlugin", anyLine, u"VexMAActionPlugin::DoAction", {key});
}

} // namespace

NaiveSession::NaiveSession(SessionOptions const& options)
    : m_options(options), m_host{*options.model, options.catalogue, options.user,
                                 options.model->negotiatedLocale(options.locale)} {}

Outcome NaiveSession::doAction(Value const& action, std::vector<Value> const& in) {
    Outcome outcome;
    ResponseDocument document(m_options.elementLimit);
    try {
        if (action.type != Value::Type::Long) {
            outcome.code = 1;
        } else if (action.number == metadataCode) {
            requestMetadata(in, document, outcome);
            outcome.code = 1;
        } else if (action.number == accessCode) {
            checkAccess(in, outcome);
            outcome.code = 1;
        } else {
            outcome.code = 6;
        }
    } catch (Failure const& failure) {
        outcome.failure = failure;
    } catch (ElementLimitReached const& reached) {
        outcome.limit =
            "the response holds more than " + std::to_string(reached.limit) + " elements";
    } catch (GaveUp const&) {
        outcome.gaveUp = true;
        return outcome;
    }
    outcome.response = document.response().serialised();
    return outcome;
}

// Only the kind of action that a session asks for first is ever made.
void NaiveSession::requestMetadata(std::vector<Value> const& in, ResponseDocument& document,
                                   Outcome& outcome) {
    if (!hasActions()) {
        m_metadata = std::make_unique<MetadataAction>();
    }
    if (!m_metadata) {
        refuseMissingAction(u"MaAction");
    }
    validate(in, 0, Value::Type::Long, u"VexMAAction", 83);
    validate(in, 1, Value::Type::String, u"VexMAAction", 83);
    validate(in, 2, Value::Type::Node, u"VexMAAction", 83);
    if (!m_metadata->provider) {
        m_metadata->provider = std::make_unique<NaiveProvider>(m_host, in[1].text);
    }
    WorkBudget budget(m_options.workBudget);
    m_metadata->provider->doRequest(NaiveRequest(in[2].xml), document, budget);
    outcome.appended.push_back({false, 1});
    outcome.appended.push_back({true, 0});
}

void NaiveSession::checkAccess(std::vector<Value> const& in, Outcome& outcome) {
    if (!hasActions()) {
        m_access = std::make_unique<NaiveAccessAction>(m_host);
    }
    if (!m_access) {
        refuseMissingAction(u"AccessAction");
    }
    validate(in, 0, Value::Type::Long, u"VexAccessAction", anyLine);
    validate(in, 1, Value::Type::String, u"VexAccessAction", anyLine);
    validate(in, 2, Value::Type::Object, u"VexAccessAction", anyLine);
    validate(in, 3, Value::Type::Long, u"VexAccessAction", anyLine);
    bool const accessible = m_access->isAccessible(in[1].text, resolve(in[2].text), in[3].number);
    outcome.appended.push_back({false, 1});
    outcome.appended.push_back({false, accessible ? 1 : 0});
}

void NaiveSession::notify(int kind) {
    if (kind == 1 || kind == 2) {
        m_metadata.reset();
        m_access.reset();
    }
}

Handle NaiveSession::resolve(Text const& object) const {
    if (object.empty()) {
        return nullptr;
    }
    Handle const byId = m_host.model.objectWithId(object);
    return byId ? byId : m_host.model.objectWithReference(object);
}

} // namespace naive
