#include "host/store/build/StoreBuilder.h"

#include <algorithm>

namespace vex {

namespace {

constexpr unsigned halfBits = 32;

// Few documents have less text of their own than this. Room for more would only
// spread the texts of the others over more memory than they need.
constexpr std::size_t bytesPerText = 400;
constexpr std::size_t bytesPerUnit = 20;

KeptPosition kept(DocumentPosition position) {
    auto const fitted = [](unsigned long number) {
        return static_cast<std::uint32_t>(std::min<unsigned long>(number, NotFound));
    };
    return {fitted(position.line), fitted(position.column)};
}

std::uint64_t valueKey(Atom name, std::uint32_t locale) {
    return (std::uint64_t{name} << halfBits) | locale;
}

} // namespace

StoreBuilder::StoreBuilder(bool keepPositions, std::size_t sourceSize)
    : m_data(std::make_unique<StoreData>()), m_texts(I18NHashSeed()), m_queue(m_texts),
      m_names(I18NHashSeed()), m_shapes(I18NHashSeed()), m_keepPositions(keepPositions) {
    m_data->hashSeed = I18NHashSeed();
    m_texts.reserve(sourceSize / bytesPerText, sourceSize / bytesPerUnit);
    m_data->idName = addName(u"ID");
    m_data->nameName = addName(u"name");
    m_data->namespaceName = addName(u"namespace");
    m_data->folderName = addName(u"folder");
    m_data->queryItemFolderName = addName(u"queryItemFolder");
    m_ownNames[static_cast<unsigned>(Own::Id)] = m_data->idName;
    m_ownNames[static_cast<unsigned>(Own::Role)] = addName(u"role");
    m_ownNames[static_cast<unsigned>(Own::Class)] = addName(u"class");
    m_ownNames[static_cast<unsigned>(Own::Text)] = addName(u"text");
}

void StoreBuilder::openElement(Atom cls, DocumentPosition position) {
    ElementNumber const element = static_cast<ElementNumber>(elementCount());
    ElementNumber const parent = m_frames.empty() ? NotFound : m_frames.back().element;
    m_data->elements.push_back({parent, element + 1, 0, 0});
    if (m_keepPositions) {
        m_data->positions.push_back(kept(position));
    }
    m_frames.push_back({static_cast<std::uint32_t>(m_entries.size()), element, cls, {}});
}

bool StoreBuilder::setId(std::u16string_view id, std::uint32_t hash) {
    TextRef const text = m_texts.add(id, hash);
    m_frames.back().own[static_cast<unsigned>(Own::Id)] = m_queue.add(text);
    if (text == 0) {
        return true;
    }
    m_idTexts.grow(text);
    if (m_idTexts[text]) {
        return false;
    }
    m_idTexts.set(text);
    ++m_idCount;
    return true;
}

void StoreBuilder::closeElement() {
    Frame const& frame = m_frames.back();
    std::uint8_t own = 0;
    ElementRecord& record = m_data->elements[frame.element];
    record.firstValue = static_cast<std::uint32_t>(m_flushed.size()); // until all are placed
    for (unsigned which = 0; which < OwnCount; ++which) {
        if (frame.own[which] != 0) {
            own = static_cast<std::uint8_t>(own | 1U << which);
            m_flushed.push_back(frame.own[which]);
        }
    }
    record.end = static_cast<ElementNumber>(elementCount());
    record.shape = m_shapes.add(frame.cls, own, entriesOf(frame), m_ownNames);
    flushValues(frame, frame.element, static_cast<unsigned>(m_flushed.size()) - record.firstValue);
    dropFrame();
}

void StoreBuilder::openProperty() {
    m_frames.push_back({static_cast<std::uint32_t>(m_entries.size()), NotFound, NoAtom, {}});
}

std::uint32_t StoreBuilder::closeProperty() {
    Frame const& frame = m_frames.back();
    std::uint32_t number = NotFound;
    if (m_entries.size() != frame.firstEntry) {
        number = static_cast<std::uint32_t>(m_owners.size());
        PendingOwner owner;
        owner.shape = m_shapes.add(NoAtom, 0, entriesOf(frame), m_ownNames);
        owner.firstFlushed = static_cast<std::uint32_t>(m_flushed.size());
        m_owners.push_back(owner);
        flushValues(frame, number, 0);
    }
    dropFrame();
    return number;
}

void StoreBuilder::addValue(ShapeEntry const& entry, std::u16string_view text,
                            std::uint32_t properties) {
    m_entries.push_back(entry);
    m_entryTexts.push_back(m_queue.add(text));
    m_entryProperties.push_back(properties);
    auto const many =
        m_manyValues.empty() ? m_manyValues.end() : m_manyValues.find(m_frames.size());
    if (many != m_manyValues.end()) {
        many->second.insert(valueKey(entry.name, entry.locale));
    }
}

bool StoreBuilder::hasValue(Atom name, std::uint32_t locale) {
    std::span<ShapeEntry const> const entries = entriesOf(m_frames.back());
    if (entries.size() <= ManyValues) {
        return std::any_of(entries.begin(), entries.end(), [=](ShapeEntry const& entry) {
            return entry.name == name && entry.locale == locale;
        });
    }
    auto const [many, isNew] = m_manyValues.try_emplace(m_frames.size());
    if (isNew) {
        for (ShapeEntry const& entry : entries) {
            many->second.insert(valueKey(entry.name, entry.locale));
        }
    }
    return many->second.contains(valueKey(name, locale));
}

// Puts a frame's simple values behind what was flushed before; `container` is
// what they belong to.
void StoreBuilder::flushValues(Frame const& frame, std::uint32_t container, unsigned ownCount) {
    std::size_t const count = m_entries.size() - frame.firstEntry;
    m_flushed.append(m_entryTexts.data() + frame.firstEntry, count);
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t const properties = m_entryProperties[frame.firstEntry + i];
        if (properties != NotFound) {
            PendingOwner& owner = m_owners[properties];
            owner.container = container;
            owner.inElement = frame.element != NotFound;
            owner.offset = ownCount + i;
        }
    }
}

void StoreBuilder::dropFrame() {
    std::uint32_t const firstEntry = m_frames.back().firstEntry;
    m_entries.truncate(firstEntry);
    m_entryTexts.truncate(firstEntry);
    m_entryProperties.truncate(firstEntry);
    if (!m_manyValues.empty()) {
        m_manyValues.erase(m_frames.size());
    }
    m_frames.truncate(m_frames.size() - 1);
}

std::unique_ptr<StoreData const> StoreBuilder::finish(I18NLocale defaultLocale,
                                                      std::vector<I18NLocale> locales,
                                                      std::vector<I18NLocale> usedLocales) && {
    m_data->defaultLocale = defaultLocale;
    m_data->locales = std::move(locales);
    m_data->usedLocales = LocaleNumbers(std::move(usedLocales));
    m_queue.finish();
    m_data->texts = std::move(m_texts).finish();
    m_data->names = std::move(m_names).finish();
    m_data->shapes =
        std::move(m_shapes).finish(m_data->usedLocales, defaultLocale, m_data->nameName);
    m_data->elements.shrink();
    m_data->positions.shrink();
    placeElementValues();
    placePropertyValues();
    m_data->propertyOwners.shrink();
    m_flushed = {};
    indexStore(*m_data, m_idCount);
    return std::move(m_data);
}

// Puts the texts of what was flushed where they stay.
void StoreBuilder::placeValues(std::uint32_t firstFlushed, std::uint32_t count,
                               std::uint32_t first) {
    for (std::uint32_t i = 0; i < count; ++i) {
        m_data->values[first + i] = m_queue[m_flushed[firstFlushed + i]];
    }
}

// Elements end in another order than they begin.
void StoreBuilder::placeElementValues() {
    StoreData& data = *m_data;
    data.values.extend(m_flushed.size());
    data.values.shrink();
    std::uint32_t next = 0;
    for (ElementNumber element = 0; element < data.elementCount(); ++element) {
        std::uint32_t& first = data.elements[element].firstValue;
        std::uint32_t const entries = data.shapeOf(element).entryCount;
        placeValues(first, entries, next);
        first = next;
        next += entries;
    }
    data.elementValueCount = next;
}

// The properties of elements' properties first, then theirs, and so on: so the
// owners ascend by their own place and by that of their values.
void StoreBuilder::placePropertyValues() {
    StoreData& data = *m_data;
    std::vector<std::uint32_t> order;
    std::vector<std::vector<std::uint32_t>> inner(m_owners.size());
    for (std::uint32_t number = 0; number < m_owners.size(); ++number) {
        PendingOwner const& owner = m_owners[number];
        (owner.inElement ? order : inner[owner.container]).push_back(number);
    }
    auto const indexInElement = [&](std::uint32_t number) {
        return data.elements[m_owners[number].container].firstValue + m_owners[number].offset;
    };
    std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return indexInElement(a) < indexInElement(b);
    });
    for (std::uint32_t const number : order) {
        data.propertyOwners.push_back({indexInElement(number), m_owners[number].shape, 0});
    }
    std::uint32_t next = data.elementValueCount;
    for (std::size_t at = 0; at < order.size(); ++at) {
        PendingOwner const& owner = m_owners[order[at]];
        data.propertyOwners[at].firstValue = next;
        std::uint32_t const entries = data.shapes[owner.shape].entryCount;
        placeValues(owner.firstFlushed, entries, next);
        for (std::uint32_t const number : inner[order[at]]) { // ascending by offset
            data.propertyOwners.push_back(
                {next + m_owners[number].offset, m_owners[number].shape, 0});
            order.push_back(number);
        }
        next += entries;
    }
}

} // namespace vex
