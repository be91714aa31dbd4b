#include "host/import/draft/WrittenFiles.h"

#include "KRLException.h"
#include "host/store/image/FileBeside.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace vex {

namespace {

[[noreturn]] void refuse(std::string const& file, std::string const& reason) {
    throw KRLDocumentException(file, 0, 0, "cannot be written: " + reason);
}

} // namespace

void writeFilesTogether(std::vector<FileToWrite> const& files) {
    std::vector<FileBeside> written;
    for (FileToWrite const& wanted : files) {
        std::error_code problem;
        if (std::filesystem::is_directory(wanted.file, problem)) {
            refuse(wanted.file, std::strerror(EISDIR));
        }
        auto const folder = std::filesystem::path(wanted.file).parent_path();
        if (!folder.empty()) {
            std::filesystem::create_directories(folder, problem);
            if (problem) {
                refuse(wanted.file, problem.message());
            }
        }
        FileBeside& file = written.emplace_back(wanted.file);
        file.write(wanted.text);
        file.finish();
    }
    for (FileBeside& file : written) {
        file.putInPlace();
    }
}

} // namespace vex
