#include "host/store/build/WrittenModel.h"

#include "host/store/build/StoreBuilder.h"

#include <string>

namespace vex {

WrittenModel::WrittenModel(StoreBuilder& store, I18NLocale defaultLocale)
    : m_store(store), m_elements(store.m_data->elements), m_flushed(store.m_flushed),
      m_queue(store.m_queue), m_shapes(store.m_shapes.table()), m_defaultLocale(defaultLocale),
      m_count(static_cast<ElementNumber>(store.elementCount())), m_name(store.m_data->nameName) {
    m_store.m_queue.finish();
    m_nameOffsets.assign(shapeCount(), NotLooked);
}

DocumentPosition WrittenModel::position(ElementNumber element) const {
    CompactArray<KeptPosition> const& positions = m_store.m_data->positions;
    return positions.empty() ? DocumentPosition{}
                             : DocumentPosition{positions[element].line, positions[element].column};
}

std::size_t WrittenModel::textEnd() const {
    return m_store.m_texts.end();
}

// As a finished model finds it: the default language, a more general one, none.
std::uint32_t WrittenModel::findNameOffset(Shape const& shape) const {
    std::span<ShapeEntry const> const all = entries(shape);
    for (I18NLocale wanted = m_defaultLocale;; wanted = wanted.getParent()) {
        std::uint32_t const locale = wanted.getNumber();
        for (std::uint32_t offset = shape.ownCount; offset < all.size(); ++offset) {
            if (all[offset].name == m_name && all[offset].locale == locale) {
                return offset;
            }
        }
        if (locale == 0) {
            return NotFound;
        }
    }
}

std::u16string_view WrittenModel::text(TextRef text) const {
    return m_store.m_texts.begin(text);
}

std::u16string_view WrittenModel::className(ElementNumber element) const {
    return m_store.nameText(classOf(element));
}

TextRef WrittenModel::numberOf(std::u16string_view text) const {
    return m_store.m_texts.find(text);
}

Atom WrittenModel::nameNumberOf(std::u16string_view name) const {
    return m_store.m_names.find(name, m_store.m_texts);
}

bool WrittenModel::isId(TextRef text) const {
    return text != 0 && text != NotFound && m_store.isId(text);
}

} // namespace vex
