#include "host/insight/AcceptedFindings.h"

#include "I18NHash.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace vex {

namespace {

/// What a finding is compared by; "" for what it has not.
AcceptedFinding exactly(VerifyFinding const& finding, std::string const& user) {
    auto const given = [](std::string const& text) {
        return text.empty() ? std::nullopt : std::optional(text);
    };
    AcceptedFinding entry;
    entry.kind = rowOf(finding.kind).code;
    entry.user = given(user);
    entry.object = given(finding.object.key());
    entry.cause = given(finding.cause);
    entry.property = given(finding.property);
    entry.names = given(finding.reference);
    return entry;
}

constexpr std::optional<std::string> AcceptedFinding::*values[] = {
    &AcceptedFinding::kind,  &AcceptedFinding::user,     &AcceptedFinding::object,
    &AcceptedFinding::cause, &AcceptedFinding::property, &AcceptedFinding::names,
};

bool covers(AcceptedFinding const& entry, AcceptedFinding const& finding) {
    return std::all_of(std::begin(values), std::end(values), [&](auto const value) {
        return !(entry.*value) || entry.*value == finding.*value;
    });
}

/// The entries by the object that they name, so that long lists are no burden.
class AcceptedIndex {
public:
    explicit AcceptedIndex(AcceptedFindings& accepted) {
        for (AcceptedFinding& entry : accepted) {
            (entry.object ? m_byObject[*entry.object] : m_others).push_back(&entry);
        }
    }

    bool isCovered(AcceptedFinding const& finding) {
        bool found = markIn(m_others, finding);
        if (finding.object) {
            auto const entries = m_byObject.find(*finding.object);
            found = (entries != m_byObject.end() && markIn(entries->second, finding)) || found;
        }
        return found;
    }

private:
    using Entries = std::vector<AcceptedFinding*>;

    static bool markIn(Entries& entries, AcceptedFinding const& finding) {
        bool found = false;
        for (AcceptedFinding* const entry : entries) {
            if (covers(*entry, finding)) {
                entry->isUsed = true;
                found = true;
            }
        }
        return found;
    }

    std::unordered_map<std::string, Entries, I18NTextHasher, std::equal_to<>> m_byObject;
    Entries m_others;
};

std::vector<std::string> usersOf(UserVerification const& verified) {
    std::vector<std::string> users{verified.user};
    users.insert(users.end(), verified.alike.begin(), verified.alike.end());
    return users;
}

/// Nothing that was found out can be accepted where nothing was.
bool isAcceptable(VerifyKind kind) {
    return kind != VerifyKind::Unfinished && kind != VerifyKind::NotVerified &&
           kind != VerifyKind::NobodyCompared;
}

void acceptFor(VerifyFinding& finding, std::vector<std::string> const& users,
               AcceptedIndex& accepted) {
    if (!isAcceptable(finding.kind)) {
        return;
    }
    std::size_t covered = 0;
    for (std::string const& user : users) {
        covered += accepted.isCovered(exactly(finding, user)) ? 1 : 0;
    }
    finding.isAccepted = covered == users.size();
}

bool counts(VerifyFinding const& finding) {
    return !finding.isAccepted && isAcceptable(finding.kind) &&
           rowOf(finding.kind).outcome != VerifyOutcome::Clean;
}

} // namespace

void accept(Verification& verification, AcceptedFindings& accepted) {
    AcceptedIndex index(accepted);
    for (VerifyFinding& finding : verification.findings) {
        acceptFor(finding, {""}, index);
    }
    for (UserVerification& user : verification.users) {
        std::vector<std::string> const users = usersOf(user);
        for (VerifyFinding& finding : user.findings) {
            acceptFor(finding, users, index);
        }
    }
}

bool isNoLongerFound(AcceptedFinding const& entry, Verification const& verification) {
    if (entry.isUsed) {
        return false;
    }
    bool areAllCompared = verification.isOfAllUsers;
    for (UserVerification const& user : verification.users) {
        std::vector<std::string> const users = usersOf(user);
        if (entry.user && std::find(users.begin(), users.end(), *entry.user) != users.end()) {
            return user.isCompared();
        }
        areAllCompared = areAllCompared && (user.isCompared() || !user.refusal.empty());
    }
    // A user whom the catalogue lacks is compared no more.
    return entry.user ? verification.isOfAllUsers : areAllCompared;
}

AcceptedFindings acceptAll(Verification const& verification, AcceptedFindings const& accepted) {
    AcceptedFindings all;
    std::copy_if(
        accepted.begin(), accepted.end(), std::back_inserter(all),
        [&](AcceptedFinding const& entry) { return !isNoLongerFound(entry, verification); });
    for (VerifyFinding const& finding : verification.findings) {
        if (counts(finding)) {
            all.push_back(exactly(finding, ""));
        }
    }
    for (UserVerification const& user : verification.users) {
        for (std::string const& name : usersOf(user)) {
            for (VerifyFinding const& finding : user.findings) {
                if (counts(finding)) {
                    all.push_back(exactly(finding, name));
                }
            }
        }
    }
    return all;
}

} // namespace vex
