#pragma once

#include "I18NString.h"

/// What a model path says.
struct VexModelPath {
    I18NString path;     // as the host's services know it
    bool outsideContent; // true: nothing is known about its security
};

/// Reads a model path. One that begins with the path mark loses its first five
/// characters and counts as content; of the others only those that begin with
/// "/content/" do.
VexModelPath ReadModelPath(I18NString const& modelPath);
