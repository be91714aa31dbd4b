#pragma once

#include <memory>

namespace vex {

class ImportWork;
class Model;

/// The model of a settled draft, through `ModelWriter`: what no model may hold is reported
/// where it stands in the source. Null then.
std::shared_ptr<Model const> writeDraftedModel(ImportWork& work);

} // namespace vex
