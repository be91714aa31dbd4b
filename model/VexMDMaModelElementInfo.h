#pragma once

#include "I18NString.h"

#include <list>

/// One model element met along a path.
struct VexMDMaModelElementInfo {
    I18NString name;      // as the request's locale finds it, or as it was matched
    I18NString className; // the word for its kind
};

/// From an element outwards to its outermost ancestor.
using VexMDMaPath = std::list<VexMDMaModelElementInfo>;
