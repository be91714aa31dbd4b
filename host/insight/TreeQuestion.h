#pragma once

#include "host/service/MetadataRequest.h"
#include "host/store/image/Model.h"

#include <vector>

namespace vex {

/// The collections of namespaces that are asked for besides "all": that is all
/// that the start namespace has, and a start path may lead through others.
inline constexpr char const* collectionsOnThePath[] = {
    "namespace/folder",    "namespace/querySubject", "namespace/queryItemFolder",
    "namespace/queryItem", "namespace/filter",       "namespace/calculation",
};

/// A request for a tree of names, whose answer can be matched with the model's
/// objects one by one (see `AnsweredTree`).
struct TreeQuestion {
    I18NString start;         // path; "": the first namespace
    VEX_HANDLE startShortcut; // that the path leads to, where that is known
    int depth = 0;            // 0: everything
    I18NString view;          // "": all that the user has
    /// The collections to go into, in this order; "shortcut" and "namespace"
    /// are always gone into last. None stands for every one, in the order of
    /// each object's own, without what stands behind shortcuts but those two
    /// and, with a start, `collectionsOnThePath`.
    std::vector<I18NString> collections;
    /// A property that no object of the model has. Only what stands for a
    /// shortcut answers for it, since it repeats the property before it.
    I18NString marker;

    bool goesIntoEveryCollection() const { return collections.empty(); }
    MetadataRequest makeRequest() const;
};

/// Every class of the model but the two that are always gone into, in the order
/// of first occurrence: a tree of these shows what stands behind shortcuts too.
std::vector<I18NString> collectionsOf(Model const& model);

/// A namespace that stands in no other one, and the start path that leads to it;
/// "" when none does, because the locale finds no name for it or finds another
/// namespace by that name first.
struct TreeStart {
    VEX_HANDLE space;
    I18NString path;
};

/// In document order. The trees from these hold all that any tree holds.
std::vector<TreeStart> treeStartsOf(Model const& model, I18NLocale const& locale);

/// The start path that names an element by all that it stands in; "" when the locale
/// finds no name for one of them. It leads elsewhere when several have these names.
I18NString startPathOf(VEX_HANDLE element, I18NLocale const& locale);

/// A name for `TreeQuestion::marker`.
I18NString unusedPropertyOf(Model const& model);

} // namespace vex
