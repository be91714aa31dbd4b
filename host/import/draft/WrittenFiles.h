#pragma once

#include <string>
#include <vector>

namespace vex {

struct FileToWrite {
    std::string file;
    std::string text;
};

/// Writes files so that nobody ever reads half of one: each beside its place first, then all
/// are put there. Makes the folders that are missing. Raises `KRLDocumentException` for the
/// first that cannot be written; then every place holds what it held, unless the system fails
/// in the last step.
void writeFilesTogether(std::vector<FileToWrite> const& files);

} // namespace vex
