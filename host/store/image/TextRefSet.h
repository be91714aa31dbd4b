#pragma once

#include "I18NHash.h"
#include "VexTextSet.h"
#include "host/store/image/StoreIndex.h"
#include "host/store/image/TextTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace vex {

struct StoreData;

/// Some of a model's texts, found by their hashes; the texts themselves stay where they
/// are. Takes 12 bytes for each that was added. The hashes are those of the process: an image
/// cannot bring texts along that stand in each other's way.
class TextRefSet final : public VexTextSet {
public:
    /// With room for so many texts. The data outlives the model with this set.
    TextRefSet(std::shared_ptr<StoreData const> data, std::size_t room);

    /// Adds texts, `MostAtOnce` or fewer; one that is there already changes nothing.
    void add(std::span<TextRef const> texts);
    static constexpr std::size_t MostAtOnce = 32;

    bool contains(I18NString const& text) const override;
    std::size_t size() const override { return m_size; }
    void appendTo(std::vector<std::u16string_view>& texts) const override;

    static std::size_t byteCountFor(std::size_t room);

private:
    struct Slot {
        std::uint32_t hash;
        TextRef text; // NotFound: free
    };
    static std::size_t slotCountFor(std::size_t room) { return room + room / 2 + 1; }

    std::uint32_t hashOf(std::u16string_view text) const {
        constexpr unsigned half = 32;
        return static_cast<std::uint32_t>(I18NHashText(text, m_seed) >> half);
    }
    /// Where the search for a hash begins.
    std::size_t home(std::uint32_t hash) const {
        constexpr unsigned half = 32;
        return static_cast<std::size_t>((std::uint64_t{hash} * m_slots.size()) >> half);
    }
    /// The slot with that text, or the free one where it is to be.
    std::size_t find(std::uint32_t hash, std::u16string_view text) const;

    std::shared_ptr<StoreData const> m_data;
    std::uint64_t m_seed = I18NHashSeed();
    std::vector<Slot> m_slots; // at least one of them free
    std::size_t m_size = 0;
};

} // namespace vex
