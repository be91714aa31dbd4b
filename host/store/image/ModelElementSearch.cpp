// The elements below many objects that have one thing in common.

#include "host/store/image/Budget.h"
#include "host/store/image/Model.h"
#include "host/store/image/StoreData.h"

#include <algorithm>

namespace vex {

namespace {

/// Tells which elements have a property with one text. Neighbours are mostly of one
/// shape and share their texts, so what was found out about one is kept for the next.
class ElementsWithText {
public:
    /// All must outlive this.
    ElementsWithText(StoreData const& data, Atom name, I18NLocale const* locale,
                     std::u16string_view text)
        : m_data(data), m_name(name), m_locale(locale), m_text(text) {}

    bool contains(ElementNumber number) {
        ElementRecord const& element = m_data.elements[number];
        if (element.shape != m_shape) {
            m_shape = element.shape;
            m_offset = offsetIn(m_data.shapes[m_shape]);
        }
        TextRef const value =
            m_offset == NotFound ? 0 : m_data.values[element.firstValue + m_offset];
        if (value == 0) {
            return false;
        }
        if (value != m_same && m_data.texts.equals(value, m_text)) {
            m_same = value;
        }
        return value == m_same;
    }

private:
    std::uint32_t offsetIn(Shape const& shape) const {
        if (m_name == m_data.idName) { // an element's first value
            return shape.has(Own::Id) ? 0 : NotFound;
        }
        return m_data.findOffset(shape, m_name, m_locale);
    }

    StoreData const& m_data;
    Atom m_name;
    I18NLocale const* m_locale;
    std::u16string_view m_text;
    std::uint32_t m_shape = NotFound;
    std::uint32_t m_offset = NotFound; // of the property among the values of that shape
    TextRef m_same = 0;                // a text that is the wanted one
};

/// Tells which elements are of one class, in the same way.
class ElementsOfClass {
public:
    ElementsOfClass(StoreData const& data, Atom cls) : m_data(data), m_class(cls) {}

    bool contains(ElementNumber number) {
        std::uint32_t const shape = m_data.elements[number].shape;
        if (shape != m_shape) {
            m_shape = shape;
            m_isOfClass = m_data.shapes[shape].cls == m_class;
        }
        return m_isOfClass;
    }

private:
    StoreData const& m_data;
    Atom m_class;
    std::uint32_t m_shape = NotFound;
    bool m_isOfClass = false;
};

} // namespace

void Model::FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                               I18NLocale const* locale, I18NString const& text,
                               I18NString const& tag, Vex_Handle_Collection& found) const {
    constexpr std::size_t batch = 32;
    constexpr ElementNumber few = 16;
    Budget::charge();
    Atom const property = m_data->names.find(name.view(), m_data->texts);
    Atom const cls = m_data->names.find(tag.view(), m_data->texts);
    if (property == NoAtom || cls == NoAtom) {
        return;
    }
    ElementsWithText withText(*m_data, property, locale, text.view());
    ElementsOfClass ofClass(*m_data, cls);
    ElementNumber taken = 0; // what lies behind it, up to the end, is inside
    ElementNumber takenEnd = 0;
    for (; !objects.empty(); objects = objects.subspan(std::min(batch, objects.size()))) {
        Budget::charge();
        for (VEX_HANDLE const object : objects.first(std::min(batch, objects.size()))) {
            auto const [kind, number] = decode(object);
            if (kind != Kind::Element || (number > taken && number < takenEnd) ||
                !withText.contains(number)) {
                continue;
            }
            taken = number;
            takenEnd = m_data->elements[number].end;
            if (takenEnd - taken > few) {
                appendElementsOf(taken, cls, found);
                continue;
            }
            // A few neighbours are looked at sooner than found among all of the class.
            for (ElementNumber below = taken + 1; below < takenEnd; ++below) {
                if (ofClass.contains(below)) {
                    found.push_back(elementHandle(below));
                }
            }
        }
    }
}

} // namespace vex
