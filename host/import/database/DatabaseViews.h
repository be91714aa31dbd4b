#pragma once

namespace vex {

class ImportWork;
struct DatabaseModel;

/// Makes a view of what each role may read, and users of the roles that may log in. Who sees
/// just what the roles see that are inherited from holds those roles, else one of the own name.
void draftDatabaseViews(DatabaseModel const& model, ImportWork& work);

} // namespace vex
