#pragma once

#include "I18NHash.h"
#include "VexTextSet.h"
#include "host/store/image/StoreIndex.h"
#include "host/store/image/TextTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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

    /// Adds a text; one that is there already changes nothing.
    void add(TextRef text);

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
    /// The slot with that text, or the free one where it is to be.
    std::size_t find(std::uint32_t hash, std::u16string_view text) const;

    std::shared_ptr<StoreData const> m_data;
    std::uint64_t m_seed = I18NHashSeed();
    std::vector<Slot> m_slots; // at least one of them free
    std::size_t m_size = 0;
};

} // namespace vex
