#pragma once

#include "host/import/xml/ModelLoader.h"
#include "tests/support/Casts.h"

/// A model with English and German, and a few objects.
inline std::shared_ptr<vex::Model const> smallModel() {
    return vex::loadModelText(casts::bilingualShop, "small.model.xml");
}
