#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// The names that SQL of a cube says in braces, each as its words: "{CUBE.status}",
/// "{CUBE}.status" and "${CUBE.status}" are CUBE, status. Rather too much than too little: of
/// code in braces each name counts.
std::vector<std::vector<std::string>> namesInCubeSql(std::string_view sql);

} // namespace vex
