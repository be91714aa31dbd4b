#pragma once

#include "I18NHash.h"
#include "host/store/build/NameTableBuilder.h"
#include "host/store/build/ShapeTableBuilder.h"
#include "host/store/build/TextTableBuilder.h"
#include "host/store/image/StoreData.h"

#include <map>
#include <memory>
#include <unordered_set>

namespace vex {

/// Builds the store of a model from its elements and properties in the order in
/// which they begin and end. It trusts its only user, `ModelWriter`: what a model
/// may not hold was refused before.
class StoreBuilder {
public:
    /// `sourceSize` is the size of the source in bytes, 0 when unknown; it is
    /// only a hint.
    StoreBuilder(bool keepPositions, std::size_t sourceSize);

    Atom addName(std::u16string_view name) { return m_names.add(name, m_texts); }
    /// Valid until a text is added.
    std::u16string_view nameText(Atom name) const { return m_names.view(name, m_texts); }
    TextRef addText(std::u16string_view text) { return m_texts.add(text); }
    std::uint32_t prepareText(std::u16string_view text) const { return m_texts.prepare(text); }

    void openElement(Atom cls, DocumentPosition position);
    /// The empty text leaves the element without that value.
    void setOwn(Own which, std::u16string_view text) {
        m_frames.back().own[static_cast<unsigned>(which)] = m_queue.add(text);
    }
    void setOwn(Own which, TextRef text) {
        m_frames.back().own[static_cast<unsigned>(which)] = m_queue.add(text);
    }
    /// False when another element has this id. `hash` is what `prepareText`
    /// gives for it, best asked for some time before.
    bool setId(std::u16string_view id, std::uint32_t hash);
    bool hasId() { return m_frames.back().own[static_cast<unsigned>(Own::Id)] != 0; }
    /// True when an element was given this text as its id.
    bool isId(TextRef text) {
        m_idTexts.grow(text);
        return m_idTexts[text];
    }
    void closeElement();

    /// What is added between the two are properties of a property.
    void openProperty();
    /// The number that `addValue` takes for the property's own properties;
    /// `NotFound` when there are none.
    std::uint32_t closeProperty();

    /// Adds a simple property to what was opened last.
    void addValue(ShapeEntry const& entry, std::u16string_view text,
                  std::uint32_t properties = NotFound);
    /// True when what was opened last has such a value.
    bool hasValue(Atom name, std::uint32_t locale);

    std::size_t elementCount() const { return m_data->elements.size(); }

    /// Ends the building; every element is closed. `usedLocales` are those of
    /// values, each once; their order is that of the model's own numbers.
    std::unique_ptr<StoreData const> finish(I18NLocale defaultLocale,
                                            std::vector<I18NLocale> locales,
                                            std::vector<I18NLocale> usedLocales) &&;

    /// For whoever reads what was added so far: `WrittenModel`.
    friend class WrittenModel;

private:
    struct Frame {
        std::uint32_t firstEntry; // in m_entries and m_entryTexts
        ElementNumber element;    // NotFound: a property
        Atom cls;
        TextQueue::Ticket own[OwnCount];
    };
    // The properties of a property, and where the property itself stands.
    struct PendingOwner {
        std::uint32_t container = NotFound; // an element, or another pending owner
        bool inElement = false;
        std::uint32_t offset = 0; // among the container's values
        std::uint32_t shape = 0;
        std::uint32_t firstFlushed = 0;
    };
    static constexpr std::size_t ManyValues = 32;
    // A source chooses which name and locale stand together.
    struct ValueKeyHash {
        std::size_t operator()(std::uint64_t key) const noexcept {
            return static_cast<std::size_t>(I18NMixHash(key, 0, I18NHashSeed()));
        }
    };
    using ValueKeys = std::unordered_set<std::uint64_t, ValueKeyHash>;

    std::span<ShapeEntry const> entriesOf(Frame const& frame) const {
        return {m_entries.data() + frame.firstEntry, m_entries.size() - frame.firstEntry};
    }
    void flushValues(Frame const& frame, std::uint32_t container, unsigned ownCount);
    void dropFrame();
    void placeValues(std::uint32_t firstFlushed, std::uint32_t count, std::uint32_t first);
    void placeElementValues();
    void placePropertyValues();

    std::unique_ptr<StoreData> m_data;
    TextTableBuilder m_texts;
    TextQueue m_queue;
    NameTableBuilder m_names;
    ShapeTableBuilder m_shapes;
    bool m_keepPositions;
    Atom m_ownNames[OwnCount];

    CompactArray<Frame> m_frames;
    CompactArray<ShapeEntry> m_entries; // of all frames
    CompactArray<TextQueue::Ticket> m_entryTexts;
    CompactArray<std::uint32_t> m_entryProperties;

    // The values of elements in the order in which these end.
    CompactArray<TextQueue::Ticket> m_flushed;
    std::vector<PendingOwner> m_owners;
    std::map<std::size_t, ValueKeys> m_manyValues; // by frame

    BitArray m_idTexts; // by `TextRef`
    std::size_t m_idCount = 0;
};

/// Works out what follows from the elements and values of a store: marks,
/// indexes. `idCount` is the number of elements with an id.
void indexStore(StoreData& store, std::size_t idCount);

} // namespace vex
