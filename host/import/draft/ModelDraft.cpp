#include "host/import/draft/ModelDraft.h"

#include "host/import/draft/PlainText.h"
#include "host/import/draft/StableIds.h"

#include <algorithm>
#include <utility>

namespace vex {

namespace {

bool isMoreGeneral(I18NLocale locale, I18NLocale than) {
    for (I18NLocale each = than.getParent(); each != I18NLocale(); each = each.getParent()) {
        if (each == locale) {
            return true;
        }
    }
    return false;
}

} // namespace

void appendToPath(std::string& path, std::string_view name) {
    path += path.empty() ? "[" : ".[";
    for (char const unit : name) {
        path.append(unit == ']' ? 2 : 1, unit);
    }
    path += ']';
}

ModelDraft::ModelDraft() {
    m_objects.push_back({.className = "model", .key = {"model"}});
}

void ModelDraft::enterFile(std::string const& file) {
    auto const [known, isNew] = m_numberOfFile.try_emplace(file, m_files.size());
    if (isNew) {
        m_files.push_back(file);
    }
    m_file = known->second;
}

std::size_t ModelDraft::add(std::size_t container, std::string className, DraftKey key,
                            DocumentPosition position) {
    std::size_t const number = m_objects.size();
    m_objects.push_back({std::move(className), std::move(key), container, position, m_file});
    m_objects[container].members.push_back(number);
    return number;
}

void ModelDraft::set(std::size_t object, std::string_view property, std::string_view value) {
    if (!value.empty()) {
        m_objects[object].values.push_back(
            {std::string(property), I18NLocale(), std::string(value)});
    }
}

bool ModelDraft::translate(std::size_t object, std::string_view property, I18NLocale locale,
                           std::string_view value) {
    std::string text = trimmed(value);
    if (text.empty() ||
        !m_translated.emplace(object, std::string(property), locale.getNumber()).second) {
        return false;
    }
    m_objects[object].values.push_back({std::string(property), locale, std::move(text)});
    return true;
}

void ModelDraft::setDefaultLocale(I18NLocale locale) {
    m_defaultLocale = locale;
    addLocale(locale);
}

bool ModelDraft::addLocale(I18NLocale locale) {
    if (std::find(m_locales.begin(), m_locales.end(), locale) != m_locales.end()) {
        return false;
    }
    m_locales.push_back(locale);
    return true;
}

std::vector<std::size_t> ModelDraft::inDocumentOrder() const {
    std::vector<std::size_t> order;
    order.reserve(m_objects.size());
    std::vector<std::size_t> waiting{Root};
    while (!waiting.empty()) {
        std::size_t const object = waiting.back();
        waiting.pop_back();
        order.push_back(object);
        auto const& members = m_objects[object].members;
        waiting.insert(waiting.end(), members.rbegin(), members.rend());
    }
    return order;
}

void ModelDraft::walk(std::function<void(DraftObject const&)> const& open,
                      std::function<void(DraftObject const&)> const& close) const {
    struct Open {
        std::size_t object;
        std::size_t next; // of its members
    };
    std::vector<Open> entered;
    auto const enter = [&](std::size_t object) {
        open(m_objects[object]);
        entered.push_back({object, 0});
    };
    enter(Root);
    while (!entered.empty()) {
        auto& [object, next] = entered.back();
        auto const& members = m_objects[object].members;
        if (next < members.size()) {
            enter(members[next++]);
            continue;
        }
        close(m_objects[object]);
        entered.pop_back();
    }
}

std::vector<std::string> ModelDraft::settle(std::vector<DraftKey const*> const& others) {
    for (DraftObject& object : m_objects) {
        restateDefaults(object);
    }
    std::vector<std::size_t> const order = inDocumentOrder();
    std::vector<DraftKey const*> keys;
    for (std::size_t const object : order) {
        keys.push_back(&m_objects[object].key);
    }
    keys.insert(keys.end(), others.begin(), others.end());
    std::vector<std::string> ids = stableIds(keys);
    std::size_t next = 0;
    for (std::size_t const object : order) {
        m_objects[object].id = std::move(ids[next++]);
    }
    ids.erase(ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(next));
    return ids;
}

// With the languages en and en_US, the second one the default: what was translated into
// the first would otherwise be found for the second, before what is said for all languages,
// and names in expressions would lead nowhere.
void ModelDraft::restateDefaults(DraftObject& object) const {
    std::vector<DraftValue> restated;
    for (DraftValue const& value : object.values) {
        if (!isMoreGeneral(value.locale, m_defaultLocale)) {
            continue;
        }
        bool const isSaid =
            std::any_of(object.values.begin(), object.values.end(), [&](DraftValue const& each) {
                return each.property == value.property && each.locale == m_defaultLocale;
            });
        auto const forAll =
            std::find_if(object.values.begin(), object.values.end(), [&](DraftValue const& each) {
                return each.property == value.property && each.locale == I18NLocale();
            });
        if (!isSaid && forAll != object.values.end()) {
            restated.push_back({value.property, m_defaultLocale, trimmed(forAll->value)});
        }
    }
    object.values.insert(object.values.end(), restated.begin(), restated.end());
}

} // namespace vex
