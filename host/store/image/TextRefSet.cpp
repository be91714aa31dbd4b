#include "host/store/image/TextRefSet.h"

#include "host/store/image/StoreData.h"

#include <array>
#include <utility>

namespace vex {

TextRefSet::TextRefSet(std::shared_ptr<StoreData const> data, std::size_t room)
    : m_data(std::move(data)), m_slots(slotCountFor(room), Slot{0, NotFound}) {}

std::size_t TextRefSet::byteCountFor(std::size_t room) {
    return sizeof(TextRefSet) + slotCountFor(room) * sizeof(Slot);
}

std::size_t TextRefSet::find(std::uint32_t hash, std::u16string_view text) const {
    std::size_t at = home(hash);
    while (m_slots[at].text != NotFound &&
           (m_slots[at].hash != hash || !m_data->texts.equals(m_slots[at].text, text))) {
        at = at + 1 == m_slots.size() ? 0 : at + 1;
    }
    return at;
}

// In steps, each for all of them: what a step fetches from memory is there when the next
// one needs it.
void TextRefSet::add(std::span<TextRef const> texts) {
    std::array<std::u16string_view, MostAtOnce> units;
    std::array<std::uint32_t, MostAtOnce> hashes;
    for (TextRef const text : texts) {
        __builtin_prefetch(m_data->texts.begin(text));
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        units[i] = m_data->texts.view(texts[i]);
        hashes[i] = hashOf(units[i]);
        __builtin_prefetch(&m_slots[home(hashes[i])]);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Slot& slot = m_slots[find(hashes[i], units[i])];
        if (slot.text == NotFound) {
            slot = {hashes[i], texts[i]};
            ++m_size;
        }
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
