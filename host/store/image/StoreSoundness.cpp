// Whether arrays that were read can be used: each number that somebody follows leads to
// something, each search ends. What they mean is not asked: a table that was made up finds
// something else or nothing.

#include "host/store/image/StoreSoundness.h"

#include <bit>

namespace vex {

namespace {

/// The largest of them; 0 when there are none.
std::uint32_t largest(std::uint32_t const* first, std::size_t count) {
    std::uint32_t most = 0;
    for (std::size_t at = 0; at < count; ++at) {
        most = std::max(most, first[at]);
    }
    return most;
}

bool areBelow(std::uint32_t const* first, std::size_t count, std::size_t bound) {
    return count == 0 || largest(first, count) < bound;
}

/// A range that lies in `size` things.
bool isWithin(std::uint64_t first, std::uint64_t count, std::size_t size) {
    return first <= size && count <= size - first;
}

} // namespace

char const* TextTable::complaint() const {
    if (m_units.size() <= BlockUnits || m_units.size() - BlockUnits > NotFound) {
        return "the table of texts is too short or too long";
    }
    char16_t const* const behind = m_units.end();
    return m_units[0] == 0 &&
                   std::all_of(behind - BlockUnits, behind, [](char16_t unit) { return unit == 0; })
               ? nullptr
               : "the table of texts has no end";
}

char const* HashSlots::complaint(std::size_t count) const {
    if (!std::has_single_bit(m_slots.size())) {
        return "a hash table has no possible size";
    }
    bool hasFree = false;
    for (Slot const& slot : m_slots) {
        if (slot.number != NotFound && slot.number >= count) {
            return "a hash table leads nowhere";
        }
        hasFree = hasFree || slot.number == NotFound;
    }
    return hasFree ? nullptr : "a hash table is full";
}

char const* NameTable::complaint(TextTable const& texts) const {
    for (Name const& name : m_names) {
        if (!isWithin(name.text, name.length, texts.end())) {
            return "a name is not among the texts";
        }
    }
    return m_found.complaint(m_names.size());
}

char const* ShapeTable::complaintAbout(Shape const& shape) const {
    std::size_t const simpleCount = shape.entryCount - shape.ownCount;
    // Those of the property "name" are some of the simple ones.
    if (shape.firstName < shape.firstEntry ||
        !isWithin(shape.firstName - shape.firstEntry, shape.nameCount, simpleCount)) {
        return "the names of a shape are not its own";
    }
    return areBelow(m_listed.data() + shape.firstListed, shape.listedCount, shape.entryCount) &&
                   areBelow(m_byName.data() + shape.firstEntry, simpleCount, shape.entryCount)
               ? nullptr
               : "a shape speaks of values that it does not have";
}

char const* ShapeTable::complaint(Bounds const& bounds) const {
    for (ShapeEntry const& entry : m_entries) {
        if (entry.name >= bounds.names || entry.locale > bounds.locales ||
            entry.role >= bounds.texts) {
            return "an entry of a shape leads nowhere";
        }
    }
    // One behind the other: each entry is looked at once.
    std::uint64_t entries = 0;
    std::uint64_t listed = 0;
    for (Shape const& shape : m_shapes) {
        bool const isInPlace = shape.firstEntry == entries && shape.firstListed == listed;
        entries += shape.entryCount;
        listed += shape.listedCount;
        bool const isPossible =
            shape.own < (1U << OwnCount) &&
            shape.ownCount == std::popcount(static_cast<unsigned>(shape.own)) &&
            shape.entryCount >= shape.ownCount &&
            (shape.cls < bounds.names || (shape.cls == NoAtom && shape.own == 0));
        if (!isInPlace || !isPossible || entries > m_entries.size() || listed > m_listed.size()) {
            return "a shape is impossible";
        }
    }
    if (entries != m_entries.size() || listed != m_listed.size() ||
        m_byName.size() != m_entries.size()) {
        return "the entries of shapes are not theirs";
    }
    for (Shape const& shape : m_shapes) {
        if (char const* const problem = complaintAbout(shape)) {
            return problem;
        }
    }
    return nullptr;
}

char const* FixedHash::complaint(std::size_t count) const {
    std::uint32_t most = 0;
    bool hasFree = false;
    for (std::uint32_t const number : m_slots) {
        most = std::max(most, number == NotFound ? 0 : number);
        hasFree |= number == NotFound;
    }
    return !hasFree ? "an index is full" : most >= count ? "an index leads nowhere" : nullptr;
}

char const* ClassIndex::complaint(std::size_t classes, std::size_t elements) const {
    if (m_first.size() != classes + 1 || m_elements.size() != elements || m_first[0] != 0 ||
        m_first[classes] != elements || !std::is_sorted(m_first.begin(), m_first.end())) {
        return "the index of classes is impossible";
    }
    return areBelow(m_elements.data(), elements, elements) ? nullptr
                                                           : "the index of classes leads nowhere";
}

namespace {

/// The elements: each in the one that was opened last, their values one behind the other.
class ElementCheck {
public:
    ElementCheck(StoreData const& data, std::size_t depth) : m_data(data), m_depth(depth) {}

    char const* complaint() {
        ElementNumber const count = m_data.elementCount();
        m_open.reserve(m_depth);
        for (ElementNumber element = 0; element < count; ++element) {
            if (char const* const problem = complaintAbout(element)) {
                return problem;
            }
        }
        return m_values == m_data.elementValueCount && m_marks == m_data.ownerMarks.size()
                   ? nullptr
                   : "the values of objects are not theirs";
    }

private:
    char const* complaintAbout(ElementNumber element) {
        ElementRecord const& record = m_data.elements[element];
        while (!m_open.empty() && m_open.back().end <= element) {
            m_open.pop_back();
        }
        Open const around = m_open.empty() ? Open{NotFound, m_data.elementCount()} : m_open.back();
        bool const isInside = record.parent == around.element && record.end > element &&
                              record.end <= around.end && (element == 0) == m_open.empty();
        if (!isInside || record.shape >= m_data.shapes.size()) {
            return "an object is not inside of another one";
        }
        if (record.end != element + 1) {
            m_open.push_back({element, record.end});
            if (m_open.size() >= m_depth) {
                return "objects are nested deeper than a model may be";
            }
        }
        Shape const& shape = m_data.shapes[record.shape];
        bool const isObject = shape.cls != NoAtom;
        bool const isNext = record.firstValue == m_values;
        m_values += shape.entryCount;
        for (; m_marks * StoreData::ValuesPerOwnerMark < m_values; ++m_marks) {
            if (m_marks == m_data.ownerMarks.size() || m_data.ownerMarks[m_marks] != element) {
                return "a value does not find its object";
            }
        }
        return isObject && isNext ? nullptr : "the values of an object are not its own";
    }

    struct Open {
        ElementNumber element;
        ElementNumber end;
    };

    StoreData const& m_data;
    std::size_t m_depth;
    std::vector<Open> m_open; // those with something inside
    std::uint64_t m_values = 0;
    std::size_t m_marks = 0;
};

/// Properties with properties of their own: each behind the one that it belongs to.
char const* complaintAboutOwners(StoreData const& data, std::size_t depth) {
    std::uint64_t values = data.elementValueCount;
    std::vector<std::uint32_t> depths; // by owner
    depths.reserve(data.propertyOwners.size());
    std::uint32_t before = 0;
    for (PropertyOwner const& owner : data.propertyOwners) {
        bool const isPossible = (depths.empty() || owner.value > before) && owner.value < values &&
                                owner.firstValue == values && owner.shape < data.shapes.size() &&
                                data.shapes[owner.shape].cls == NoAtom &&
                                data.shapes[owner.shape].entryCount != 0;
        if (!isPossible) {
            return "a property is not inside of another one";
        }
        before = owner.value;
        std::uint32_t inside = 1;
        if (owner.value >= data.elementValueCount) {
            auto const around = std::upper_bound(
                data.propertyOwners.begin(), &owner, owner.value,
                [](std::uint32_t value, PropertyOwner const& of) { return value < of.firstValue; });
            inside += depths[static_cast<std::size_t>(around - data.propertyOwners.begin()) - 1];
        }
        if (inside >= depth) {
            return "properties are nested deeper than a model may be";
        }
        depths.push_back(inside);
        values += data.shapes[owner.shape].entryCount;
    }
    return values == data.values.size() ? nullptr : "the values of properties are not theirs";
}

} // namespace

char const* complaintAbout(StoreData const& data, std::size_t depth) {
    std::size_t const count = data.elements.size();
    if (char const* const problem = data.texts.complaint()) {
        return problem;
    }
    if (count == 0 || count >= NotFound || data.values.size() >= NotFound ||
        data.elementValueCount > data.values.size()) {
        return "it holds no model, or more than a model may be";
    }
    if (!data.firstOfClass.holds(count) ||
        (!data.positions.empty() && data.positions.size() != count)) {
        return "what is kept of objects is not there for each";
    }
    for (Atom const known : {data.idName, data.nameName, data.namespaceName, data.folderName,
                             data.queryItemFolderName}) {
        if (known >= data.names.size()) {
            return "a name is missing";
        }
    }
    if (!areBelow(data.values.data(), data.values.size(), data.texts.end())) {
        return "a value is not among the texts";
    }
    // In an order in which each may rely on what was looked at before.
    char const* problem = data.names.complaint(data.texts);
    if (problem == nullptr) {
        problem =
            data.shapes.complaint({data.names.size(), data.usedLocales.count(), data.texts.end()});
    }
    if (problem == nullptr) {
        problem = ElementCheck(data, depth).complaint();
    }
    if (problem == nullptr) {
        problem = complaintAboutOwners(data, depth);
    }
    if (problem == nullptr) {
        problem = data.classes.complaint(data.names.size(), count);
    }
    if (problem == nullptr) {
        problem = data.ids.complaint(count);
    }
    return problem != nullptr ? problem : data.references.complaint(count);
}

} // namespace vex
