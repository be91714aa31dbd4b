#pragma once

#include "host/insight/ObjectText.h"
#include "host/insight/TreeCheck.h"

#include <string>
#include <vector>

namespace vex {

struct ToldLeak {
    ObjectLabel object;
    std::string property; // of the object, that holds the text
    std::string reference;
    ObjectLabel named;
};

struct ToldDifference {
    ObjectLabel object;
    bool inTree = false; // and not accessible; else the other way round
    DifferenceCause cause = DifferenceCause::Unexplained;
};

/// What verifying found for one user.
struct UserVerification {
    std::string user;             // "" where nobody is restricted
    std::string refusal;          // why requests are refused; "" when there is an answer
    bool isRefusedByBoth = false; // else by one of trees and check: they differ
    std::string unfinished;       // why the check did not come to its end; "" when it did
    std::size_t objects = 0;      // that were compared
    std::vector<ToldLeak> leaks;
    std::vector<ToldDifference> differences;
    std::vector<ObjectLabel> notGoneIntoAgain = {}; // behind shortcuts, by the trees

    std::size_t requiredDifferences() const;
    std::size_t unexplainedDifferences() const;
    /// False when nothing is said about the user, whose requests are refused or whose
    /// check did not come to its end.
    bool isCompared() const { return refusal.empty() && unfinished.empty(); }
    /// False when something leaks or differs without reason, or that is not known.
    bool isClean() const;
};

/// What verifying found, user by user. Plain data: no model needs to stay for it.
struct Verification {
    std::vector<UserVerification> users;

    bool isClean() const;
    bool isFinished() const;
};

/// What a check of the trees on `model` found, with names in that locale.
UserVerification tellCheck(std::string user, TreeCheck const& check, Model const& model,
                           I18NLocale const& locale);

/// A user whose check a limit ended, or an interrupt.
UserVerification tellUnfinished(std::string user, std::string text);

/// A user whose requests are refused, by both or by one of trees and check.
UserVerification tellRefusal(std::string user, bool both, std::string text);

} // namespace vex
