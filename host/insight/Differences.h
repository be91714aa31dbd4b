#pragma once

#include "host/insight/ObjectText.h"
#include "host/insight/RightsComparison.h"
#include "host/insight/TreeComparison.h"

#include <string>
#include <vector>

namespace vex {

struct ToldPropertyChange {
    std::string property;
    std::string before;
    std::string after;
};

/// What becomes of an object from the first side to the second.
struct ToldChange {
    static constexpr std::size_t NoContainer = ComparedObject::NoContainer;

    ComparedObject::Change change = ComparedObject::Change::None;
    ObjectLabel object; // as the second side knows it; as the first does, when it has gone
    Presence before = Presence::None;
    Presence after = Presence::None;
    bool isRenamed = false;
    std::vector<ToldPropertyChange> properties;
    std::size_t container = NoContainer; // its place in the list
};

/// The differences between what two sides show, in the order of a tree, with
/// what they stand in, and how many there are. Plain data: no model needs to
/// stay for it.
struct Differences {
    std::size_t appear = 0;
    std::size_t disappear = 0;
    std::size_t change = 0;
    std::size_t renamed = 0; // of those that change
    std::vector<ToldChange> objects;
    std::vector<ObjectLabel> notGoneIntoAgain = {}; // behind shortcuts, by trees of either side

    bool areNone() const { return objects.empty(); }
};

/// The differences for those who have the same roles on both sides.
struct UserDifferences {
    std::string user;
    std::vector<std::string> alike;
    /// Why requests are refused on a side; "" where they are answered.
    std::string refusedBefore;
    std::string refusedAfter;
    std::string unfinished{}; // what ended the comparison before anything is known of it
    Differences differences;

    bool areNone() const {
        return unfinished.empty() && refusedBefore == refusedAfter && differences.areNone();
    }
};

Differences tellDifferences(ComparedSide const& before, ComparedSide const& after);

} // namespace vex
