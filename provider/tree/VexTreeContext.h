#pragma once

#include "model/VexModelScope.h"

class KRLIDOM_Document;
class VexMDAccessEngine;
class VexMDMaProviderHelper;
class VexMDMaProviderVisability;
class VexTreeObservation;

/// What stays the same while the tree of one request is written. All that is
/// referred to outlives it.
struct VexTreeContext {
    VexModelScope model;
    KRLIDOM_Document const& document; // the response
    VexMDMaProviderHelper const& helper;
    int depth; // 0: unlimited
    VexMDAccessEngine& engine;
    VexMDMaProviderVisability& visibility;
    VexTreeObservation* observation; // null: nobody observes the tree
};
