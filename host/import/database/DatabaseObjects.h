#pragma once

namespace vex {

class ImportWork;
struct DatabaseModel;

/// Makes the objects of a model: schemas as namespaces, tables as query subjects, columns as
/// query items, foreign keys as relationships. What stands for each is noted in `model`.
void draftDatabase(DatabaseModel& model, ImportWork& work);

} // namespace vex
