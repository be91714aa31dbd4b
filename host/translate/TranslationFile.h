#pragma once

#include "I18NLocale.h"
#include "host/import/xml/FileText.h"
#include "host/store/image/DocumentPosition.h"

#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vex {

/// What happened to the text that was translated.
enum class TranslationMark {
    None,
    Changed, // the object says something else now
    Gone,    // the object is gone, or says nothing any more
};

/// One text of an object and what it is in another language.
struct TranslationUnit {
    std::string object; // its id
    std::string property;
    std::string source;
    std::string target{}; // "" when it was not translated
    TranslationMark mark = TranslationMark::None;
    std::string note{}; // for who translates
    DocumentPosition position{};

    auto key() const { return std::tie(object, property); }
};

/// Texts to translate, as they stand in a file of their own: XLIFF or CSV.
struct TranslationFile {
    I18NLocale sourceLocale;
    std::optional<I18NLocale> targetLocale{}; // nothing when the file does not say
    std::string original{};                   // what it was made of
    std::vector<TranslationUnit> units{};
};

/// A form of translation files.
struct TranslationFormat {
    char const* name;
    std::string_view endings[2]; // of file names
    std::string (*write)(TranslationFile const& file);
    /// Raises `KRLDocumentException` with `name` as the file.
    TranslationFile (*read)(std::string_view text, std::string const& name);
};

/// Null when there is none of that name, or for that file.
TranslationFormat const* findTranslationFormat(std::string_view name);
TranslationFormat const* translationFormatOf(std::string const& file);

/// How long a translation file may be.
constexpr InputLimit translationLimit{std::size_t{64} << 20U};

} // namespace vex
