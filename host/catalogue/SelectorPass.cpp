#include "host/catalogue/SelectorPass.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace vex {

SelectorPass::SelectorPass(WrittenModel const& model, PolicySteps& steps)
    : m_model(model), m_steps(steps), m_namespace(model.nameNumberOf(u"namespace")),
      m_folder(model.nameNumberOf(u"folder")),
      m_queryItemFolder(model.nameNumberOf(u"queryItemFolder")),
      m_securityViews(model.nameNumberOf(u"securityViews")),
      m_securityView(model.nameNumberOf(u"securityView")) {}

std::size_t SelectorPass::add(Selector const& selector, bool onlyFirst) {
    Entry entry{&selector, onlyFirst};
    if (!selector.className.empty()) {
        entry.cls = m_model.nameNumberOf(selector.className);
    }
    if (selector.reach != Selector::Reach::Itself) {
        entry.bit = static_cast<std::uint32_t>(m_wide.size());
        m_wide.push_back(m_entries.size());
    }
    for (Selector::Test const& test : selector.tests) {
        entry.tests.push_back(
            {m_model.nameNumberOf(test.property), test.isWord ? 0 : m_model.numberOf(test.value),
             test.isWord ? std::u16string_view(test.value) : std::u16string_view()});
    }
    m_entries.push_back(std::move(entry));
    return m_entries.size() - 1;
}

void SelectorPass::set(Words& words, std::uint32_t bit) {
    words[bit / WordBits] |= std::uint64_t{1} << (bit % WordBits);
}

void SelectorPass::unite(Words& words, Words const& more) {
    for (std::size_t at = 0; at < more.size(); ++at) {
        words[at] |= more[at];
    }
}

void SelectorPass::prepare() {
    m_wordCount = (m_wide.size() + WordBits - 1) / WordBits;
    m_facts.resize(m_model.shapeCount());
    m_nodes.assign(m_model.elementCount(), NoNode);
    m_ends.resize(1);
    for (Words* const words : {&m_everywhere, &m_ofAnyClass, &m_untested, &m_here, &m_candidates}) {
        words->assign(m_wordCount, 0);
    }
    for (std::size_t number = 0; number < m_entries.size(); ++number) {
        preparePlace(number);
        if (m_entries[number].bit != NoBit) {
            prepareWide(number);
        }
    }
    for (auto& [cls, words] : m_ofClass) {
        unite(words, m_ofAnyClass);
    }
}

/// Where a selector begins to hold.
void SelectorPass::preparePlace(std::size_t number) {
    Selector const& selector = *m_entries[number].selector;
    if (selector.reach == Selector::Reach::Everywhere) {
        set(m_everywhere, m_entries[number].bit);
    } else if (!selector.id.empty()) {
        m_ids[m_model.numberOf(selector.id)].push_back(number);
    } else {
        std::uint32_t node = 0;
        for (std::u16string const& name : selector.reference) {
            auto const next = static_cast<std::uint32_t>(m_ends.size());
            auto const [at, isNew] =
                m_referenceSteps.try_emplace({node, m_model.numberOf(name)}, next);
            if (isNew) {
                m_ends.emplace_back();
            }
            node = at->second;
        }
        m_ends[node].push_back(number);
    }
}

/// What an object must be like for a selector that means many.
void SelectorPass::prepareWide(std::size_t number) {
    Entry const& entry = m_entries[number];
    if (entry.selector->className.empty()) {
        set(m_ofAnyClass, entry.bit);
    } else {
        Words& words = m_ofClass[entry.cls];
        words.resize(m_wordCount);
        set(words, entry.bit);
    }
    if (entry.tests.empty()) {
        set(m_untested, entry.bit);
        return;
    }
    Test const& first = entry.tests.front();
    auto const [at, isNew] = m_propertyNumbers.try_emplace(first.property, m_properties.size());
    if (isNew) {
        m_properties.emplace_back();
    }
    TestedProperty& property = m_properties[at->second];
    (first.word.empty() ? property.byValue[first.value]
                        : property.byWord[std::u16string(first.word)])
        .push_back(entry.bit);
}

SelectorPass::ShapeFacts const& SelectorPass::factsOf(ElementNumber element) {
    std::uint32_t const number = m_model.shapeNumber(element);
    ShapeFacts& facts = m_facts[number];
    if (!facts.isKnown) {
        learn(m_model.shape(number), facts);
    }
    return facts;
}

void SelectorPass::learn(Shape const& shape, ShapeFacts& facts) const {
    facts.isKnown = true;
    facts.isSecurity = shape.cls == m_securityViews || shape.cls == m_securityView;
    auto const ofClass = m_ofClass.find(shape.cls);
    facts.ofClass = ofClass == m_ofClass.end() ? &m_ofAnyClass : &ofClass->second;
    std::span<ShapeEntry const> const entries = m_model.entries(shape);
    for (std::uint32_t offset = shape.ownCount; offset < entries.size(); ++offset) {
        ShapeEntry const& entry = entries[offset];
        if (entry.locale != 0 && entry.locale != m_model.defaultLocale().getNumber()) {
            continue;
        }
        auto const property = m_propertyNumbers.find(entry.name);
        if (property != m_propertyNumbers.end()) {
            facts.tested.emplace_back(property->second, offset);
        }
    }
}

std::uint32_t SelectorPass::child(std::uint32_t node, TextRef name) const {
    auto const at = m_referenceSteps.find({node, name});
    return at == m_referenceSteps.end() ? NoNode : at->second;
}

// As references are made: a namespace begins anew, folders leave their name out of
// those of what is in them.
std::uint32_t SelectorPass::step(ElementNumber element) {
    Atom const cls = m_model.classOf(element);
    std::uint32_t const before = m_nodes[m_model.parent(element)];
    std::uint32_t const from = cls == m_namespace ? 0 : before;
    std::uint32_t const own =
        from == NoNode || m_referenceSteps.empty() ? NoNode : child(from, m_model.nameOf(element));
    m_nodes[element] = cls == m_folder || cls == m_queryItemFolder ? before : own;
    return own;
}

/// Selectors whose place is this element.
void SelectorPass::start(ElementNumber element, std::vector<std::size_t> const& selectors,
                         std::vector<std::size_t>& found) {
    Scope* scope =
        !m_scopes.empty() && m_scopes.back().element == element ? &m_scopes.back() : nullptr;
    for (std::size_t const number : selectors) {
        Entry& entry = m_entries[number];
        if (entry.onlyFirst && std::exchange(entry.isTaken, true)) {
            continue;
        }
        m_steps.spend(1);
        Selector::Reach const reach = entry.selector->reach;
        if (reach == Selector::Reach::Itself) {
            bool const isOfClass =
                entry.selector->className.empty() || entry.cls == m_model.classOf(element);
            if (isOfClass && passesAll(element, entry, 0)) {
                found.push_back(number);
            }
            continue;
        }
        if (reach == Selector::Reach::Subtree) {
            set(m_here, entry.bit);
        }
        if (scope == nullptr) {
            Words const below = m_scopes.empty() ? Words(m_wordCount) : m_scopes.back().below;
            m_scopes.push_back({element, m_model.end(element), below, Words(m_wordCount)});
            scope = &m_scopes.back();
        }
        set(reach == Selector::Reach::Subtree ? scope->below : scope->members, entry.bit);
    }
}

void SelectorPass::match(ElementNumber element, std::vector<std::size_t>& found) {
    while (!m_scopes.empty() && m_scopes.back().end <= element) {
        m_scopes.pop_back();
    }
    m_here = m_everywhere;
    if (!m_scopes.empty()) {
        Scope const& scope = m_scopes.back();
        unite(m_here, scope.below);
        if (scope.element == m_model.parent(element)) {
            unite(m_here, scope.members);
        }
    }
    std::uint32_t const node = step(element);
    if (node != NoNode && !m_ends[node].empty()) {
        start(element, m_ends[node], found);
    }
    if (!m_ids.empty()) {
        auto const id = m_ids.find(m_model.idOf(element));
        if (id != m_ids.end()) {
            start(element, id->second, found);
        }
    }
    matchWide(element, found);
    std::sort(found.begin(), found.end());
}

void SelectorPass::matchWide(ElementNumber element, std::vector<std::size_t>& found) {
    ShapeFacts const& facts = factsOf(element);
    m_candidates = m_untested;
    for (auto const& [property, offset] : facts.tested) {
        addCandidates(m_properties[property], m_model.value(element, offset));
    }
    for (std::size_t at = 0; at < m_wordCount; ++at) {
        std::uint64_t word = m_here[at] & m_candidates[at] & (*facts.ofClass)[at];
        for (; word != 0; word &= word - 1) {
            std::size_t const number =
                m_wide[at * WordBits + static_cast<std::size_t>(std::countr_zero(word))];
            if (passesAll(element, m_entries[number], 1)) {
                found.push_back(number);
            }
        }
    }
}

/// Those that the value of a property lets through the first of their tests.
void SelectorPass::addCandidates(TestedProperty& property, TextRef value) {
    auto const add = [&](Bits const& bits) {
        for (std::uint32_t const bit : bits) {
            set(m_candidates, bit);
        }
    };
    if (property.byWord.empty()) {
        auto const at = property.byValue.find(value);
        if (at != property.byValue.end()) {
            add(at->second);
        }
        return;
    }
    auto known = property.ofText.find(value);
    if (known == property.ofText.end()) {
        Bits bits;
        auto const at = property.byValue.find(value);
        if (at != property.byValue.end()) {
            bits = at->second;
        }
        forEachWord(m_model.text(value), [&](std::u16string_view word) {
            m_steps.spend(1);
            auto const having = property.byWord.find(word);
            if (having != property.byWord.end()) {
                bits.insert(bits.end(), having->second.begin(), having->second.end());
            }
        });
        std::sort(bits.begin(), bits.end());
        bits.erase(std::unique(bits.begin(), bits.end()), bits.end());
        property.kept += 1 + bits.size();
        if (property.kept > MostKept) { // what recurs is found once more
            property.ofText.clear();
            property.kept = 1 + bits.size();
        }
        known = property.ofText.emplace(value, std::move(bits)).first;
    }
    m_steps.spend(known->second.size());
    add(known->second);
}

bool SelectorPass::passesAll(ElementNumber element, Entry const& entry,
                             std::size_t firstTest) const {
    for (std::size_t number = firstTest; number < entry.tests.size(); ++number) {
        if (!passes(element, entry.tests[number])) {
            return false;
        }
    }
    return true;
}

bool SelectorPass::passes(ElementNumber element, Test const& test) const {
    Shape const& shape = m_model.shape(m_model.shapeNumber(element));
    std::span<ShapeEntry const> const entries = m_model.entries(shape);
    for (std::uint32_t offset = shape.ownCount; offset < entries.size(); ++offset) {
        ShapeEntry const& entry = entries[offset];
        if (entry.name != test.property ||
            (entry.locale != 0 && entry.locale != m_model.defaultLocale().getNumber())) {
            continue;
        }
        TextRef const value = m_model.value(element, offset);
        bool isFound = test.word.empty() && value == test.value;
        if (!test.word.empty()) {
            forEachWord(m_model.text(value), [&](std::u16string_view word) {
                m_steps.spend(1);
                isFound = isFound || word == test.word;
            });
        }
        if (isFound) {
            return true;
        }
    }
    return false;
}

} // namespace vex
