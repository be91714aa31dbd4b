#pragma once

#include "VexAccessExplanation.h"
#include "host/insight/AnsweredTree.h"
#include "host/insight/ObjectText.h"

#include <optional>
#include <string>
#include <vector>

namespace vex {

/// What one view says about an object.
struct ToldMention {
    std::string view; // its id
    bool included = false;
    bool excluded = false;
    bool hidden = false;
    std::string text; // the same as a sentence
};

/// Why somebody sees an object, or not.
struct ToldObject {
    ObjectLabel label;
    bool accessible = false;
    VexAccessReason rule = VexAccessReason::Unrestricted;
    std::string verdict;           // the rule as a sentence
    std::vector<std::string> tree; // what the trees do with the object, in sentences
    std::vector<ToldMention> mentions;
    std::vector<std::string> rules = {}; // of a policy, with their lines, in sentences
};

/// What a view is to somebody.
struct ToldView {
    std::string id;
    std::string name;
    std::string title; // both, for people
    bool inForce = false;
    VexViewRole role = VexViewRole::NotRoleBased;
    std::string firstMemberRole;
    std::string part; // what it is, as a sentence
};

/// All that there is to tell about why somebody sees objects. Plain data: no
/// model needs to stay for it.
struct Explanation {
    std::vector<ToldObject> objects;
    std::vector<ToldView> views;
    std::vector<ObjectLabel> notGoneIntoAgain = {}; // behind shortcuts, by the trees
};

/// Tells what the access check explains about `objects`, one for each in
/// `access`, and what the trees do with them; when no tree was answered,
/// `refusal` says why.
Explanation tellAccess(Model const& model, I18NLocale const& locale,
                       Vex_Handle_Collection const& objects, VexAccessExplanation const& access,
                       AnsweredTree const& trees, std::optional<std::string> const& refusal);

} // namespace vex
