#include "host/insight/Verification.h"

#include "VexMessageTexts.h"
#include "host/insight/FindingRoom.h"

#include <algorithm>

namespace vex {

namespace {

template <class Findings> std::size_t countIn(Findings const& findings, VerifyKind kind) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](VerifyFinding const& each) {
            return each.kind == kind && !each.isAccepted;
        }));
}

template <class Findings> std::size_t acceptedIn(Findings const& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](VerifyFinding const& each) { return each.isAccepted; }));
}

VerifyFinding tellLeak(Leak const& leak, Model const& model, I18NLocale const& locale) {
    VerifyFinding told;
    told.kind = leak.isJoinKey ? VerifyKind::JoinKey : VerifyKind::Leak;
    told.object = labelOf(model, leak.object, locale);
    told.property = leak.property.toUtf8();
    told.reference = leak.reference.toUtf8();
    told.named = labelOf(model, leak.named, locale);
    told.text = "the " + describeObject(told.object) + " names " + told.reference + " in its " +
                told.property + ", and the " + describeObject(told.named) + " is hidden";
    return told;
}

VerifyFinding tellDifference(TreeDifference const& difference, Model const& model,
                             I18NLocale const& locale) {
    VerifyFinding told;
    told.kind = !isRequired(difference.cause)        ? VerifyKind::Unexplained
                : isShownPastViews(difference.cause) ? VerifyKind::ShownPastViews
                                                     : VerifyKind::Required;
    told.object = labelOf(model, difference.object, locale);
    told.cause = codeOf(difference.cause);
    told.isInTree = difference.inTree;
    told.text =
        (difference.inTree ? "in the tree, not accessible: " : "accessible, not in the tree: ") +
        describeObject(told.object) + ": " + textOf(difference.cause);
    return told;
}

VerifyFinding tellContainer(HiddenContainer const& hidden, Model const& model,
                            I18NLocale const& locale) {
    VerifyFinding told;
    told.kind = VerifyKind::HiddenContainer;
    told.object = labelOf(model, hidden.container, locale);
    told.objects = hidden.objects;
    told.text = "the " + describeObject(told.object) + " is hidden, and the _path of " +
                counted(hidden.objects, "object") + " shown in it names it, such as the " +
                describeObject(labelOf(model, hidden.example, locale));
    return told;
}

UserVerification tellOne(std::string user, VerifyKind kind, std::string text) {
    UserVerification told;
    told.user = std::move(user);
    VerifyFinding& finding = told.findings.emplace_back();
    finding.kind = kind;
    finding.text = std::move(text);
    return told;
}

} // namespace

std::vector<VerifyKindRow> const& verifyKinds() {
    static std::vector<VerifyKindRow> const rows{
        {VerifyKind::Leak, "leak", "leak", VerifyOutcome::Leaking,
         "A text of a visible object names an object that the user cannot see."},
        {VerifyKind::Unexplained, "unexplained", "unexplained difference", VerifyOutcome::Leaking,
         "Trees and accessibility differ without a reason that is known."},
        {VerifyKind::RefusedByOne, "refused-by-one", "refusal by one of tree and check",
         VerifyOutcome::Leaking, "One of trees and accessibility is refused, the other is not."},
        {VerifyKind::NotVerified, "not-verified", "check without an answer",
         VerifyOutcome::NotVerified,
         "Requests are refused for no reason of rights, or the plug-in answered oddly."},
        {VerifyKind::Unfinished, "unfinished", "check that did not finish",
         VerifyOutcome::Unfinished, "A limit or an interrupt ended the check."},
        {VerifyKind::ShownPastViews, "shown-past-views", "shown past the views",
         VerifyOutcome::ShownPastViews,
         "A tree shows an object although the views leave it out: behind a shortcut, or as a "
         "start."},
        {VerifyKind::Unrestricted, "unrestricted", "unrestricted model",
         VerifyOutcome::NothingVerified, "Nobody is restricted, so nothing was verified."},
        {VerifyKind::NobodyCompared, "nobody-compared", "check of nobody",
         VerifyOutcome::NothingVerified, "Every user is refused, so nothing was verified."},
        {VerifyKind::JoinKey, "join-key", "join key", VerifyOutcome::Clean,
         "A visible relationship names a hidden key of something visible."},
        {VerifyKind::HiddenContainer, "hidden-container", "hidden container", VerifyOutcome::Clean,
         "The path of a shown object names a hidden container, as the required behaviour has it."},
        {VerifyKind::Required, "required", "required", VerifyOutcome::Clean,
         "An accessible object is in no tree, as the required behaviour has it."},
    };
    return rows;
}

VerifyKindRow const& rowOf(VerifyKind kind) {
    return *std::find_if(verifyKinds().begin(), verifyKinds().end(),
                         [&](VerifyKindRow const& row) { return row.kind == kind; });
}

std::size_t UserVerification::count(VerifyKind kind) const {
    return countIn(findings, kind) + leftOutOf(kind);
}

std::size_t UserVerification::accepted() const {
    std::size_t total = acceptedIn(findings);
    for (auto const& [kind, left] : leftOut) {
        total += left.accepted;
    }
    return total;
}

std::vector<std::string> UserVerification::users() const {
    std::vector<std::string> all{user};
    all.insert(all.end(), alike.begin(), alike.end());
    return all;
}

std::size_t UserVerification::leftOutOf(VerifyKind kind) const {
    auto const found = leftOut.find(kind);
    return found == leftOut.end() ? 0 : found->second.open;
}

std::size_t Verification::count(VerifyKind kind) const {
    std::size_t total = countIn(findings, kind);
    for (UserVerification const& user : users) {
        total += user.count(kind);
    }
    return total;
}

std::size_t Verification::accepted() const {
    std::size_t total = acceptedIn(findings);
    for (UserVerification const& user : users) {
        total += user.accepted();
    }
    return total;
}

std::size_t Verification::userCount() const {
    std::size_t total = 0;
    for (UserVerification const& user : users) {
        total += user.userCount();
    }
    return total;
}

std::size_t Verification::comparedUsers() const {
    std::size_t total = 0;
    for (UserVerification const& user : users) {
        total += user.isCompared() ? user.userCount() : 0;
    }
    return total;
}

LeftOutFindings Verification::leftOut() const {
    LeftOutFindings total;
    for (UserVerification const& user : users) {
        for (auto const& [kind, left] : user.leftOut) {
            total.open += left.open;
            total.accepted += left.accepted;
        }
    }
    return total;
}

VerifyOutcome Verification::outcome() const {
    VerifyOutcome worst = VerifyOutcome::Clean;
    for (VerifyKindRow const& row : verifyKinds()) {
        worst = count(row.kind) != 0 ? std::max(worst, row.outcome) : worst;
    }
    return worst;
}

bool Verification::isUnrestricted() const {
    return std::any_of(findings.begin(), findings.end(), [](VerifyFinding const& each) {
        return each.kind == VerifyKind::Unrestricted;
    });
}

bool Verification::isClean() const {
    return outcome() == VerifyOutcome::Clean && comparedUsers() != 0 && !isUnrestricted();
}

void Verification::addUnrestricted(std::string text) {
    findings.push_back({.kind = VerifyKind::Unrestricted, .text = std::move(text)});
}

void Verification::addNobodyCompared() {
    bool const areAllRefused =
        std::all_of(users.begin(), users.end(),
                    [](UserVerification const& user) { return !user.refusal.empty(); });
    if (areAllRefused) {
        findings.push_back({.kind = VerifyKind::NobodyCompared,
                            .text = "every request is refused, so there was nothing to verify"});
    }
}

void tellCheck(UserVerification& told, TreeCheck const& check, Model const& model,
               I18NLocale const& locale, FindingRoom& room) {
    told.objects = check.objects;
    for (Leak const& leak : check.leaks) {
        room.add(told, tellLeak(leak, model, locale));
    }
    for (TreeDifference const& difference : check.differences) {
        room.add(told, tellDifference(difference, model, locale));
    }
    for (HiddenContainer const& container : check.hiddenContainers) {
        room.add(told, tellContainer(container, model, locale));
    }
}

UserVerification tellRefusal(std::string user, std::string text) {
    UserVerification told;
    told.user = std::move(user);
    told.refusal = std::move(text);
    return told;
}

UserVerification tellRefusalByOne(std::string user, std::string text) {
    return tellOne(std::move(user), VerifyKind::RefusedByOne,
                   "tree and check differ, one is refused: " + text);
}

UserVerification tellNotVerified(std::string user, std::string text) {
    return tellOne(std::move(user), VerifyKind::NotVerified,
                   "not verified, so nothing is known: " + text);
}

UserVerification tellUnfinished(std::string user, std::string text) {
    return tellOne(std::move(user), VerifyKind::Unfinished,
                   "not finished, so nothing is known: " + text);
}

std::optional<UserVerification> tellEnds(std::string user, CallEnd const& trees,
                                         CallEnd const& checks) {
    using Kind = CallEnd::Kind;
    auto const isForWantOfRights = [](CallEnd const& end) {
        return end.kind == Kind::Raised && end.failure &&
               end.failure->id == VexFailureId::NoViewOrRole;
    };
    for (CallEnd const* const end : {&trees, &checks}) {
        if (end->kind == Kind::Stopped) {
            return tellUnfinished(std::move(user), end->text);
        }
    }
    if (isForWantOfRights(trees) && isForWantOfRights(checks)) {
        return tellRefusal(std::move(user), checks.text);
    }
    for (CallEnd const* const end : {&trees, &checks}) {
        CallEnd const& other = end == &trees ? checks : trees;
        if (end->kind == Kind::Raised && other.isAnswered()) {
            return tellRefusalByOne(std::move(user), end->text);
        }
    }
    for (CallEnd const* const end : {&trees, &checks}) {
        if (!end->isAnswered() && !isForWantOfRights(*end)) {
            return tellNotVerified(std::move(user), end->text);
        }
    }
    return std::nullopt;
}

std::string counted(std::size_t count, std::string_view noun) {
    bool const isCountable =
        noun != rowOf(VerifyKind::ShownPastViews).noun && noun != rowOf(VerifyKind::Required).noun;
    return std::to_string(count) + ' ' + std::string(noun) +
           (count == 1 || !isCountable ? "" : "s");
}

} // namespace vex
