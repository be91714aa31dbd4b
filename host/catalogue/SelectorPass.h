#pragma once

#include "host/catalogue/PolicySteps.h"
#include "host/catalogue/Selector.h"
#include "host/catalogue/TextSet.h"
#include "host/store/build/WrittenModel.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vex {

/// Finds what any number of selectors mean, in one pass over a model: what an object
/// must be compared with follows from its shape, its name and the selectors that hold
/// where it stands, not from how many selectors there are. The root and the security
/// views are no objects that can be meant.
class SelectorPass {
public:
    /// Both stay where they are.
    SelectorPass(WrittenModel const& model, PolicySteps& steps);

    /// Adds a selector, which stays where it is; gives its number, from 0. Several
    /// objects may have one reference: with `onlyFirst` the first of them is meant, as
    /// by a reference anywhere else, without it each of them.
    std::size_t add(Selector const& selector, bool onlyFirst);

    /// Calls `take` with each object that a selector means and the numbers of these,
    /// ascending, in document order. Raises `PolicySteps::Exhausted`.
    template <class Take> void run(Take const& take) {
        prepare();
        std::vector<std::size_t> found;
        for (ElementNumber element = 1; element < m_model.elementCount();) {
            if (isSecurity(element)) {
                element = m_model.end(element);
                continue;
            }
            found.clear();
            match(element, found);
            m_steps.spend(1 + found.size());
            if (!found.empty()) {
                take(element, found);
            }
            ++element;
        }
    }

private:
    using Words = std::vector<std::uint64_t>; // a bit for each wide selector
    using Bits = std::vector<std::uint32_t>;  // some of them, each by its number
    static constexpr std::size_t WordBits = 64;
    static constexpr std::uint32_t NoBit = 0xFFFF'FFFF;

    /// A test of selectors, with the numbers of what it names.
    struct Test {
        Atom property;
        TextRef value;
        std::u16string_view word; // "" unless a word is looked for
    };
    struct Entry {
        Selector const* selector;
        bool onlyFirst;
        bool isTaken = false;
        Atom cls = 0;              // of selectors that name one
        std::uint32_t bit = NoBit; // of those that mean more than one place
        std::vector<Test> tests{};
    };
    /// What elements of one shape have in common.
    struct ShapeFacts {
        bool isKnown = false;
        bool isSecurity = false;
        Words const* ofClass = nullptr;                              // for this class, or for any
        std::vector<std::pair<std::size_t, std::uint32_t>> tested{}; // property, offset
    };
    /// A property that selectors test first, and the selectors by its values.
    struct TestedProperty {
        std::unordered_map<TextRef, Bits, TextNumberHash> byValue{};
        std::map<std::u16string, Bits, std::less<>> byWord{};
        std::unordered_map<TextRef, Bits, TextNumberHash>
            ofText{};         // what was found for texts met before
        std::size_t kept = 0; // of that
    };
    static constexpr std::size_t MostKept = 1U << 20U;
    /// Selectors that hold below an element.
    struct Scope {
        ElementNumber element;
        ElementNumber end;
        Words below;
        Words members;
    };

    void prepare();
    static void set(Words& words, std::uint32_t bit);
    static void unite(Words& words, Words const& more);
    void prepareWide(std::size_t number);
    void preparePlace(std::size_t number);
    bool isSecurity(ElementNumber element) { return factsOf(element).isSecurity; }
    ShapeFacts const& factsOf(ElementNumber element);
    void learn(Shape const& shape, ShapeFacts& facts) const;
    void match(ElementNumber element, std::vector<std::size_t>& found);
    void matchWide(ElementNumber element, std::vector<std::size_t>& found);
    void start(ElementNumber element, std::vector<std::size_t> const& selectors,
               std::vector<std::size_t>& found);
    std::uint32_t step(ElementNumber element);
    std::uint32_t child(std::uint32_t node, TextRef name) const;
    void addCandidates(TestedProperty& property, TextRef value);
    bool passes(ElementNumber element, Test const& test) const;
    bool passesAll(ElementNumber element, Entry const& entry, std::size_t firstTest) const;

    WrittenModel const& m_model;
    PolicySteps& m_steps;
    std::vector<Entry> m_entries;
    std::vector<std::size_t> m_wide; // their numbers by bit
    std::size_t m_wordCount = 0;

    static constexpr std::uint32_t NoNode = 0xFFFF'FFFF;
    Atom m_namespace, m_folder, m_queryItemFolder, m_securityViews, m_securityView;

    std::map<std::pair<std::uint32_t, TextRef>, std::uint32_t> m_referenceSteps; // by node and name
    std::vector<std::vector<std::size_t>> m_ends;                                // by node
    std::vector<std::uint32_t> m_nodes; // below each element
    std::unordered_map<TextRef, std::vector<std::size_t>, TextNumberHash> m_ids;
    Words m_everywhere;

    Words m_ofAnyClass;
    std::unordered_map<Atom, Words> m_ofClass; // those of any among them
    Words m_untested;
    std::vector<TestedProperty> m_properties;
    std::unordered_map<Atom, std::size_t> m_propertyNumbers;
    std::vector<ShapeFacts> m_facts; // by shape
    std::vector<Scope> m_scopes;
    Words m_here; // what holds for the element at hand
    Words m_candidates;
};

} // namespace vex
