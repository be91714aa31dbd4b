#pragma once

#include "host/catalogue/ElementSet.h"
#include "host/catalogue/PolicySteps.h"
#include "host/store/build/WrittenModel.h"

#include <map>
#include <set>
#include <unordered_map>
#include <vector>

namespace vex {

/// What names what in the expressions of a model: in the properties "expression",
/// "left", "right" and "refobj", in brackets. In doubt something is named: by one
/// name alone all objects called so are, and so are they by names that lead nowhere
/// together.
class NamingGraph {
public:
    /// Both stay where they are. Raises `PolicySteps::Exhausted`, as `spread` does.
    NamingGraph(WrittenModel& model, PolicySteps& steps);

    /// Adds all that names an element of the set with what stands in it, which is made of
    /// the same, and what names these, and so on. Calls `take` with each that is new and
    /// what it names, or with what it stands in.
    template <class Take> void spread(ElementSet& elements, Take const& take) {
        beginSpread();
        std::vector<ElementNumber> waiting;
        elements.forEach([&](ElementNumber element) { waiting.push_back(element); });
        std::vector<ElementNumber> readers;
        for (std::size_t at = 0; at < waiting.size(); ++at) {
            readers.clear();
            findReaders(waiting[at], readers);
            for (ElementNumber const reader : readers) {
                if (!elements.insert(reader)) {
                    continue;
                }
                take(reader, waiting[at], false);
                waiting.push_back(reader);
                for (ElementNumber inside = reader + 1; inside < m_model.end(reader); ++inside) {
                    m_steps.spend(1);
                    if (elements.insert(inside)) {
                        take(inside, reader, true);
                        waiting.push_back(inside);
                    }
                }
            }
        }
    }

private:
    using Names = std::vector<TextRef>;

    /// Names that stand together, and who says them.
    struct Chain {
        Names const* names;
        std::vector<ElementNumber> readers{};
        bool isResolved = false; // an object is called so
        unsigned spread = 0;     // the last one that came here
    };
    /// Chains with the same two last names.
    struct Bucket {
        std::vector<std::size_t> chains{};
        unsigned spread = 0;
    };
    /// From here on chains are not told apart: each is taken for named.
    static constexpr std::size_t ManyChains = 64;

    void readElement(ElementNumber element);
    void readText(ElementNumber element, std::u16string_view text);
    void resolve();
    void beginSpread() { ++m_spread; }
    void findReaders(ElementNumber element, std::vector<ElementNumber>& readers);
    void takeChain(std::size_t chain, std::vector<ElementNumber>& readers);
    Names referenceOf(ElementNumber element);
    bool fits(Chain const& chain, ElementNumber ancestor);
    /// Calls `take` with each chain that names the element by two names or more, folders
    /// among them or the outer ones left out.
    template <class Take>
    void forEachPartial(ElementNumber element, TextRef name, Take const& take);

    WrittenModel& m_model;
    PolicySteps& m_steps;
    Atom m_namespace, m_folder, m_queryItemFolder, m_securityViews;
    std::set<Atom> m_properties;
    std::unordered_map<TextRef, bool> m_isName;
    std::map<Names, std::size_t> m_chainNumbers;
    std::vector<Chain> m_chains;
    std::unordered_map<TextRef, std::vector<std::size_t>> m_alone;      // chains of one name
    std::unordered_map<TextRef, std::vector<std::size_t>> m_unresolved; // by each of their names
    std::unordered_map<TextRef, bool> m_lastNames;
    std::map<std::pair<TextRef, TextRef>, Bucket> m_partial; // by the last two names
    unsigned m_spread = 0;
};

} // namespace vex
