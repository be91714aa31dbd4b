#pragma once

#include "bench/World.h"

namespace bench {

// Each registers the measurements of one group under names like
// "load/vex/100000" and "load/floor/100000"; what a row is compared with has the
// name "floor".
void registerLoad(Sizes const& sizes);
void registerPolicies(Sizes const& sizes);
void registerTree(Sizes const& sizes);
void registerWriting(Sizes const& sizes);
void registerInteractive(Sizes const& sizes);
void registerReferences(Sizes const& sizes);
void registerViews(Sizes const& sizes);
void registerAccess(Sizes const& sizes);
void registerShortcuts(Sizes const& sizes);
void registerThreads(Sizes const& sizes);
void registerMemory(Sizes const& sizes);
void registerRequests();
void registerImports();

/// "group/what/size".
std::string rowName(std::string const& what, std::size_t size);

} // namespace bench
