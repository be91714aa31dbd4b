#pragma once

#include "host/insight/AnsweredTree.h"
#include "host/insight/LeakScan.h"

#include <string>
#include <vector>

namespace vex {

/// Why the trees and the accessibility check differ about an object.
enum class DifferenceCause {
    Start,             // in a tree, where it starts
    NamespaceOfShown,  // a namespace in a tree for what is included in it
    ShortcutUntested,  // in a tree: shortcuts are not tested
    BehindShortcut,    // in a tree: views' lists are not asked behind a shortcut
    WithoutName,       // accessible, but the language has no name for it
    ContainerUnnamed,  // the same of something around it
    NothingToStandFor, // an accessible shortcut without a name or a target
    NoTreeStarts,      // accessible, in a namespace that no request can start at
    NotGoneInto,       // accessible, in something that trees do not go into
    OutsideNamespaces, // accessible, but trees show namespaces and what is in them
    Unexplained,
};

struct TreeDifference {
    VEX_HANDLE object;
    bool inTree; // and not accessible; else the other way round
    DifferenceCause cause;
};

/// A stable name for programs, and the cause in words.
char const* codeOf(DifferenceCause cause);
char const* textOf(DifferenceCause cause);
/// False when the trees, or the check, are wrong.
bool isRequired(DifferenceCause cause);
/// True for what trees show although the views leave it out.
bool isShownPastViews(DifferenceCause cause);

/// Something that is neither shown nor accessible, and that the `_path` of shown objects names
/// all the same: they stand in it. Paths are required to name all of the way.
struct HiddenContainer {
    VEX_HANDLE container;
    std::size_t objects; // that are shown in it, by every way
    VEX_HANDLE example;  // the first of them
};

/// What trees and accessibility checks say about one user.
struct TreeCheck {
    std::size_t objects = 0; // that were compared
    std::vector<TreeDifference> differences;
    std::vector<Leak> leaks;
    std::vector<HiddenContainer> hiddenContainers;
};

/// Compares the trees with the check's verdicts, one for each element of the
/// model in document order, and looks for leaks in what the trees show. What only
/// shortcuts show counts as hidden there: they make no text harmless that names it.
TreeCheck checkTrees(Model const& model, AnsweredTree const& trees,
                     std::vector<bool> const& accessible);

} // namespace vex
