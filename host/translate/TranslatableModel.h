#pragma once

#include "host/import/xml/ElementTree.h"
#include "host/import/xml/FileText.h"
#include "host/translate/TranslationFile.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vex {

/// What came of translations that were put into a model. Each unit of their file is counted
/// once, but those whose text changed, or is marked as changed and was not seen to since,
/// count as applied, too.
struct TranslationOutcome {
    struct Change {
        TranslationUnit unit;
        std::string now; // what the object says today
    };
    std::size_t added = 0;    // there was none for the language
    std::size_t replaced = 0; // there was another one
    std::size_t same = 0;
    std::size_t untranslated = 0; // the target is empty
    std::vector<Change> changed{};
    std::vector<TranslationUnit> gone{};
    std::size_t missing = 0; // texts of the model that the file lacks
    /// The texts of today, with these translations and marks; what is gone at the end.
    TranslationFile renewed{};
    std::string document{}; // the model with them
};

/// A model document whose texts are translated: names, descriptions and screen tips of what
/// has an id.
class TranslatableModel {
public:
    /// Checks the document as any reader of models does. Raises `KRLDocumentException` with
    /// `name` as the file.
    TranslatableModel(std::string_view document, std::string name);

    I18NLocale defaultLocale() const { return m_defaultLocale; }

    /// True when translations into the language would change the names that expressions use.
    bool isOwnLanguage(I18NLocale locale) const;

    /// Each text in the default language, with its translation so far, in the document's order.
    TranslationFile texts(I18NLocale target) const;

    /// Puts translations into the model; the document is written in one form, without comments.
    /// Raises `KRLDocumentException`, with `file` as the file of the translations, when a unit
    /// is of a property that is not translated or of a text that no document can hold.
    TranslationOutcome apply(TranslationFile const& translations, I18NLocale target,
                             std::string const& file) const;

private:
    struct Text {
        ElementTree::Element element;
        std::size_t property; // in the table
        TranslationUnit unit; // with the translation so far
        bool hasTarget;
    };
    using Targets = std::map<std::pair<ElementTree::Element, std::size_t>, std::string>;

    std::vector<Text> textsOf(I18NLocale target) const;
    void appendTexts(ElementTree::Element element, std::string const& around, I18NLocale target,
                     std::vector<Text>& texts) const;
    std::string write(Targets const& targets, I18NLocale target) const;

    std::string m_name;
    ElementTree m_tree;
    I18NLocale m_defaultLocale;
    std::size_t m_elements = 0;
};

} // namespace vex
