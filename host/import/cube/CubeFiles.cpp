#include "host/import/cube/CubeFiles.h"

#include "KRLException.h"
#include "host/import/cube/CubeKeys.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/xml/FileText.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vex {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostFiles = 100'000;

/// Why a file is not read; null for one that is.
char const* reasonAgainst(fs::directory_entry const& entry) {
    fs::path const ending = entry.path().extension();
    std::error_code ignored; // what cannot be looked at is none of these
    if (entry.is_symlink(ignored)) {
        return cubeReasons::Link;
    }
    if (!entry.is_regular_file(ignored)) {
        return cubeReasons::NoFile;
    }
    if (ending == ".js" || ending == ".py" || ending == ".ts") {
        return cubeReasons::Program;
    }
    return ending == ".yml" || ending == ".yaml" ? nullptr : cubeReasons::NoYaml;
}

std::vector<std::string> filesIn(std::string const& folder, ImportWork& work) {
    std::vector<std::string> files;
    std::vector<std::pair<std::string, char const*>> others;
    std::error_code problem;
    fs::recursive_directory_iterator each(folder, problem);
    for (; !problem && each != fs::recursive_directory_iterator(); each.increment(problem)) {
        std::error_code ignored;
        if (each->is_directory(ignored) && !each->is_symlink(ignored)) {
            if (each->path().filename().string().starts_with('.')) {
                each.disable_recursion_pending(); // of tools, such as version control
            }
            continue;
        }
        if (char const* const reason = reasonAgainst(*each)) {
            others.emplace_back(each->path().string(), reason);
        } else {
            files.push_back(each->path().string());
        }
        if (files.size() + others.size() > mostFiles) {
            work.refuse("the folder holds more than " + std::to_string(mostFiles) +
                        " files; give the one that the model is in");
        }
    }
    if (problem) {
        throw KRLDocumentException(folder, 0, 0, "cannot be read: " + problem.message());
    }
    std::sort(files.begin(), files.end());
    std::sort(others.begin(), others.end());
    for (auto const& [file, reason] : others) {
        work.account.leftOut("file", reason, {file});
    }
    return files;
}

} // namespace

std::vector<std::pair<std::string, std::string>> readCubeFiles(ImportWork& work) {
    std::string const& source = work.request.source;
    std::size_t const limit = work.request.limits.sourceBytes;
    std::error_code ignored;
    if (source == "-" || !fs::is_directory(source, ignored)) {
        return {{work.request.sourceName(), readFileText(source, limit)}};
    }
    std::vector<std::pair<std::string, std::string>> texts;
    std::size_t bytes = 0;
    for (std::string const& file : filesIn(source, work)) {
        texts.emplace_back(file, readFileText(file, limit));
        bytes += texts.back().second.size();
        if (bytes > limit) {
            work.refuse("the files of the folder have more than " + std::to_string(limit) +
                        " bytes together, which is the limit; give the one that the model is in");
        }
    }
    if (texts.empty()) {
        work.refuse("the folder holds no file that ends with .yml or .yaml; give the one that "
                    "the model is in");
    }
    return texts;
}

} // namespace vex
