#pragma once

#include "I18NLocale.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vex {

/// What makes a thing of a source the same thing when the source is read again.
struct DraftKey {
    /// A word for its kind in the source: "column".
    std::string kind{};
    /// Where it stands there, see `appendToPath`. Things of a kind should differ in it.
    std::string path{};
    /// What the source itself knows it by, whatever it is called; may be empty.
    std::string tag{};
};

/// Appends "[name]" with a "]" inside doubled, so that no two lists of names make one path.
void appendToPath(std::string& path, std::string_view name);

/// A value of an object; the nameless locale is for all languages.
struct DraftValue {
    std::string property;
    I18NLocale locale;
    std::string value;
};

/// An object of the model that an import makes. Texts are UTF-8.
struct DraftObject {
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    std::string className;
    DraftKey key;
    std::size_t container = None;
    DocumentPosition position{}; // in the source
    std::size_t file = 0;        // of those entered
    std::vector<DraftValue> values{};
    std::vector<std::size_t> members{};
    std::string id{}; // once they were given
};

/// The model that an import makes, before it is written: objects by their number, the model
/// itself first. Everything may be added to an object at any time, so an importer need not
/// read its source in the order of the document.
class ModelDraft {
public:
    ModelDraft();

    static constexpr std::size_t Root = 0;

    /// Of a source that is several files: the one that objects stand in which are added from
    /// here on.
    void enterFile(std::string const& file);
    /// "" for an object that was added before any file was entered.
    std::string const& fileOf(DraftObject const& object) const { return m_files[object.file]; }

    /// The number of a new last member of `container`.
    std::size_t add(std::size_t container, std::string className, DraftKey key,
                    DocumentPosition position = {});

    /// Sets a property for all languages. A text that is empty is none.
    void set(std::size_t object, std::string_view property, std::string_view value);

    /// The same for one language; white space at the ends is no part of it. False, and
    /// nothing is changed, when there is a value for it already, or the text is empty.
    bool translate(std::size_t object, std::string_view property, I18NLocale locale,
                   std::string_view value);

    /// The language of what is said for all of them, and the languages of the model; a
    /// language that is there already is not added again.
    void setDefaultLocale(I18NLocale locale);
    bool addLocale(I18NLocale locale);
    I18NLocale defaultLocale() const { return m_defaultLocale; }
    std::vector<I18NLocale> const& locales() const { return m_locales; }

    std::size_t size() const { return m_objects.size(); }
    DraftObject const& operator[](std::size_t object) const { return m_objects[object]; }

    /// Objects in the order of the document: their numbers.
    std::vector<std::size_t> inDocumentOrder() const;

    /// Goes through them in that order: `open` is called for each object before its members,
    /// `close` after them.
    void walk(std::function<void(DraftObject const&)> const& open,
              std::function<void(DraftObject const&)> const& close) const;

    /// Gives each object its id, see `StableIds.h`, and makes what is said in the default
    /// language hold against more general ones. Called once, when everything was added. What
    /// else needs an id in the model has its key among `others`; gives their ids.
    std::vector<std::string> settle(std::vector<DraftKey const*> const& others);

private:
    void restateDefaults(DraftObject& object) const;

    std::vector<DraftObject> m_objects;
    std::vector<std::string> m_files{""};
    std::map<std::string, std::size_t> m_numberOfFile{{"", 0}};
    std::size_t m_file = 0;
    I18NLocale m_defaultLocale;
    std::vector<I18NLocale> m_locales;
    std::set<std::tuple<std::size_t, std::string, std::uint32_t>> m_translated;
};

} // namespace vex
