#include "host/insight/FindingRoom.h"

#include "host/store/image/Budget.h"

namespace vex {

namespace {

std::size_t bytesOf(VerifyFinding const& finding) {
    std::size_t const labels = finding.object.byteCount() + finding.named.byteCount() -
                               2 * sizeof(ObjectLabel); // which are in the finding
    return labels + finding.cause.size() + finding.property.size() + finding.reference.size() +
           finding.text.size();
}

/// A long finding takes the room of several.
std::size_t roomOf(VerifyFinding const& finding) {
    constexpr std::size_t bytesOfOne = 1'024;
    return 1 + bytesOf(finding) / bytesOfOne;
}

} // namespace

void FindingRoom::add(UserVerification& told, VerifyFinding finding) {
    finding.isAccepted = m_accepted.accepts(finding, told.user, told.alike);
    std::size_t& taken = m_taken[{finding.kind, finding.isAccepted}];
    std::size_t const needed = roomOf(finding);
    if (needed > m_mostOfAKind - taken) {
        LeftOutFindings& left = told.leftOut[finding.kind];
        ++(finding.isAccepted ? left.accepted : left.open);
        return;
    }
    taken += needed;
    Budget::chargeBytes(sizeof finding + bytesOf(finding));
    told.findings.push_back(std::move(finding));
}

void FindingRoom::giveBack(UserVerification const& told) {
    for (VerifyFinding const& finding : told.findings) {
        m_taken[{finding.kind, finding.isAccepted}] -= roomOf(finding);
    }
}

} // namespace vex
