#include "host/store/build/TextTableBuilder.h"

#include "KRLException.h"
#include "host/store/image/SameText.h"

namespace vex {

TextTableBuilder::TextTableBuilder(std::uint64_t seed) : m_seed(seed) {
    m_units.push_back(0); // the empty text
}

TextRef TextTableBuilder::find(std::u16string_view text, std::uint32_t hash) const {
    return m_found.find(hash, [this, text](TextRef other) {
        // What stands behind the last text is not read.
        return text.size() < m_units.size() - other && m_units[other + text.size()] == 0 &&
               isSameText({m_units.data() + other, text.size()}, text);
    });
}

TextRef TextTableBuilder::add(std::u16string_view text, std::uint32_t hash) {
    if (text.empty()) {
        return 0;
    }
    TextRef const found = find(text, hash);
    if (found != NotFound) {
        return found;
    }
    if (text.size() >= NotFound - m_units.size()) {
        throw KRLLimitException("the texts of one model hold at most 4294967295 UTF-16 code "
                                "units; split the model");
    }
    TextRef const added = static_cast<TextRef>(m_units.size());
    m_units.append(text.data(), text.size());
    m_units.push_back(0);
    m_found.add(hash, added);
    return added;
}

TextTable TextTableBuilder::finish() && {
    m_found = {};
    for (std::size_t i = 0; i < TextTable::BlockUnits; ++i) {
        m_units.push_back(0);
    }
    m_units.shrink();
    return TextTable(std::move(m_units));
}

TextQueue::Ticket TextQueue::add(std::u16string_view text) {
    if (text.empty()) {
        return 0;
    }
    Ticket const ticket = next();
    m_batch.push_back({m_units.size(), text.size(), m_texts.prepare(text), ticket});
    m_units.append(text.data(), text.size());
    if (m_batch.size() == BatchSize) {
        finish();
    }
    return ticket;
}

TextQueue::Ticket TextQueue::add(TextRef text) {
    Ticket const ticket = text == 0 ? 0 : next();
    m_added[ticket] = text;
    return ticket;
}

void TextQueue::finish() {
    for (Waiting const& waiting : m_batch) {
        m_texts.prepareComparison(waiting.hash);
    }
    for (Waiting const& waiting : m_batch) {
        m_added[waiting.ticket] =
            m_texts.add({m_units.data() + waiting.firstUnit, waiting.length}, waiting.hash);
    }
    m_batch.truncate(0);
    m_units.truncate(0);
}

TextQueue::Ticket TextQueue::next() {
    if (m_added.size() >= NotFound) {
        throw KRLLimitException("one model holds at most 4294967294 texts; split the model");
    }
    m_added.push_back(0);
    return static_cast<Ticket>(m_added.size() - 1);
}

} // namespace vex
