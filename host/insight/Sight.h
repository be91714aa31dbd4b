#pragma once

#include "host/insight/AnsweredTree.h"
#include "host/insight/Explanation.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace vex {

/// Whether somebody sees an object.
enum class Sight : std::uint8_t {
    Seen,      // it is accessible
    PastViews, // it is not, and a tree shows it all the same: see `isShownPastViews`
    NotSeen,
    Refused, // every request is
    Unknown, // the check did not come to its end
};

/// A stable name for programs: "yes", "past-views", "no", "refused", "unknown".
char const* codeOf(Sight sight);

/// Who sees each element of a model, in document order. `accessible` has a verdict for each.
std::vector<Sight> sightOfAll(Model const& model, AnsweredTree const& trees,
                              std::vector<bool> const& accessible);

/// Users or roles that see objects.
struct ToldViewers {
    std::vector<std::string> names;
    bool areRoles = false;
    Sight sight = Sight::NotSeen;
    std::string why;               // the rule that decided, or why requests are refused
    std::vector<std::string> tree; // what the trees do with the object, where that matters

    /// True when the same is said of both.
    bool areLike(ToldViewers const& other) const;
};

/// Who sees an object, and why.
struct ObjectSight {
    ObjectLabel object;
    std::vector<ToldViewers> viewers; // first users, then roles

    /// Puts viewers to those of whom the same is said.
    void add(ToldViewers viewers);

    /// The places in `viewers` by the hash of what is said: there may be as many things to
    /// say as there are viewers.
    std::unordered_multimap<std::uint64_t, std::size_t> places{};
};

/// Objects by those who may look at them.
struct SightMatrix {
    struct Column {
        std::string name;
        std::vector<std::string> alike; // that the column holds for too
        std::string refusal;            // why requests are refused, or ended; "" when answered
    };
    struct Row {
        ObjectLabel object;
        std::vector<Sight> cells; // one for each column
    };
    std::vector<Column> columns;
    std::vector<Row> rows;
};

} // namespace vex
