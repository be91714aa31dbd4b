#include "host/insight/ExpansionGraph.h"
#include "host/insight/ModelChecks.h"

#include <algorithm>
#include <limits>

namespace vex {

namespace {

/// Numbers the groups of elements that reach each other (Tarjan's algorithm,
/// with a stack of its own: a model may be deeper than ours).
class MutualReach {
public:
    using Number = ExpansionGraph::Number;

    explicit MutualReach(ExpansionGraph const& graph)
        : m_graph(graph), m_order(graph.size(), unseen), m_low(graph.size()),
          m_group(graph.size(), unseen) {
        for (Number start = 0; start < graph.size(); ++start) {
            if (m_order[start] == unseen) {
                walk(start);
            }
        }
    }

    bool sameGroup(Number a, Number b) const { return m_group[a] == m_group[b]; }

private:
    static constexpr Number unseen = std::numeric_limits<Number>::max();
    struct Step {
        Number number;
        std::size_t edge;
    };

    void walk(Number start) {
        enter(start);
        while (!m_path.empty()) {
            Number const at = m_path.back().number;
            if (m_path.back().edge == m_graph.wayCount(at)) {
                leave(at);
                continue;
            }
            Number const next = m_graph.way(at, m_path.back().edge++);
            if (m_order[next] == unseen) {
                enter(next);
            } else if (m_group[next] == unseen) {
                m_low[at] = std::min(m_low[at], m_order[next]);
            }
        }
    }

    void enter(Number number) {
        m_order[number] = m_low[number] = m_count++;
        m_open.push_back(number);
        m_path.push_back({number, 0});
    }

    void leave(Number number) {
        m_path.pop_back();
        if (!m_path.empty()) {
            Number const before = m_path.back().number;
            m_low[before] = std::min(m_low[before], m_low[number]);
        }
        if (m_low[number] != m_order[number]) {
            return;
        }
        Number member = unseen;
        do {
            member = m_open.back();
            m_open.pop_back();
            m_group[member] = number;
        } while (member != number);
    }

    ExpansionGraph const& m_graph;
    std::vector<Number> m_order;
    std::vector<Number> m_low;
    std::vector<Number> m_group;
    std::vector<Number> m_open;
    std::vector<Step> m_path;
    Number m_count = 0;
};

/// Finds the shortest way back from a shortcut's target to the shortcut.
class WayBack {
public:
    using Number = ExpansionGraph::Number;

    WayBack(ExpansionGraph const& graph, MutualReach const& reach)
        : m_graph(graph), m_reach(reach), m_stepLimit(stepsOfAny + stepsOfAnElement * graph.size()),
          m_before(graph.size()), m_turn(graph.size(), 0) {}

    /// The shortcuts and targets on the way; empty once the searches have taken
    /// as many steps as they may.
    EndlessShortcut find(Number shortcut, Number target) {
        ++m_count;
        std::vector<Number> reached{target};
        m_turn[target] = m_count;
        m_before[target] = shortcut;
        for (std::size_t next = 0; next < reached.size() && m_steps < m_stepLimit; ++next) {
            Number const at = reached[next];
            if (at == shortcut) {
                return trace(shortcut);
            }
            for (std::size_t way = 0; way < m_graph.wayCount(at); ++way, ++m_steps) {
                Number const to = m_graph.way(at, way);
                if (m_turn[to] != m_count && m_reach.sameGroup(to, shortcut)) {
                    m_turn[to] = m_count;
                    m_before[to] = at;
                    reached.push_back(to);
                }
            }
        }
        return {m_graph.element(shortcut), {}};
    }

private:
    // Long cycles of many shortcuts would each be gone round once for each of them.
    static constexpr std::size_t stepsOfAny = 1'000'000;
    static constexpr std::size_t stepsOfAnElement = 100;

    EndlessShortcut trace(Number shortcut) const {
        std::vector<VEX_HANDLE> cycle;
        Number at = shortcut;
        do {
            Number const before = m_before[at];
            ExpansionGraph::Shortcut const* const from = m_graph.findShortcut(before);
            bool const isTarget = from != nullptr && holds(from->targets, at);
            if (isTarget || m_graph.findShortcut(at) != nullptr) {
                cycle.push_back(m_graph.element(at));
            }
            at = before;
        } while (at != shortcut);
        std::reverse(cycle.begin(), cycle.end());
        std::size_t const length = cycle.size();
        cycle.resize(std::min(length, EndlessShortcut::MostOfACycle));
        return {m_graph.element(shortcut), {cycle.begin(), cycle.end()}, length};
    }

    static bool holds(std::vector<Number> const& numbers, Number number) {
        return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
    }

    ExpansionGraph const& m_graph;
    MutualReach const& m_reach;
    std::size_t m_stepLimit;
    std::vector<Number> m_before;
    std::vector<std::size_t> m_turn; // the search that reached the element last
    std::size_t m_count = 0;
    std::size_t m_steps = 0;
};

} // namespace

std::vector<EndlessShortcut> findEndlessShortcuts(Model const& model) {
    ExpansionGraph const graph(model);
    MutualReach const reach(graph);
    WayBack way(graph, reach);
    std::vector<EndlessShortcut> endless;
    for (ExpansionGraph::Shortcut const& shortcut : graph.shortcuts()) {
        auto const target = std::find_if(
            shortcut.targets.begin(), shortcut.targets.end(),
            [&](ExpansionGraph::Number each) { return reach.sameGroup(shortcut.number, each); });
        if (target != shortcut.targets.end()) {
            endless.push_back(way.find(shortcut.number, *target));
        }
    }
    return endless;
}

} // namespace vex
