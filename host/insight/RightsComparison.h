#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/store/image/Model.h"

#include <string>
#include <vector>

namespace vex {

/// A model with those who may see something of it.
struct RightsSide {
    Model const& model;
    Catalogue const* catalogue; // null without one
    I18NString path;            // of the model in it
};

/// A language, a part of a view, a grant or a user that one side has and the other has not.
struct RightChange {
    bool isAdded; // the second side has it
    std::string text;
};

/// In the order of views, grants and users. Objects are the same when their ids are.
std::vector<RightChange> compareRights(RightsSide const& before, RightsSide const& after);

} // namespace vex
