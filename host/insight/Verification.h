#pragma once

#include "host/insight/ObjectText.h"
#include "host/insight/TreeCheck.h"
#include "host/service/CallEnd.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// What verifying comes to, the worst last.
enum class VerifyOutcome {
    Clean,
    NothingVerified, // nobody is restricted, or everybody is refused: nothing could leak
    ShownPastViews,  // trees show what the views leave out
    Unfinished,      // a limit or an interrupt ended the check
    NotVerified,     // a request was refused, or answered oddly, for no reason of rights
    Leaking,         // a text leaks, or trees and check differ without reason
};

enum class VerifyKind {
    Leak,
    Unexplained,  // a difference of trees and check without reason
    RefusedByOne, // of trees and check
    NotVerified,
    Unfinished,
    ShownPastViews, // in a tree although the views leave it out
    Unrestricted,
    NobodyCompared,
    JoinKey,         // a relationship names a hidden key of what is seen
    HiddenContainer, // that the paths of shown objects name, as they are required to
    Required,        // a difference that the required behaviour brings, and that shows nothing
};

/// What there is to know about a kind. Codes are stable: people accept findings by them.
struct VerifyKindRow {
    VerifyKind kind;
    char const* code;
    char const* noun; // "leak"; see `counted`
    VerifyOutcome outcome;
    char const* meaning;
};
std::vector<VerifyKindRow> const& verifyKinds();
VerifyKindRow const& rowOf(VerifyKind kind);

struct VerifyFinding {
    VerifyKind kind = VerifyKind::Required;
    ObjectLabel object = {};   // nameless for what concerns all requests
    std::string cause = {};    // of a difference: its code
    bool isInTree = false;     // and not accessible; else the other way round
    std::string property = {}; // of a leak or join key: what holds the text
    std::string reference = {};
    ObjectLabel named = {};
    std::size_t objects = 0; // of a hidden container: those that are shown in it
    std::string text = {};   // for people
    bool isAccepted = false;
};

/// Findings of a kind that are counted, not kept: see `FindingRoom`.
struct LeftOutFindings {
    std::size_t open = 0;
    std::size_t accepted = 0;
};

/// What verifying found for those who have the same roles.
struct UserVerification {
    std::string user;               // "" where nobody is restricted
    std::vector<std::string> alike; // the other users that this holds for
    std::string refusal;            // of both trees and check: no view or role
    std::size_t objects = 0;        // that were compared
    std::vector<VerifyFinding> findings;
    std::vector<ObjectLabel> notGoneIntoAgain = {}; // behind shortcuts, by the trees
    std::map<VerifyKind, LeftOutFindings> leftOut = {};

    /// How many findings of a kind are not accepted, kept or not.
    std::size_t count(VerifyKind kind) const;
    /// How many are.
    std::size_t accepted() const;
    /// False when nothing is known about the user, whose requests are refused or whose
    /// check did not come to its end.
    bool isCompared() const { return objects != 0; }
    std::size_t userCount() const { return 1 + alike.size(); }
    /// Those who have the same roles.
    std::vector<std::string> users() const;
    /// How many findings of a kind, not accepted, are not kept.
    std::size_t leftOutOf(VerifyKind kind) const;
};

class FindingRoom;

/// What verifying found, user by user. Plain data: no model needs to stay for it.
struct Verification {
    std::string file; // of the model
    std::vector<UserVerification> users;
    std::vector<VerifyFinding> findings; // about all of it
    bool isOfAllUsers = true;            // of the catalogue, not of one that was named

    std::size_t count(VerifyKind kind) const;
    std::size_t accepted() const;
    std::size_t userCount() const;
    std::size_t comparedUsers() const;
    /// How many findings are counted and not kept; of these, how many are not accepted.
    LeftOutFindings leftOut() const;
    /// The worst of what is not accepted.
    VerifyOutcome outcome() const;
    bool isFinished() const {
        return count(VerifyKind::Unfinished) == 0 && count(VerifyKind::NotVerified) == 0;
    }
    /// True when somebody who is restricted was compared, nobody's check ended early, and
    /// nothing that counts was found beside what is accepted.
    bool isClean() const;
    /// True when findings stand for that nobody is restricted, accepted or not.
    bool isUnrestricted() const;

    /// Adds that nobody is restricted, and why.
    void addUnrestricted(std::string text);
    /// Adds that nobody was compared, where that is so. Comes last.
    void addNobodyCompared();
};

/// Adds what a check of the trees on `model` found, with names in that locale, as far as there
/// is room for it.
void tellCheck(UserVerification& told, TreeCheck const& check, Model const& model,
               I18NLocale const& locale, FindingRoom& room);

/// A user whose requests are all refused, for want of a view or role.
UserVerification tellRefusal(std::string user, std::string text);
/// A user for whom one of trees and check is refused.
UserVerification tellRefusalByOne(std::string user, std::string text);
/// A user whose requests were refused for any other reason, or answered oddly.
UserVerification tellNotVerified(std::string user, std::string text);
/// A user whose check a limit ended, or an interrupt.
UserVerification tellUnfinished(std::string user, std::string text);

/// What is to be said about a user before anything can be compared, by how the requests
/// for trees and the checks ended: nothing when both are answered. Only the refusal of
/// both for want of a view or role means that there is nothing to compare.
std::optional<UserVerification> tellEnds(std::string user, CallEnd const& trees,
                                         CallEnd const& checks);

/// "1 leak", "2 leaks", "0 objects shown past the views".
std::string counted(std::size_t count, std::string_view noun);

} // namespace vex
