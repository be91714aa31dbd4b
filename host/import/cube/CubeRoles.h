#pragma once

#include "host/import/cube/CubeModel.h"
#include "host/import/cube/CubePolicies.h"

namespace vex {

class ImportWork;

/// Makes a view for each role that policies name. That of everybody shows what everybody is
/// granted; that of another role what its holders see besides, since they have both. Nothing is
/// made when there are no policies.
void makeCubeRoles(CubeModel const& model, CubePolicies const& policies, ImportWork& work);

} // namespace vex
