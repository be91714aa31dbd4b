#pragma once

#include "host/import/draft/ModelDraft.h"
#include "host/import/draft/SourceTree.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// A file of the source.
struct CubeFile {
    std::string name;
    SourceTree tree;
};

enum class CubePartKind { Dimension, Measure, Segment, Hierarchy, Join };

/// What policies or SQL can name, or whose SQL names others: each is known by its number in
/// the list of parts.
struct CubePart {
    static constexpr std::size_t None = DraftObject::None;

    CubePartKind kind;
    std::string name;
    std::size_t owner; // cube or view, by its number
    /// What stands for it in the draft, first of all its name.
    std::vector<std::pair<std::string, std::string>> properties{};
    std::string sql{};     // all of it, in which names count
    bool isOpaque = false; // a template makes a part of the SQL
    bool isPublic = true;
    std::size_t standsFor = None;      // of a view's member: a part of a cube
    std::vector<std::string> levels{}; // of a hierarchy: dimensions
    std::string relationship{};        // of a join
    std::size_t object = None;
    std::size_t file = 0;
    DocumentPosition position{};

    void add(std::string_view property, std::string_view value) {
        if (!value.empty()) {
            properties.emplace_back(property, value);
        }
    }
};

struct CubeLevel {
    std::size_t hierarchy; // a part
    std::size_t dimension; // a part
    std::size_t object;
};

/// A cube or a view.
struct CubeThing {
    std::string name;
    bool isView = false;
    bool isPublic = true;
    bool isComplete = true; // every cube of a view is there, and what it extends
    std::size_t object = DraftObject::None;
    /// Where it stands, then what it extends, and so on: file and value.
    std::vector<std::pair<std::size_t, SourceTree::Value>> chain{};
    std::vector<std::size_t> parts{};
    std::map<std::string, std::size_t, std::less<>> partOfName{};
    std::set<std::string> joins{}; // the cubes that are joined

    std::size_t find(std::string_view part) const {
        auto const found = partOfName.find(part);
        return found == partOfName.end() ? CubePart::None : found->second;
    }
};

struct CubeModel {
    std::vector<CubeFile> files{};
    std::string spaceName;
    std::size_t space = ModelDraft::Root; // the namespace in the draft
    std::vector<CubeThing> things{};
    std::map<std::string, std::size_t, std::less<>> thingOfName{};
    std::vector<CubePart> parts{};
    std::vector<CubeLevel> levels{};

    /// `CubePart::None` without one.
    std::size_t findThing(std::string_view name) const {
        auto const found = thingOfName.find(name);
        return found == thingOfName.end() ? CubePart::None : found->second;
    }
};

} // namespace vex
