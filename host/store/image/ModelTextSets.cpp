// Which sets of texts a model has ready, and how it makes one.

#include "host/store/image/ModelTextSets.h"

#include "host/store/image/Budget.h"
#include "host/store/image/Model.h"
#include "host/store/image/StoreData.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace vex {

ModelTextSets::Turn::Turn(ModelTextSets& sets, Question question) : m_sets(sets) {
    std::lock_guard const lock(m_sets.m_mutex);
    m_place = m_sets.m_sets.find(question);
    if (m_place != m_sets.m_sets.end()) {
        m_set = m_place->second;
    } else if (!m_sets.m_isFull) {
        m_place = m_sets.m_sets.emplace(std::move(question), nullptr).first;
        m_isToMake = true;
    }
}

ModelTextSets::Turn::~Turn() {
    if (m_isToMake) {
        std::lock_guard const lock(m_sets.m_mutex);
        m_sets.m_sets.erase(m_place);
        m_sets.m_room += m_taken;
    }
}

bool ModelTextSets::Turn::takeRoom(std::size_t texts) {
    std::lock_guard const lock(m_sets.m_mutex);
    std::size_t const wanted = texts + 1; // one without texts takes some too
    if (wanted > m_sets.m_room) {
        m_sets.m_isFull = true;
        return false;
    }
    m_sets.m_room -= wanted;
    m_taken = wanted;
    return true;
}

void ModelTextSets::Turn::finish(std::shared_ptr<VexTextSet const> set) {
    std::lock_guard const lock(m_sets.m_mutex);
    m_set = std::move(set);
    m_place->second = m_set;
    m_sets.m_bytes += sizeof *m_place + TextRefSet::byteCountFor(m_taken - 1);
    m_isToMake = false;
}

std::size_t ModelTextSets::byteCount() const {
    std::lock_guard const lock(m_mutex);
    return sizeof *this + m_bytes;
}

std::shared_ptr<VexTextSet const> Model::FindTextSet(VEX_HANDLE object, I18NString const& within,
                                                     I18NString const& name, I18NString const& text,
                                                     I18NString const& tag) const {
    constexpr std::size_t batch = TextRefSet::MostAtOnce;
    Budget::charge();
    DecodedHandle const decoded = decode(object);
    if (decoded.kind != Kind::Element) {
        return nullptr;
    }
    auto const atomOf = [this](I18NString const& word) {
        return m_data->names.find(word.view(), m_data->texts);
    };
    ModelTextSets::Turn turn(*m_textSets, {decoded.number, atomOf(within), atomOf(name),
                                           atomOf(tag), std::u16string(text.view())});
    if (!turn.isToMake()) {
        return turn.set();
    }
    Vex_Handle_Collection holders;
    getElementsByTagName(object, within, holders);
    Vex_Handle_Collection elements;
    FindElementsWithin({holders.begin(), holders.end()}, name, nullptr, text, tag, elements);
    if (!turn.takeRoom(elements.size())) {
        return nullptr;
    }
    auto const set = std::make_shared<TextRefSet>(m_data, elements.size());
    std::array<TextRef, batch> texts;
    for (std::span<VEX_HANDLE const> left{elements.begin(), elements.end()}; !left.empty();) {
        Budget::charge();
        std::size_t const count = std::min(batch, left.size());
        for (std::size_t i = 0; i < count; ++i) {
            texts[i] = m_data->ownText(decode(left[i]).number, Own::Text);
        }
        set->add({texts.data(), count});
        left = left.subspan(count);
    }
    turn.finish(set);
    return set;
}

} // namespace vex
