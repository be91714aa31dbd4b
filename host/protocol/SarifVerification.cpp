#include "host/protocol/JsonVerification.h"
#include "host/protocol/SarifLog.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

char const* levelOf(VerifyKindRow const& row) {
    switch (row.outcome) {
    case VerifyOutcome::Clean:
        return "note";
    case VerifyOutcome::ShownPastViews:
    case VerifyOutcome::NothingVerified:
        return "warning";
    case VerifyOutcome::Unfinished:
    case VerifyOutcome::NotVerified:
    case VerifyOutcome::Leaking:
        break;
    }
    return "error";
}

Json verificationRules() {
    Json list = Json::array();
    for (VerifyKindRow const& row : verifyKinds()) {
        list.push_back({{"id", row.code},
                        {"shortDescription", {{"text", row.meaning}}},
                        {"defaultConfiguration", {{"level", levelOf(row)}}}});
    }
    return list;
}

Json resultOf(VerifyFinding const& finding, std::string const& file, UserVerification const* user) {
    VerifyKindRow const& row = rowOf(finding.kind);
    Json place{{"physicalLocation",
                sarifPlace(file, finding.object.position.line, finding.object.position.column)}};
    if (!finding.object.key().empty()) {
        place["logicalLocations"] = Json::array(
            {{{"name", finding.object.name}, {"fullyQualifiedName", finding.object.key()}}});
    }
    Json result{{"ruleId", row.code},
                {"ruleIndex", &row - verifyKinds().data()},
                {"level", levelOf(row)},
                {"message",
                 {{"text", (user == nullptr || user->user.empty() ? "" : user->user + ": ") +
                               finding.text}}},
                {"locations", Json::array({place})}};
    if (user != nullptr && !user->user.empty()) {
        result["properties"]["users"] = Json::array({user->user});
        for (std::string const& other : user->alike) {
            result["properties"]["users"].push_back(other);
        }
    }
    if (finding.isAccepted) {
        result["suppressions"] = Json::array({{{"kind", "external"}}});
    }
    return result;
}

} // namespace

void writeSarif(std::ostream& out, Verification const& verification, std::string_view version) {
    SarifLog log(out, verificationRules(), version);
    for (VerifyFinding const& finding : verification.findings) {
        log.add(resultOf(finding, verification.file, nullptr));
    }
    for (UserVerification const& user : verification.users) {
        for (VerifyFinding const& finding : user.findings) {
            log.add(resultOf(finding, verification.file, &user));
        }
        for (auto const& [kind, left] : user.leftOut) {
            if (left.open != 0) {
                VerifyFinding rest;
                rest.kind = kind;
                rest.text = std::to_string(left.open) + " more past the limit; --max-findings "
                                                        "raises it";
                log.add(resultOf(rest, verification.file, &user));
            }
        }
    }
    log.finish();
}

} // namespace vex
