#include "host/import/tabular/TabularCultures.h"

#include "host/import/draft/PlainText.h"
#include "host/import/tabular/UnmappedKeys.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace vex {

namespace {

/// Lists of translated things: what they are called, and what stands in them.
struct TranslatedList {
    char const* key;
    TabularKind kind;
    TabularKind inside; // of which its things are parts
};
constexpr TranslatedList translatedLists[] = {
    {"columns", TabularKind::Column, TabularKind::Table},
    {"measures", TabularKind::Measure, TabularKind::Table},
    {"hierarchies", TabularKind::Hierarchy, TabularKind::Table},
    {"levels", TabularKind::Level, TabularKind::Hierarchy},
};

class CultureReader {
public:
    CultureReader(TabularModel const& model, DisplayFolders& folders, ImportWork& work)
        : m_model(model), m_folders(folders), m_work(work) {
        for (std::size_t number = 0; number < model.parts.size(); ++number) {
            TabularPart const& part = model.parts[number];
            std::size_t const owner = part.owner != TabularPart::None ? part.owner : part.table;
            m_parts.emplace(std::tuple(part.kind, owner, foldedCase(part.name)), number);
        }
    }

    void read(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries culture(tree, value, "culture", m_work);
        std::string const name = culture.name();
        SourceTree::Value const translations = culture.map("translations");
        culture.leaveOutRest(unmappedTabularKeys(), name);
        I18NString const locale = I18NString::fromUtf8(name);
        if (!I18NLocale::isKnown(locale)) {
            m_work.account.leftOut("culture", "no language has that name",
                                   {name, culture.position()});
            return;
        }
        m_work.account.mapped("culture");
        m_locale = I18NLocale(locale);
        m_work.draft.model.addLocale(m_locale);
        if (translations == SourceTree::None) {
            return;
        }
        SourceEntries translated(tree, translations, "translations", m_work);
        if (SourceTree::Value const model = translated.map("model"); model != SourceTree::None) {
            readModel(tree, model);
        }
        translated.leaveOutRest(unmappedTabularKeys(), name);
    }

private:
    void readModel(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries model(tree, value, "translated model", m_work);
        model.ignore("name");
        translate(model, m_model.space, "model");
        for (SourceTree::Value const each : model.list("tables")) {
            readThing(tree, each, TabularKind::Table, TabularPart::None);
        }
        model.leaveOutRest(unmappedTabularKeys(), "");
    }

    void readThing(SourceTree const& tree, SourceTree::Value value, TabularKind kind,
                   std::size_t owner) {
        SourceEntries thing(tree, value, "translated object", m_work);
        SourceTree::Value const nameValue = tree.find(value, "name");
        thing.ignore("name");
        std::string const name =
            nameValue == SourceTree::None ? "" : trimmed(tree.textOf(nameValue));
        auto const part = m_parts.find({kind, owner, foldedCase(name)});
        if (part == m_parts.end()) {
            m_work.account.leftOut("translated object", "the model has no such thing",
                                   {name, thing.position()});
            return;
        }
        translate(thing, m_model.parts[part->second].object, name);
        for (TranslatedList const& list : translatedLists) {
            if (list.inside == kind) {
                for (SourceTree::Value const each : thing.list(list.key)) {
                    readThing(tree, each, list.kind, part->second);
                }
            }
        }
        thing.leaveOutRest(unmappedTabularKeys(), name);
    }

    void translate(SourceEntries& thing, std::size_t object, std::string const& name) {
        translateText(thing, object, "translatedCaption", "name", name);
        translateText(thing, object, "translatedDescription", "description", name);
        translateText(thing, object, "translatedDisplayFolder", nullptr, name);
    }

    /// Without a property the text names folders.
    void translateText(SourceEntries& thing, std::size_t object, char const* key,
                       char const* property, std::string const& name) {
        if (!thing.has(key)) {
            return;
        }
        std::string const text = trimmed(thing.plainText(key));
        char const* const problem = problemOf(object, property, text);
        if (problem != nullptr) {
            m_work.account.leftOut(key, problem, {name, thing.position()});
        } else {
            m_work.account.mapped(key);
        }
    }

    /// Puts the text where it belongs; why it cannot, or null.
    char const* problemOf(std::size_t object, char const* property, std::string const& text) {
        ModelDraft& draft = m_work.draft.model;
        if (text.empty()) {
            return "it is empty";
        }
        if (object == TabularPart::None) {
            return "what it translates was left out";
        }
        if (property == nullptr) {
            return m_folders.translate(object, m_locale, text);
        }
        if (m_locale == draft.defaultLocale() && std::string_view(property) == "name") {
            return nameOf(object) == text
                       ? nullptr
                       : "in the default language names stay those that expressions use";
        }
        return draft.translate(object, property, m_locale, text)
                   ? nullptr
                   : "there is one for this language already";
    }

    std::string nameOf(std::size_t object) const {
        for (DraftValue const& value : m_work.draft.model[object].values) {
            if (value.property == "name" && value.locale == I18NLocale()) {
                return value.value;
            }
        }
        return {};
    }

    TabularModel const& m_model;
    DisplayFolders& m_folders;
    ImportWork& m_work;
    I18NLocale m_locale; // of the culture that is read
    std::map<std::tuple<TabularKind, std::size_t, std::u16string>, std::size_t> m_parts;
};

} // namespace

void readCultures(SourceEntries& model, TabularModel const& parts, DisplayFolders& folders,
                  ImportWork& work) {
    CultureReader reader(parts, folders, work);
    for (SourceTree::Value const each : model.list("cultures")) {
        reader.read(model.tree(), each);
    }
}

} // namespace vex
