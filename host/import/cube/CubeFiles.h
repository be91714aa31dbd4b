#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vex {

class ImportWork;

/// The names and texts of the YAML files that the request's source is: itself, or those that
/// the folder holds at any depth, in the order of their names. Tells the account of what else
/// lies in the folder. Raises `KRLDocumentException` for what cannot be read; refuses more
/// files, or all together more bytes, than the limits.
std::vector<std::pair<std::string, std::string>> readCubeFiles(ImportWork& work);

} // namespace vex
