#pragma once

#include "I18NLocale.h"
#include "host/store/image/HashSlots.h"

#include <cstdint>
#include <vector>

namespace vex {

/// The locales of a model's values by numbers of the model's own, from 1 on: those of the
/// process are not the same in the next one. 0 stands for a value without a locale, and so
/// does the nameless locale.
class LocaleNumbers {
public:
    LocaleNumbers() = default;
    /// `used` stand in the order of their numbers, each once.
    explicit LocaleNumbers(std::vector<I18NLocale> used) : m_used(std::move(used)) {
        for (std::size_t index = 0; index < m_used.size(); ++index) {
            std::uint32_t const number = m_used[index].getNumber();
            if (number >= m_own.size()) {
                m_own.resize(number + 1, NotFound);
            }
            m_own[number] = static_cast<std::uint32_t>(index + 1);
        }
    }

    /// `NotFound` for a locale that no value has.
    std::uint32_t of(I18NLocale const& locale) const { return ofNumber(locale.getNumber()); }
    /// The same for the number that the process has for it.
    std::uint32_t ofNumber(std::uint32_t number) const {
        return number < m_own.size() ? m_own[number] : NotFound;
    }
    std::size_t count() const { return m_used.size(); }
    /// The locale with that number, which is one from 1 to `count`.
    I18NLocale const& operator[](std::uint32_t number) const { return m_used[number - 1]; }

    std::size_t byteCount() const {
        return m_used.capacity() * sizeof(I18NLocale) + m_own.capacity() * sizeof(std::uint32_t);
    }

private:
    std::vector<I18NLocale> m_used;
    std::vector<std::uint32_t> m_own{0}; // by the number of the process
};

} // namespace vex
