#pragma once

#include "host/store/image/Model.h"

#include <functional>
#include <vector>

namespace vex {

/// A text of an object that gives away another one.
struct Leak {
    VEX_HANDLE object;
    I18NString property; // that holds the text
    VEX_HANDLE named;
    I18NString reference;   // the words that name it
    bool isJoinKey = false; // a relationship joins by it, and what it belongs to is seen
};

/// The objects that a text names: wherever references such as
/// [Sales].[Orders].[Total] stand in it, each the longest that leads somewhere.
struct NamedObject {
    VEX_HANDLE object;
    I18NString reference;
};
std::vector<NamedObject> objectsNamedIn(Model const& model, I18NString const& text);

/// The leaks in the texts of `visible`, in their order: expressions, ends of
/// relationships, targets of shortcuts, and any other property, in every
/// language of the model. An object that a property names again counts once. In texts for
/// people (names, screen tips, descriptions) only references count; elsewhere names relative
/// to what the object stands in do, too.
std::vector<Leak> findLeaks(Model const& model, std::vector<VEX_HANDLE> const& visible,
                            std::function<bool(VEX_HANDLE)> const& canSee);

} // namespace vex
