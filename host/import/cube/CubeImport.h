#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

class ImportWork;

/// Reads a project of cubes and views, YAML: a file, or all such files of a folder. Its
/// access policies become views.
void importCube(ImportWork& work);

/// The same of texts, each with the name of its file.
void importCubeTexts(std::vector<std::pair<std::string, std::string>> const& files,
                     ImportWork& work);

} // namespace vex
