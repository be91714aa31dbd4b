#include "I18NLocale.h"

#include "KRLException.h"

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/uloc.h>

struct I18NLocale::Data {
    I18NString name;
    Data const* parent; // null for the nameless locale
    std::uint32_t number;
    mutable std::once_flag separatorOnce{};
    mutable I18NString separator{};
};

namespace {

using Data = I18NLocale::Data;

constexpr std::size_t numericRegionLength = 3;

// A name that ICU cannot make a locale of stays as it is.
std::string canonicalName(std::string const& name) {
    std::array<char, ULOC_FULLNAME_CAPACITY> spelled{};
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t const length =
        uloc_canonicalize(name.c_str(), spelled.data(), ULOC_FULLNAME_CAPACITY, &status);
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc(); // a locale is kept for good, so never under another name
    }
    return U_FAILURE(status) || length >= ULOC_FULLNAME_CAPACITY
               ? name
               : std::string(spelled.data(), static_cast<std::size_t>(length));
}

// Cuts the keywords first, then one subtag after the other. The answer is always
// shorter than the name, whatever ICU makes of it. A name too long for a locale
// has no subtags to speak of.
std::string parentName(std::string const& name) {
    std::size_t const keywords = name.find('@');
    std::size_t const cut = keywords != std::string::npos ? keywords : name.rfind('_');
    if (cut == std::string::npos || name.size() >= ULOC_FULLNAME_CAPACITY) {
        return {};
    }
    std::string shorter = name.substr(0, cut);
    while (!shorter.empty() && shorter.back() == '_') {
        shorter.pop_back(); // an empty subtag is no step of its own
    }
    std::string spelled = canonicalName(shorter);
    return spelled.size() < name.size() ? spelled : shorter;
}

I18NString decimalSeparator(std::string const& name) {
    icu::Locale const locale(name.c_str());
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormatSymbols const symbols(locale, status);
    // ICU answers for a language that it lacks with the symbols of the process's
    // own environment.
    icu::Locale const answering = symbols.getLocale(ULOC_VALID_LOCALE, status);
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc(); // the next caller tries again
    }
    if (U_FAILURE(status) ||
        std::string_view(answering.getLanguage()) != std::string_view(locale.getLanguage())) {
        return ".";
    }
    icu::UnicodeString const& symbol =
        symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol);
    return I18NString(symbol.getBuffer(), symbol.length());
}

// True for a locale that ICU has data of: there are some hundreds.
bool isOfIcu(std::string const& canonical) {
    static std::set<std::string> const* const names = [] {
        auto made = std::make_unique<std::set<std::string>>();
        for (std::int32_t index = 0; index < uloc_countAvailable(); ++index) {
            made->insert(uloc_getAvailable(index));
        }
        return made.release(); // for static objects that are used to the end
    }();
    return names->find(canonical) != names->end();
}

// Every locale that was ever asked for, by canonical name, and the other
// spellings of them.
class LocaleTable {
public:
    static LocaleTable& instance() {
        // Never destroyed: locales may be used by other static objects to the end.
        static LocaleTable* const table = new LocaleTable;
        return *table;
    }

    Data const* nameless() const { return &m_nameless; }

    Data const* find(I18NString const& name) {
        if (name.empty()) {
            return &m_nameless;
        }
        {
            std::shared_lock const lock(m_mutex);
            auto const found = m_spellings.find(name);
            if (found != m_spellings.end()) {
                return found->second;
            }
        }
        Data const* const data = intern(canonicalName(name.toUtf8()));
        std::unique_lock const lock(m_mutex);
        if (m_spellings.size() < m_byName.size() + MaxOtherSpellings && hasRoomFor(name) &&
            m_spellings.emplace(name, data).second) {
            m_kept += sizeOf(name);
        }
        return data;
    }

private:
    // Names and spellings come from outside. Past this many, one more spelling is not
    // remembered; past this many units, no name.
    static constexpr std::size_t MaxOtherSpellings = 1'000;
    static constexpr std::size_t MaxKept = 8'000'000;

    // With what stands around the text, which may be a few units long.
    static std::size_t sizeOf(I18NString const& name) {
        constexpr std::size_t aroundIt = 250;
        return aroundIt + name.view().size();
    }

    bool hasRoomFor(I18NString const& name) const { return sizeOf(name) <= MaxKept - m_kept; }

    Data const* intern(std::string const& utf8) {
        if (utf8.empty()) {
            return &m_nameless;
        }
        Data const* const parent = intern(parentName(utf8));
        I18NString const name = I18NString::fromUtf8(utf8);
        std::unique_lock const lock(m_mutex);
        auto const known = m_byName.find(name);
        if (known != m_byName.end()) {
            return known->second.get();
        }
        // Nobody can take the room away from the languages that there are.
        if (!hasRoomFor(name) && !isOfIcu(utf8)) {
            throw KRLLimitException(
                "Too many locales have been named since the program started, " +
                std::to_string(m_byName.size()) +
                " with those that they belong to; no other one is taken. Use fewer names, and "
                "start the program anew.");
        }
        std::unique_ptr<Data> made(new Data{name, parent, m_nextNumber});
        Data const* const data =
            m_byName.try_emplace(made->name, std::move(made)).first->second.get();
        ++m_nextNumber;
        m_kept += std::min(sizeOf(name), MaxKept - m_kept);
        return data;
    }

    Data const m_nameless{{}, nullptr, 0};
    std::shared_mutex m_mutex;
    std::unordered_map<I18NString, std::unique_ptr<Data>> m_byName;
    std::unordered_map<I18NString, Data const*> m_spellings;
    std::uint32_t m_nextNumber = 1;
    std::size_t m_kept = 0;
};

} // namespace

I18NLocale::I18NLocale() : m_data(LocaleTable::instance().nameless()) {}

I18NLocale::I18NLocale(I18NString const& name) : m_data(LocaleTable::instance().find(name)) {}

I18NString const& I18NLocale::getName() const {
    return m_data->name;
}

I18NLocale I18NLocale::getParent() const {
    return I18NLocale(m_data->parent == nullptr ? m_data : m_data->parent);
}

std::uint32_t I18NLocale::getNumber() const {
    return m_data->number;
}

I18NString const& I18NLocale::getDecimalSeparator() const {
    std::call_once(m_data->separatorOnce,
                   [this] { m_data->separator = decimalSeparator(m_data->name.toUtf8()); });
    return m_data->separator;
}

bool I18NLocale::isKnown(I18NString const& name) {
    icu::Locale const locale(canonicalName(name.toUtf8()).c_str());
    if (locale.isBogus() || *locale.getLanguage() == '\0' || *locale.getISO3Language() == '\0') {
        return false;
    }
    std::string const region = locale.getCountry();
    bool const isNumeric =
        region.size() == numericRegionLength &&
        std::all_of(region.begin(), region.end(), [](char c) { return c >= '0' && c <= '9'; });
    return region.empty() || isNumeric || *locale.getISO3Country() != '\0';
}
