#pragma once

#include "I18NHash.h"
#include "host/catalogue/ElementSet.h"
#include "host/catalogue/PolicySteps.h"
#include "host/catalogue/TextSet.h"
#include "host/store/build/WrittenModel.h"

#include <cstdint>
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
    struct NamesHash {
        std::size_t operator()(Names const& names) const noexcept {
            std::uint64_t hash = I18NHashSeed();
            for (TextRef const name : names) {
                hash = I18NMixHash(name, names.size(), hash);
            }
            return static_cast<std::size_t>(hash);
        }
    };

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
    using ChainsByName = std::unordered_map<TextRef, std::vector<std::size_t>, TextNumberHash>;

    /// The last two names of a chain as one number.
    static std::uint64_t pairOf(TextRef before, TextRef last) {
        return std::uint64_t{before} << 32U | last;
    }

    /// From here on chains are not told apart: each is taken for named.
    static constexpr std::size_t ManyChains = 64;

    void readElement(ElementNumber element);
    void readText(ElementNumber element, std::u16string_view text);
    void resolve();
    bool isName(TextRef text);
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
    TextSet m_names; // of elements; empty until a word is looked up
    std::unordered_map<Names, std::size_t, NamesHash> m_chainNumbers;
    std::vector<Chain> m_chains;
    ChainsByName m_alone;      // of one name
    ChainsByName m_unresolved; // by each of their names
    TextSet m_lastNames;
    std::vector<std::uint32_t> m_wholeChains; // by element: of its reference; `NotFound`: none
    std::unordered_map<std::uint64_t, Bucket, TextNumberHash> m_partial; // by `pairOf`
    unsigned m_spread = 0;
};

} // namespace vex
