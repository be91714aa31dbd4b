#pragma once

#include "host/store/image/DocumentPosition.h"

#include <string>
#include <string_view>

namespace vex {

/// Where in its source something was found, as far as the source can tell: a
/// line and a column, or a part in words, or neither.
struct SourcePosition {
    DocumentPosition inDocument{}; // line 0: unknown
    std::string part{};            // such as "table Orders, column 3"; may be empty
};

/// What messages call the things of a source, and what they advise to do there.
struct SourceTerms {
    std::string_view source = "source";
    /// The names that count against `ModelLimits::distinctNames`.
    std::string_view countedNames = "classes and properties";
    std::string_view onTooManyNames = "split the model or use fewer";
    std::string_view onPropertyWithoutName = "give it one";
};

/// What a model is made from, as an importer reads it.
class ModelSource {
public:
    ModelSource(ModelSource const&) = delete;
    ModelSource& operator=(ModelSource const&) = delete;

    /// Where the reading stands. Asked only when something is reported, and for
    /// each element of a model that keeps positions.
    virtual SourcePosition position() const = 0;

    virtual SourceTerms terms() const { return {}; }

protected:
    ModelSource() = default;
    ~ModelSource() = default;
};

} // namespace vex
