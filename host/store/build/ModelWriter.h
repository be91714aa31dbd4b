#pragma once

#include "I18NLocale.h"
#include "host/store/build/SourceReport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace vex {

class Model;
class ModelAddition;
class StoreBuilder;
struct ShapeEntry;

/// What a model may hold.
struct ModelLimits {
    std::size_t depth = 512;        // elements and properties inside each other; the root counts
    std::size_t nameLength = 1'000; // of a counted name, UTF-16 code units
    std::size_t distinctNames = 10'000; // counted ones
};

struct ModelWriterOptions {
    ModelLimits limits{};
    /// Remembers the line and column of each element.
    bool keepPositions = false;
    /// The size of the source in bytes; 0 when unknown. Only a hint.
    std::size_t sourceSize = 0;
    /// The source is an XML document: its classes are names of elements.
    bool isDocument = false;
    /// What is added when all else is there; null for nothing. It outlives the writer.
    ModelAddition* addition = nullptr;
};

/// How a model comes to be. An importer tells what its source holds, in document
/// order:
///
///     ModelWriter writer(report);
///     writer.openObject(u"model");
///     writer.setDefaultLocale(u"en");
///     writer.openObject(u"namespace");
///     writer.setId(u"n1");
///     writer.addProperty(u"name", u"Sales");
///     writer.addProperty({writer.name(u"name"), writer.locale(u"de")}, u"Vertrieb");
///     writer.closeObject();
///     writer.closeObject();
///     std::shared_ptr<Model const> model = std::move(writer).finish();
///
/// Two kinds of mistakes are kept apart. What a source may not hold (two
/// elements with one id, an unknown locale) is reported: the reading goes on, to
/// find more, or ends with `SourceReport::Stop` where it cannot; there is no
/// model then. What no source can bring about, because the importer itself says
/// what to open and close, raises `std::logic_error`: it is a mistake in the
/// importer. So is a call after something was raised, other than `finish`.
///
/// Texts are taken as they are, white space and all; every text is copied. The
/// empty text is no value. A model can always be written as a document: a text
/// or a class that none can hold is reported as "unwritable-text". Past what a model can number
/// `KRLLimitException` is raised, out of memory `std::bad_alloc`. One thread at a time.
class ModelWriter {
public:
    /// A name that this writer knows. Who uses one often asks for it once.
    class Name {
    public:
        /// No name.
        Name() = default;
        bool isEmpty() const { return m_number == None; }
        friend bool operator==(Name, Name) = default;

    private:
        friend class ModelWriter;
        explicit Name(std::uint32_t number) : m_number(number) {}
        static constexpr std::uint32_t None = 0xFFFF'FFFF;
        std::uint32_t m_number = None;
    };

    /// What a property says beside its value.
    struct Property {
        Name name;
        std::optional<I18NLocale> locale{}; // none: not localised
        std::u16string_view role{};
    };

    /// An id that was looked up in part, see `prepareId`.
    struct PreparedId {
        std::u16string_view text;
        std::uint32_t hash;
    };

    /// The report outlives the writer.
    explicit ModelWriter(SourceReport& report, ModelWriterOptions const& options = {});
    ~ModelWriter();
    ModelWriter(ModelWriter const&) = delete;
    ModelWriter& operator=(ModelWriter const&) = delete;

    /// The name with that text; of the empty text none.
    Name name(std::u16string_view text);

    /// The same for a name that the make of the source gives rather than its
    /// content: each class, a column that becomes a property. An honest source
    /// has few, so they are counted and held to the limits of names:
    /// "name-too-long" and "too-many-names" end the reading.
    Name countedName(std::u16string_view text);

    /// The locale of that name, in any spelling. One that is unknown, as the
    /// empty one is, is reported as "unknown-locale"; the nameless locale is
    /// given then.
    I18NLocale locale(std::u16string_view name);

    /// Opens an object of a class, in the object opened last. The first one is
    /// the model itself, of the class "model". A nesting past the limit ends the
    /// reading with "too-deep".
    void openObject(Name cls);
    void openObject(std::u16string_view cls) { openObject(countedName(cls)); }

    /// @{
    /// Of the object opened last, before it is closed. The text is the object's
    /// own value; the class is what `VexObject::GetClass` gives, not the name of
    /// its class. The last call counts, but an object is given one id at most.
    /// An id that another object has too is reported as "duplicate-id".
    void setId(PreparedId id);
    void setId(std::u16string_view id) { setId(prepareId(id)); }
    void setRole(std::u16string_view role);
    void setClass(std::u16string_view cls);
    void setText(std::u16string_view text);
    /// @}

    /// The same with a text that the model has, by its number in a `WrittenModel`.
    void setKnownText(std::uint32_t text);

    /// Fetches what `setId` will look at, so that it need not wait when
    /// something else is done in between. The text is the caller's until then.
    PreparedId prepareId(std::u16string_view id) const;

    void closeObject();

    /// @{
    /// A simple property of what was opened last, an object or a property; with
    /// `open` and `close` what is added in between are its own properties, and
    /// the value comes last. Several values without a locale are several
    /// properties. Reported: "property-without-name"; "duplicate-value" for a
    /// second value for one locale.
    void addProperty(Property const& property, std::u16string_view value);
    void addProperty(std::u16string_view name, std::u16string_view value) {
        addProperty({this->name(name)}, value);
    }
    void openProperty(Property const& property);
    void closeProperty(std::u16string_view value = {});
    /// @}

    /// The default locale of the model, also its property "defaultLocale"; while
    /// only the model is open. "en_US" when it is not called.
    void setDefaultLocale(std::u16string_view name);

    /// @{
    /// The locales that the model supports, also its property "locales". False
    /// in another object than the model: that was reported as
    /// "locales-outside-model", and nothing is open.
    bool openLocales();
    void addLocale(std::u16string_view name);
    void closeLocales();
    /// @}

    /// Ends the reading with "too-deep" when `depth` is past the limit. For a
    /// source that nests more than it hands on.
    void admitDepth(std::size_t depth) {
        if (depth > m_limits.depth) {
            stopTooDeep();
        }
    }

    /// The model; null when an error was reported. Everything is closed before,
    /// unless there was one.
    std::shared_ptr<Model const> finish() &&;

private:
    struct Open;
    void makeAddition();
    struct KnownName {
        bool isCounted = false;
        bool isCheckedClass = false;
        bool isLocale = false; // it was read as the name of `locale`
        I18NLocale locale{};
    };

    Open& innermostObject(char const* misuse);
    Open& innermostOwner(char const* misuse);
    [[noreturn]] void stopTooDeep();
    [[gnu::noinline]] void countName(std::u16string_view text);
    KnownName& known(std::uint32_t name) {
        if (name >= m_known.size()) {
            m_known.resize(name + 1);
        }
        return m_known[name];
    }
    /// False, and reported, when no document can hold the text. Asked for each text, of
    /// documents too: XML 1.1 holds more than answers can, and half a character in UTF-16
    /// passes the parser.
    bool isHeldByDocument(std::u16string_view text);
    std::u16string_view heldByDocument(std::u16string_view text) {
        return isHeldByDocument(text) ? text : std::u16string_view();
    }
    void checkClass(Name cls);
    void openProperties(Open& owner);
    std::uint32_t closeProperties(Open const& owner);
    ShapeEntry entryOf(Property const& property);

    SourceReport& m_report;
    ModelLimits const m_limits;
    bool const m_keepPositions;
    bool const m_isDocument;
    ModelAddition* m_addition;
    bool m_isAdding = false;

    std::unique_ptr<StoreBuilder> m_store;
    std::vector<Open> m_open;

    std::vector<KnownName> m_known; // by the number of the name
    std::size_t m_countedNames = 0;

    I18NLocale m_defaultLocale;
    /// Locales in the order in which they came, each once.
    struct Locales {
        std::vector<I18NLocale> all{};
        std::unordered_set<std::uint32_t> numbers{}; // by `I18NLocale::getNumber`

        void add(I18NLocale locale) {
            if (numbers.insert(locale.getNumber()).second) {
                all.push_back(locale);
            }
        }
    };
    Locales m_locales;
    Locales m_usedLocales;

    Name m_model;
    Name m_property;
    Name m_localesName;
    Name m_locale;
    Name m_name;
    Name m_defaultLocaleName;
};

} // namespace vex
