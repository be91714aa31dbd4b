#include "host/store/image/TextRefSet.h"

#include "host/store/image/StoreData.h"

#include <utility>

namespace vex {

TextRefSet::TextRefSet(std::shared_ptr<StoreData const> data, std::size_t room)
    : m_data(std::move(data)), m_slots(slotCountFor(room), Slot{0, NotFound}) {}

std::size_t TextRefSet::byteCountFor(std::size_t room) {
    return sizeof(TextRefSet) + slotCountFor(room) * sizeof(Slot);
}

std::size_t TextRefSet::find(std::uint32_t hash, std::u16string_view text) const {
    constexpr unsigned half = 32;
    auto at = static_cast<std::size_t>((std::uint64_t{hash} * m_slots.size()) >> half);
    while (m_slots[at].text != NotFound &&
           (m_slots[at].hash != hash || !m_data->texts.equals(m_slots[at].text, text))) {
        at = at + 1 == m_slots.size() ? 0 : at + 1;
    }
    return at;
}

void TextRefSet::add(TextRef text) {
    std::u16string_view const units = m_data->texts.view(text);
    std::uint32_t const hash = hashOf(units);
    Slot& slot = m_slots[find(hash, units)];
    if (slot.text == NotFound) {
        slot = {hash, text};
        ++m_size;
    }
}

bool TextRefSet::contains(I18NString const& text) const {
    return m_slots[find(hashOf(text.view()), text.view())].text != NotFound;
}

void TextRefSet::appendTo(std::vector<std::u16string_view>& texts) const {
    texts.reserve(texts.size() + m_size);
    for (Slot const& slot : m_slots) {
        if (slot.text != NotFound) {
            texts.push_back(m_data->texts.view(slot.text));
        }
    }
}

} // namespace vex
