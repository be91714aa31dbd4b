#pragma once

#include "host/import/draft/ImportWork.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// The folders that objects of a table are shown in: paths such as `Costs\Wages`, as query
/// item folders inside each other.
class DisplayFolders {
public:
    explicit DisplayFolders(ImportWork& work) : m_work(work) {}

    /// Where in the draft an object of the table goes whose display folder is `folders`: one
    /// path, or several with ";" between them, of which the first counts.
    std::size_t placeOf(std::size_t table, std::string const& tableName, std::string const& folders,
                        DocumentPosition at);

    /// Names the folders around an object in a language. Gives why it cannot; null when done.
    char const* translate(std::size_t object, I18NLocale locale, std::string_view path);

private:
    ImportWork& m_work;
    std::map<std::pair<std::size_t, std::string>, std::size_t> m_folders; // by container and name
};

} // namespace vex
