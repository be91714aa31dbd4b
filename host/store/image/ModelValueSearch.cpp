// Comparing the names of many objects with one text.

#include "host/store/image/Budget.h"
#include "host/store/image/Model.h"
#include "host/store/image/StoreData.h"

#include <algorithm>
#include <array>

namespace vex {

/// Compares one property of object after object with a text, in steps, each for
/// a batch of objects: what a step fetches from memory is there when the next
/// one needs it.
class Model::ValueSearch {
public:
    static constexpr std::size_t BatchSize = 32;

    ValueSearch(Model const& model, I18NString const& name, I18NLocale const* locale,
                std::u16string_view text)
        : m_model(model), m_data(*model.m_data), m_name(name), m_locale(locale), m_text(text),
          m_isName(isName(name)) {}

    /// How many of at most `BatchSize` objects have another text, up to the first
    /// that has not.
    std::size_t find(std::span<VEX_HANDLE const> objects, VexTextMatch& match) {
        for (VEX_HANDLE const object : objects) {
            DecodedHandle const decoded = m_model.decode(object);
            if (decoded.kind == Kind::Element) {
                __builtin_prefetch(&m_data.elements[decoded.number]);
            }
        }
        std::array<std::uint32_t, BatchSize> indexes;
        for (std::size_t i = 0; i < objects.size(); ++i) {
            indexes[i] = findValue(objects[i]);
            if (indexes[i] != NotFound) {
                __builtin_prefetch(&m_data.values[indexes[i]]);
            }
        }
        std::array<TextRef, BatchSize> values;
        for (std::size_t i = 0; i < objects.size(); ++i) {
            values[i] = indexes[i] == NotFound ? 0 : m_data.values[indexes[i]];
            __builtin_prefetch(m_data.texts.begin(values[i]));
        }
        for (std::size_t i = 0; i < objects.size(); ++i) {
            match = values[i] == 0                           ? VexTextMatch::NoText
                    : m_data.texts.equals(values[i], m_text) ? VexTextMatch::Same
                                                             : VexTextMatch::Different;
            if (match != VexTextMatch::Different) {
                return i;
            }
        }
        return objects.size();
    }

private:
    // The index of the value; `NotFound` when there is none.
    std::uint32_t findValue(VEX_HANDLE object) {
        DecodedHandle const decoded = m_model.decode(object);
        if (m_isName && decoded.kind == Kind::Element) {
            ElementRecord const& element = m_data.elements[decoded.number];
            if (element.shape != m_shape) { // neighbours mostly are of one
                chooseOffset(element.shape);
            }
            if (m_offset != NotFound) {
                return element.firstValue + m_offset;
            }
        }
        VEX_HANDLE const property = m_model.GetPropertyByName(object, m_name, m_locale);
        DecodedHandle const found = m_model.decode(property);
        // A collection has no value.
        return property.IsNotNull() && found.kind == Kind::Value ? found.number : NotFound;
    }

    void chooseOffset(std::uint32_t shape) {
        Shape const& of = m_data.shapes[shape];
        std::span<std::uint32_t const> const named = m_data.shapes.namedName(of);
        m_shape = shape;
        m_offset = named.empty() ? NotFound : m_data.chooseOffset(of, named, m_locale);
    }

    Model const& m_model;
    StoreData const& m_data;
    I18NString const& m_name;
    I18NLocale const* m_locale;
    std::u16string_view m_text;
    bool m_isName;
    std::uint32_t m_shape = NotFound;
    std::uint32_t m_offset = NotFound; // of the name among the values of that shape
};

std::size_t Model::FindPropertyValue(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                     I18NLocale const* locale, I18NString const& text,
                                     VexTextMatch& match) const {
    ValueSearch search(*this, name, locale, text.view());
    match = VexTextMatch::Different;
    std::size_t before = 0;
    while (match == VexTextMatch::Different && before != objects.size()) {
        Budget::charge();
        std::size_t const count = std::min(objects.size() - before, ValueSearch::BatchSize);
        before += search.find(objects.subspan(before, count), match);
    }
    return before;
}

} // namespace vex
