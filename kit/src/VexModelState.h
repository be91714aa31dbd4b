#pragma once

#include "VexModel.h"
#include "host/service/HostSession.h"

#include <memory>

/// What a `VexModel` stands for.
struct VexModel::State {
    explicit State(std::shared_ptr<vex::Model const> loaded) : open(std::move(loaded)) {}

    vex::Model const& model() const { return *open.getModel(); }

    vex::OpenModel open;
};
