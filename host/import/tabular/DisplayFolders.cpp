#include "host/import/tabular/DisplayFolders.h"

#include "host/import/draft/PlainText.h"
#include "host/import/tabular/UnmappedKeys.h"

#include <algorithm>

namespace vex {

namespace {

constexpr std::size_t longestPath = 4'000;

std::vector<std::string> namesOf(std::string_view path) {
    std::vector<std::string> names;
    while (!path.empty()) {
        std::size_t const end = std::min(path.find('\\'), path.size());
        if (std::string name = trimmed(path.substr(0, end)); !name.empty()) {
            names.push_back(std::move(name));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

} // namespace

std::size_t DisplayFolders::placeOf(std::size_t table, std::string const& tableName,
                                    std::string const& folders, DocumentPosition at) {
    std::size_t const end = std::min(folders.find(';'), folders.size());
    if (end > longestPath) {
        m_work.refuse("a display folder has more than " + std::to_string(longestPath) +
                          " characters; shorten it",
                      at);
    }
    if (std::size_t const others =
            static_cast<std::size_t>(std::count(folders.begin(), folders.end(), ';'));
        others > 0) {
        m_work.account.leftOut("further display folder", tabularReasons::OtherFolder,
                               {folders.substr(0, longestPath), at}, others);
    }
    std::size_t place = table;
    std::string path;
    appendToPath(path, tableName);
    for (std::string const& name : namesOf(std::string_view(folders).substr(0, end))) {
        appendToPath(path, name);
        auto [known, isNew] = m_folders.try_emplace({place, name});
        if (isNew) {
            known->second = m_work.draft.model.add(place, "queryItemFolder", {"folder", path}, at);
            m_work.draft.model.set(known->second, "name", name);
            m_work.account.mapped("display folder");
        }
        place = known->second;
    }
    return place;
}

char const* DisplayFolders::translate(std::size_t object, I18NLocale locale,
                                      std::string_view path) {
    ModelDraft& model = m_work.draft.model;
    std::vector<std::size_t> around;
    for (std::size_t each = model[object].container;
         each != DraftObject::None && model[each].className == "queryItemFolder";
         each = model[each].container) {
        around.insert(around.begin(), each);
    }
    std::vector<std::string> const names =
        namesOf(path.substr(0, std::min(path.find(';'), path.size())));
    if (around.empty()) {
        return "the object is in no folder that it could name";
    }
    if (names.size() != around.size()) {
        return "it has more or fewer folders than the object is in";
    }
    char const* problem = nullptr;
    for (std::size_t level = 0; level < names.size(); ++level) {
        if (!model.translate(around[level], "name", locale, names[level])) {
            auto const& values = model[around[level]].values;
            bool const isSame =
                std::any_of(values.begin(), values.end(), [&](DraftValue const& each) {
                    return each.property == "name" && each.locale == locale &&
                           each.value == names[level];
                });
            problem = isSame ? problem : "another object names the same folder differently";
        }
    }
    return problem;
}

} // namespace vex
