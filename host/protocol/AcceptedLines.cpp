#include "host/protocol/AcceptedLines.h"

#include "host/protocol/JsonText.h"
#include "host/store/image/HostException.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

struct Member {
    char const* name;
    std::optional<std::string> AcceptedFinding::*value;
};
constexpr Member members[] = {
    {"kind", &AcceptedFinding::kind},         {"user", &AcceptedFinding::user},
    {"object", &AcceptedFinding::object},     {"cause", &AcceptedFinding::cause},
    {"property", &AcceptedFinding::property}, {"names", &AcceptedFinding::names},
};
constexpr char const* reason = "because";

std::string knownMembers() {
    std::string list;
    for (Member const& member : members) {
        list += std::string(member.name) + ", ";
    }
    return list + reason;
}

std::string knownKinds() {
    std::string list;
    for (VerifyKindRow const& row : verifyKinds()) {
        list += (list.empty() ? "" : ", ") + std::string(row.code);
    }
    return list;
}

/// Gives what is wrong with the line, "" for nothing.
std::string read(Json const& line, AcceptedFinding& entry) {
    if (!line.is_object()) {
        return "an entry is a JSON object such as {\"kind\": \"leak\", \"object\": \"an id\"}";
    }
    bool isGiven = false;
    for (auto const& [name, value] : line.items()) {
        if (!value.is_string()) {
            return '"' + name + "\" needs a text";
        }
        if (name == reason) {
            entry.because = value.get<std::string>();
            continue;
        }
        auto const* const member =
            std::find_if(std::begin(members), std::end(members),
                         [&, &key = name](Member const& each) { return key == each.name; });
        if (member == std::end(members)) {
            return "there is no \"" + name + "\"; write " + knownMembers();
        }
        entry.*(member->value) = value.get<std::string>();
        isGiven = true;
    }
    bool const isKnownKind = !entry.kind || std::any_of(verifyKinds().begin(), verifyKinds().end(),
                                                        [&](VerifyKindRow const& row) {
                                                            return *entry.kind == row.code;
                                                        });
    if (!isKnownKind) {
        return "there is no kind \"" + *entry.kind + "\"; the kinds are " + knownKinds();
    }
    return isGiven ? ""
                   : "an entry that names nothing would accept everything; give one of " +
                         knownMembers();
}

} // namespace

AcceptedFindings readAccepted(std::string_view text, std::string const& name) {
    AcceptedFindings accepted;
    std::size_t number = 0;
    while (!text.empty()) {
        ++number;
        std::size_t const end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        line = line.substr(std::min(line.find_first_not_of(" \t\r"), line.size()));
        if (line.empty() || line.front() == '#') {
            continue;
        }
        AcceptedFinding entry;
        Json const parsed = Json::parse(line, nullptr, false);
        std::string const problem = parsed.is_discarded() ? "this is no JSON" : read(parsed, entry);
        if (!problem.empty()) {
            throw HostException(name + ':' + std::to_string(number) + ": " + problem);
        }
        accepted.push_back(std::move(entry));
    }
    return accepted;
}

std::string toJson(AcceptedFinding const& entry) {
    Json line = Json::object();
    for (Member const& member : members) {
        if (entry.*(member.value)) {
            line[member.name] = *(entry.*(member.value));
        }
    }
    if (!entry.because.empty()) {
        line[reason] = entry.because;
    }
    return toText(line, JsonForm::OneLine);
}

std::string writeAccepted(AcceptedFindings const& accepted) {
    std::string text;
    for (AcceptedFinding const& entry : accepted) {
        text += toJson(entry) + '\n';
    }
    return text;
}

} // namespace vex
