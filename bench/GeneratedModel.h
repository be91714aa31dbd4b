#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// Which role-based views a generated model has besides "view.all" and
/// "view.half".
enum class RoleViews { None, WithoutDefault, WithDefault };

struct ModelPlan {
    std::size_t objects = 1'000; // views and what is in them are not counted
    std::uint64_t seed = 1;
    double shortcutsPerSubject = 1.0 / 40;
    RoleViews roleViews = RoleViews::None;
    bool setForEachId = false; // in a view; else a set for all of one kind
};

/// Where to find one query subject, its names from the outside in.
struct SubjectPlace {
    std::vector<std::string> path; // root namespace, area, namespace, folder if any, subject
    std::string item;              // a query item directly in it
    std::size_t number = 0;        // among all query subjects of the model, from 0

    std::string pathText() const;
    /// The reference of the item: namespace, query subject, query item.
    std::string referenceText() const;
};

struct GeneratedModel {
    std::string document;
    std::size_t objects = 0;
    std::size_t subjects = 0;
    std::size_t shortcuts = 0;
    SubjectPlace inFolder;    // in the namespace in the middle of the model
    SubjectPlace direct;      // directly in that namespace
    SubjectPlace last;        // in a folder of the last namespace that has one
    std::string lastShortcut; // the start path of the last shortcut
};

/// Makes a model document: a root namespace, areas (folders) of ten namespaces,
/// namespaces of 50 query subjects, 40 of them in folders of ten, 20 query items
/// in each, a third of those in a query item folder; filters, calculations and
/// shortcuts. Every name is there in English and German. The same plan gives the
/// same document everywhere.
GeneratedModel generateModel(ModelPlan const& plan);

/// The path that a generated catalogue gives the model.
inline constexpr char ModelPath[] = "/content/generated";

/// A catalogue for the model file, with the users "all" and "half", who see what
/// the view of that name includes, and "clerk", who sees everything that the
/// role-based views leave.
std::string generateCatalogue(std::string const& modelFile);

} // namespace bench
