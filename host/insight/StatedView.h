#pragma once

#include "I18NLocale.h"
#include "host/store/image/Model.h"

#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vex {

/// What the access check reads of a security view.
struct StatedView {
    static constexpr std::size_t SetCount = 3; // included, excluded, hidden

    I18NString id;
    std::vector<std::pair<I18NLocale, I18NString>> names; // the nameless locale: for all
    bool isRoleBased = false;
    std::vector<I18NString> members;                   // their roles
    std::array<std::set<I18NString>, SetCount> listed; // ids of objects
    std::vector<std::string> withoutEffect;            // what else stands there, in sentences

    bool operator==(StatedView const& other) const { return id == other.id && isLike(other); }
    /// The same but for the id.
    bool isLike(StatedView const& other) const {
        return names == other.names && isRoleBased == other.isRoleBased &&
               members == other.members && listed == other.listed;
    }
};

/// The views of a model, in document order.
std::vector<StatedView> statedViews(Model const& model);

/// What a view's "roleBased" says: a number other than 0 and "true" are yes, all else is no.
bool saysYes(I18NString const& text);

} // namespace vex
