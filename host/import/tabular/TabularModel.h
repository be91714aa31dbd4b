#pragma once

#include "host/import/draft/ModelDraft.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vex {

/// What a table consists of, each known by its number in the list of parts.
enum class TabularKind { Table, Column, Measure, Hierarchy, Level, Function };

/// A thing that names lead to, or whose expression names others. What stands for it in the
/// draft is `None` for things that are not mapped: they may be hidden all the same.
struct TabularPart {
    static constexpr std::size_t None = DraftObject::None;

    TabularKind kind;
    std::string name;
    std::size_t table = None; // the part that it belongs to
    std::size_t owner = None; // of a level: its hierarchy
    std::string expression{}; // in which names count; may be empty
    std::string column{};     // of a level: the column of the same table
    std::size_t object = None;
    DocumentPosition position{};
};

/// A relationship that was mapped, with the columns that it joins.
struct TabularRelationship {
    std::size_t object;
    std::size_t from;
    std::size_t to;
};

/// The parts of a tabular model, in the order of the source.
struct TabularModel {
    std::size_t space = ModelDraft::Root; // the namespace in the draft
    std::string spaceName;
    std::vector<TabularPart> parts;
    std::vector<TabularRelationship> relationships;
};

} // namespace vex
