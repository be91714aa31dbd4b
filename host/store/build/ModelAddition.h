#pragma once

namespace vex {

class ModelWriter;
class SourceReport;
class WrittenModel;

/// What is added to a model beside what its source holds, such as views that follow
/// from rules. It sees the whole model before that is made.
class ModelAddition {
public:
    virtual ~ModelAddition() = default;

    /// Called once, right before the root object is closed; not when an error was
    /// reported. Opens and closes objects, nothing else. Raises what writing does.
    virtual void addTo(WrittenModel& model, ModelWriter& writer, SourceReport& report) = 0;
};

} // namespace vex
