#include "host/insight/RuleCover.h"

#include <algorithm>

namespace vex {

namespace {

using Element = ModelOutline::Element;

/// How many selectors an element and all below it take, from the leaves up.
class CoverWork {
public:
    CoverWork(ModelOutline const& outline, std::vector<bool> const& listed, RuleMeans means)
        : m_outline(outline), m_listed(listed), m_means(means), m_given(outline.size()),
          m_kept(outline.size()), m_nodes(outline.size()) {}

    RuleCover cover() {
        std::size_t least = count();
        if (m_means.hasTraits) {
            chooseTraits(least);
            count();
        }
        RuleCover made;
        for (std::size_t const trait : m_chosen) {
            listOf(trait, made).push_back(m_outline.traits[trait].selector);
        }
        write(made);
        return made;
    }

private:
    /// What is known of an element with all below it.
    struct Node {
        std::uint32_t covered = 0;   // exceptions, when something around it is included whole
        std::uint32_t uncovered = 0; // selectors, when nothing is
        bool hasListed = false;
        bool hasOther = false; // what must not be meant
        bool isWhole = false;  // is included whole, with exceptions
    };

    // A trait is tried for each step of work that it costs.
    static constexpr std::size_t mostTries = 40'000'000;
    static constexpr std::size_t mostTraits = 64;
    static constexpr std::size_t mostChosen = 8;

    bool isListed(Element element) const { return m_listed[element]; }
    /// True of what may be meant or not: it has no id, or an exception keeps it out anyway.
    bool isFree(Element element) const {
        return !isListed(element) && (!m_outline.hasId[element] || m_kept[element] != 0);
    }

    std::size_t count() {
        std::fill(m_nodes.begin(), m_nodes.end(), Node{});
        for (std::size_t at = m_outline.size(); at-- > 1;) {
            auto const element = static_cast<Element>(at);
            if (!m_outline.isOutside[element]) {
                finish(element, m_outline.isSelectable(element));
                addTo(m_nodes[m_outline.parent[element]], m_nodes[element]);
            }
        }
        finish(0, true);
        return m_nodes[0].uncovered + m_chosen.size();
    }

    static void addTo(Node& parent, Node const& node) {
        parent.covered += node.covered;
        parent.uncovered += node.uncovered;
        parent.hasListed = parent.hasListed || node.hasListed;
        parent.hasOther = parent.hasOther || node.hasOther;
    }

    /// Until now the node has what its members sum up to.
    void finish(Element element, bool isSelectable) {
        Node& node = m_nodes[element];
        bool const isRoot = element == 0;
        bool const isOther = !isRoot && !isListed(element) && !isFree(element);
        bool const hasListedBelow = node.hasListed;
        node.hasListed = node.hasListed || (!isRoot && isListed(element));
        node.hasOther = node.hasOther || isOther;
        node.covered += isOther ? 1 : 0;
        std::uint32_t const exceptions = node.covered;
        if (isSelectable && !node.hasListed && node.hasOther) {
            node.covered = 1; // all of it
        }
        if (!node.hasListed) {
            node.uncovered = 0;
            return;
        }
        if (!isRoot) {
            node.uncovered += ownCost(element, isOther, hasListedBelow);
        }
        bool const mayBeWhole = isSelectable && (m_means.hasContainers || !node.hasOther);
        node.isWhole = mayBeWhole && 1 + exceptions < node.uncovered;
        node.uncovered = node.isWhole ? 1 + exceptions : node.uncovered;
    }

    std::uint32_t ownCost(Element element, bool isOther, bool hasListedBelow) const {
        bool const comesAlong = m_means.hasContainers && hasListedBelow;
        if (isListed(element)) {
            return m_given[element] != 0 || comesAlong ? 0 : 1;
        }
        return isOther && comesAlong ? 1 : 0; // an exception
    }

    /// True when a trait may stand among what is included, and false for the exceptions; `fits`
    /// says whether it means nothing that it must not.
    bool isInclusion(ModelOutline::Trait const& trait, bool& fits) const {
        bool hasListed = false;
        bool hasOther = false;
        for (Element const element : trait.elements) {
            hasListed = hasListed || isListed(element);
            hasOther = hasOther || (!isListed(element) && m_outline.hasId[element]);
        }
        fits = hasListed != hasOther && (hasListed || m_means.hasContainers);
        return hasListed;
    }

    void mark(std::size_t trait, bool isIncluded, std::uint32_t by) {
        std::vector<std::uint32_t>& marks = isIncluded ? m_given : m_kept;
        for (Element const element : m_outline.traits[trait].elements) {
            marks[element] += by;
        }
    }

    /// One after the other, each time the one that saves most.
    void chooseTraits(std::size_t least) {
        struct Candidate {
            std::size_t trait;
            bool isIncluded;
        };
        std::vector<Candidate> candidates;
        std::size_t const most =
            std::clamp<std::size_t>(mostTries / (m_outline.size() * mostChosen + 1), 2, mostTraits);
        for (std::size_t trait = 0; trait < m_outline.traits.size(); ++trait) {
            bool fits = false;
            bool const isIncluded = isInclusion(m_outline.traits[trait], fits);
            if (fits && candidates.size() < most) {
                candidates.push_back({trait, isIncluded});
            }
        }
        while (m_chosen.size() < mostChosen) {
            Candidate const* best = nullptr;
            for (Candidate const& candidate : candidates) {
                mark(candidate.trait, candidate.isIncluded, 1);
                std::size_t const taken = count() + 1;
                mark(candidate.trait, candidate.isIncluded, static_cast<std::uint32_t>(-1));
                if (taken < least) {
                    least = taken;
                    best = &candidate;
                }
            }
            if (best == nullptr) {
                return;
            }
            mark(best->trait, best->isIncluded, 1);
            m_chosen.push_back(best->trait);
        }
    }

    std::vector<std::string>& listOf(std::size_t trait, RuleCover& made) const {
        bool fits = false;
        return isInclusion(m_outline.traits[trait], fits) ? made.include : made.except;
    }

    /// Goes down from the root as the numbers say.
    void write(RuleCover& made) {
        if (m_nodes[0].isWhole) {
            made.include.emplace_back("**");
        }
        for (Element element = 1; element < m_outline.size();) {
            bool const skips = m_outline.isOutside[element] || writeElement(element, made);
            element = skips ? m_outline.end[element] : element + 1;
        }
    }

    /// True when nothing below needs a selector of its own.
    bool writeElement(Element element, RuleCover& made) {
        Node& node = m_nodes[element];
        Node const& parent = m_nodes[m_outline.parent[element]];
        bool const isOther = !isListed(element) && !isFree(element);
        if (parent.isWhole) {
            node.isWhole = true; // holds for all below
            if (!node.hasOther) {
                return true;
            }
            if (!node.hasListed && m_outline.isSelectable(element)) {
                made.except.push_back(m_outline.selectorOf(element) + whole(element));
                return true;
            }
            if (isOther) {
                made.except.push_back(m_outline.selectorOf(element));
            }
            return false;
        }
        if (!node.hasListed) {
            return true;
        }
        bool const hasListedBelow = hasListedIn(element);
        if (node.isWhole) {
            made.include.push_back(m_outline.selectorOf(element) + whole(element));
            if (isOther) {
                made.except.push_back(m_outline.selectorOf(element));
            }
            return !node.hasOther;
        }
        if (ownCost(element, isOther, hasListedBelow) != 0) {
            (isListed(element) ? made.include : made.except)
                .push_back(m_outline.selectorOf(element));
        }
        return !hasListedBelow;
    }

    bool hasListedIn(Element element) const {
        for (Element child = element + 1; child < m_outline.end[element];
             child = m_outline.end[child]) {
            if (m_nodes[child].hasListed) {
                return true;
            }
        }
        return false;
    }

    char const* whole(Element element) const {
        return m_outline.end[element] == element + 1 ? "" : "/**";
    }

    ModelOutline const& m_outline;
    std::vector<bool> const& m_listed;
    RuleMeans m_means;
    std::vector<std::uint32_t> m_given; // by element: traits that include it
    std::vector<std::uint32_t> m_kept;  // by element: traits that except it
    std::vector<Node> m_nodes;
    std::vector<std::size_t> m_chosen;
};

} // namespace

RuleCover coverByRules(ModelOutline const& outline, std::vector<bool> const& listed,
                       RuleMeans means) {
    return CoverWork(outline, listed, means).cover();
}

} // namespace vex
