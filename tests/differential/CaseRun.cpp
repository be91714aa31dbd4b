#include "tests/differential/CaseRun.h"

#include "KRLIDOM_Reader.h"
#include "KRLIDOM_Writer.h"
#include "VexNotification.h"
#include "VexObject.h"
#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/ActionCall.h"
#include "tests/naive/XmlTree.h"

#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

using naive::Outcome;
using naive::Value;

I18NString toString(naive::Text const& text) {
    return I18NString(std::u16string_view(text));
}

VexVariant toVariant(Value const& value, vex::ActionValues& values,
                     vex::HostSession const& session) {
    switch (value.type) {
    case Value::Type::Empty:
        return {};
    case Value::Type::Long:
        return VexVariant(value.number);
    case Value::Type::String:
        return values.text(toString(value.text));
    case Value::Type::Object:
        return VexVariant(value.text.empty() ? VEX_HANDLE()
                                             : session.findObject(toString(value.text)));
    case Value::Type::Node:
        return values.node(KRLIDOM_Reader::parse(value.xml, "request"));
    }
    return {};
}

std::string described(std::optional<long> code, std::string const& failure,
                      std::string const& appended, std::string const& response) {
    std::ostringstream out;
    if (code) {
        out << "code " << *code;
    }
    out << failure << '\n' << "appended:" << appended << '\n' << response << '\n';
    return out.str();
}

template <class Strings, class ToUtf8>
std::string failureText(unsigned id, std::string const& source, std::string const& line,
                        std::string const& function, Strings const& parameters,
                        ToUtf8 const& toUtf8) {
    std::ostringstream out;
    out << "failure " << id << ' ' << source << ':' << line << ' ' << function;
    for (auto const& parameter : parameters) {
        out << " <" << toUtf8(parameter) << '>';
    }
    return out.str();
}

bool isAnyLine(Outcome const& outcome) {
    return outcome.failure && outcome.failure->line == naive::anyLine;
}

std::string described(Outcome const& outcome) {
    std::string failure;
    if (outcome.failure) {
        auto const& f = *outcome.failure;
        failure = failureText(f.id, naive::toUtf8(f.source),
                              isAnyLine(outcome) ? "any" : std::to_string(f.line),
                              naive::toUtf8(f.function), f.parameters, naive::toUtf8);
    }
    std::string appended;
    for (auto const& output : outcome.appended) {
        appended += output.isNode ? " node" : ' ' + std::to_string(output.number);
    }
    return described(outcome.code, failure, appended, outcome.response);
}

// Most answers are written as the plain evaluator writes them; only the others are
// brought into its form, which takes as long as reading a document.
std::string writtenAs(std::string const& expected, KRLIDOM_Document const& response) {
    std::string const written = KRLIDOM_Writer::toUtf8(response);
    return written == expected ? written : naive::canonicalXml(written);
}

std::string described(vex::ActionOutcome const& outcome, Outcome const& expected) {
    using End = vex::ActionOutcome::End;
    std::string failure;
    if (outcome.end == End::Raised) {
        VexException const& e = *outcome.raised;
        failure = failureText(
            e.GetId(), e.GetLocation().source,
            isAnyLine(expected) ? "any" : std::to_string(e.GetLocation().line), e.GetFunction(),
            e.GetMessages().front().GetComponents().GetParameters(),
            [](KRLMessageParm const& parameter) { return parameter.GetText().toUtf8(); });
    } else if (outcome.end == End::Stopped) {
        failure = "stopped by the host: " + outcome.text;
    }
    std::string appended;
    for (VexVariant const& output : outcome.appended) {
        bool const isLong = output.GetType() == VexVariant::Long;
        appended += isLong ? ' ' + std::to_string(static_cast<long>(output)) : " node";
    }
    std::optional<long> code;
    if (outcome.end == End::Returned) {
        code = outcome.code;
    }
    return described(code, failure, appended,
                     writtenAs(expected.response, outcome.response.document()));
}

void count(CaseTally& tally, naive::GeneratedWorld const& world, naive::SessionStep const& step,
           Outcome const& outcome) {
    ++tally.calls;
    tally.raised += outcome.failure ? 1 : 0;
    tally.trees += outcome.response.find("<Result><") != std::string::npos ? 1 : 0;
    tally.shortcuts += world.model.find("<shortcut") != std::string::npos ? 1 : 0;
    tally.restricted += world.catalogue.empty() ? 0 : 1;
    for (Value const& value : step.in) {
        tally.references += value.xml.find("start_atRef") != std::string::npos ? 1 : 0;
    }
}

} // namespace

LoadedWorld::LoadedWorld(naive::GeneratedWorld generated) : m_generated(std::move(generated)) {
    m_model = vex::loadModelText(m_generated.model, "model.xml");
    if (!m_generated.catalogue.empty()) {
        vex::Diagnostics found;
        m_catalogue = vex::readCatalogueText(m_generated.catalogue, "catalog.xml", ".", found);
        if (m_catalogue == nullptr) {
            throw std::runtime_error("the catalogue was refused: " + vex::toString(found.front()));
        }
        m_plainCatalogue.emplace(m_generated.catalogue);
    }
}

vex::HostSession LoadedWorld::openSession() const {
    return {m_model, I18NLocale(toString(m_generated.locale)), m_catalogue,
            m_catalogue == nullptr ? nullptr : m_catalogue->findUser(toString(m_generated.user))};
}

void LoadedWorld::useUpRoomForSets() const {
    VexObject const root(m_model->GetRootObject());
    for (int number = 0;
         root.FindTextSet("set", "kind", std::to_string(number).c_str(), "item") != nullptr;
         ++number) {
    }
}

naive::NaiveSession LoadedWorld::OpenPlainSession(std::size_t mostSteps) const {
    naive::SessionOptions options;
    options.model = m_generated.plainModel.get();
    options.catalogue = m_plainCatalogue ? &*m_plainCatalogue : nullptr;
    options.user = m_generated.user;
    options.locale = m_generated.locale;
    options.workBudget = mostSteps;
    return naive::NaiveSession(options);
}

std::string compareSession(vex::PluginProxy& plugin, LoadedWorld const& world,
                           std::vector<naive::SessionStep> const& steps, CaseTally& tally,
                           std::size_t mostSteps) {
    vex::HostSession session = world.openSession();
    naive::NaiveSession plain = world.OpenPlainSession(mostSteps);
    std::string difference;
    std::size_t number = 0;
    for (naive::SessionStep const& step : steps) {
        ++number;
        if (step.notification) {
            plugin.Notify(session, *step.notification);
            plain.notify(*step.notification);
            continue;
        }
        Outcome const expected = plain.doAction(step.action, step.in);
        if (expected.gaveUp || expected.limit) {
            ++tally.givenUp;
            break;
        }
        vex::ActionValues values;
        VexParams in;
        for (Value const& value : step.in) {
            in.AddParam(toVariant(value, values, session));
        }
        VexVariant const action = toVariant(step.action, values, session);
        std::string const answer =
            described(vex::callAction(plugin, session, action, in, {}), expected);
        count(tally, world.Generated(), step, expected);
        if (answer != described(expected)) {
            difference = "step " + std::to_string(number) + "\n--- expected\n" +
                         described(expected) + "--- answered\n" + answer;
            break;
        }
    }
    plugin.Notify(session, VexNotification::SessionClosed);
    return difference;
}
