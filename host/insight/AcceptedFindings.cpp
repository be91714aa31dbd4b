#include "host/insight/AcceptedFindings.h"

#include "host/store/image/Budget.h"

#include <algorithm>
#include <iterator>

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

/// What entries have that give these values, and no others.
std::string keyOf(AcceptedFinding const& finding, unsigned given) {
    std::string key;
    unsigned bit = 1;
    for (auto const value : values) {
        if ((given & bit) != 0) {
            std::string const text = (finding.*value).value_or("");
            key += ((finding.*value) ? std::to_string(text.size()) : "-") + ':' + text;
        }
        bit <<= 1U;
    }
    return key;
}

unsigned givenBy(AcceptedFinding const& entry) {
    unsigned given = 0;
    unsigned bit = 1;
    for (auto const value : values) {
        given |= entry.*value ? bit : 0U;
        bit <<= 1U;
    }
    return given;
}

/// Nothing that was found out can be accepted where nothing was.
bool isAcceptable(VerifyKind kind) {
    return kind != VerifyKind::Unfinished && kind != VerifyKind::NotVerified &&
           kind != VerifyKind::NobodyCompared;
}

bool counts(VerifyFinding const& finding) {
    return !finding.isAccepted && isAcceptable(finding.kind) &&
           rowOf(finding.kind).outcome != VerifyOutcome::Clean;
}

} // namespace

AcceptedIndex::AcceptedIndex(AcceptedFindings& accepted) {
    for (AcceptedFinding& entry : accepted) {
        unsigned const given = givenBy(entry);
        auto known = std::find_if(m_entries.begin(), m_entries.end(),
                                  [&](auto const& each) { return each.first == given; });
        if (known == m_entries.end()) {
            known = m_entries.insert(known, {given, ByValues()});
        }
        known->second[keyOf(entry, given)].push_back(&entry);
        m_givesUsers = m_givesUsers || entry.user.has_value();
    }
}

bool AcceptedIndex::accepts(VerifyFinding const& finding, std::string const& user,
                            std::vector<std::string> const& alike) {
    if (!isAcceptable(finding.kind) || m_entries.empty()) {
        return false;
    }
    bool isAccepted = mark(exactly(finding, user));
    if (m_givesUsers) {
        for (std::string const& other : alike) {
            isAccepted = mark(exactly(finding, other)) && isAccepted;
        }
    }
    return isAccepted;
}

bool AcceptedIndex::mark(AcceptedFinding const& finding) {
    bool found = false;
    for (auto& [given, byValues] : m_entries) {
        Budget::charge();
        auto const entries = byValues.find(keyOf(finding, given));
        if (entries == byValues.end()) {
            continue;
        }
        found = true;
        if (!entries->second.front()->isUsed) { // all of them, or none
            for (AcceptedFinding* const entry : entries->second) {
                entry->isUsed = true;
            }
        }
    }
    return found;
}

void accept(Verification& verification, AcceptedFindings& accepted) {
    AcceptedIndex index(accepted);
    for (VerifyFinding& finding : verification.findings) {
        finding.isAccepted = index.accepts(finding, "");
    }
    for (UserVerification& user : verification.users) {
        for (VerifyFinding& finding : user.findings) {
            finding.isAccepted = index.accepts(finding, user.user, user.alike);
        }
    }
}

ComparedUsers::ComparedUsers(Verification const& verification)
    : m_areOfAllUsers(verification.isOfAllUsers), m_areAllCompared(verification.isOfAllUsers) {
    for (UserVerification const& user : verification.users) {
        m_areCompared.try_emplace(user.user, user.isCompared());
        for (std::string const& other : user.alike) {
            m_areCompared.try_emplace(other, user.isCompared());
        }
        m_areAllCompared = m_areAllCompared && (user.isCompared() || !user.refusal.empty());
    }
}

bool ComparedUsers::isNoLongerFound(AcceptedFinding const& entry) const {
    if (entry.isUsed) {
        return false;
    }
    if (!entry.user) {
        return m_areAllCompared;
    }
    auto const user = m_areCompared.find(*entry.user);
    // A user whom the catalogue lacks is compared no more.
    return user == m_areCompared.end() ? m_areOfAllUsers : user->second;
}

AcceptedFindings acceptAll(Verification const& verification, AcceptedFindings const& accepted) {
    AcceptedFindings all;
    ComparedUsers const users(verification);
    std::copy_if(accepted.begin(), accepted.end(), std::back_inserter(all),
                 [&](AcceptedFinding const& entry) { return !users.isNoLongerFound(entry); });
    for (VerifyFinding const& finding : verification.findings) {
        if (counts(finding)) {
            all.push_back(exactly(finding, ""));
        }
    }
    for (UserVerification const& user : verification.users) {
        for (std::string const& name : user.users()) {
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
