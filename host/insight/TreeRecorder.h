#pragma once

#include "VexTreeExplanation.h"
#include "host/insight/AnsweredTree.h"

#include <limits>
#include <optional>

namespace vex {

/// What is recorded of trees at most.
struct RecordingLimits {
    std::size_t elements; // of each answer
    /// Of all trees together, what is left out too.
    std::size_t entries = std::numeric_limits<std::size_t>::max();
};

/// Keeps what the plug-in reports about trees of names: the answers to
/// `TreeQuestion::makeRequest`, one after the other, of which none is built.
class TreeRecorder final : public VexTreeObserver {
public:
    /// The locale stays where it is.
    TreeRecorder(I18NLocale const& locale, RecordingLimits const& limits,
                 TreeExtent extent = TreeExtent::EveryWay)
        : m_locale(locale), m_limits(limits), m_extent(extent) {}

    /// Comes before each tree.
    void beginTree();
    /// The same before a tree that starts at the shortcut of an entry: what is in it stands
    /// below that entry.
    void continueTree(std::size_t entry);
    /// The first entry whose members are too deep and were not met since, if any.
    std::optional<std::size_t> findTooDeep();

    /// Raises `KRLLimitException` when the answer would hold too many elements, and
    /// when there are too many entries.
    void report(VexTreeReport const& report) override;
    bool wantsMembers(VexTreeReport const& report) override;
    /// Does nothing: it is the same for every tree.
    void reportOutside(VexTreeSize const& size) override;

    /// True when there were more entries than the limit.
    bool isFull() const { return m_tree.size() >= m_limits.entries; }

    AnsweredTree const& tree() const { return m_tree; }
    AnsweredTree take() { return std::move(m_tree); }

private:
    bool isContinued(VexTreeReport const& report) const {
        return m_continued && report.container == VexTreeReport::None;
    }
    std::size_t containerOf(VexTreeReport const& report) const;
    AnsweredObject entryOf(VexTreeReport const& report) const;
    ObjectFate fateOf(VexTreeReport const& report, std::size_t container) const;

    I18NLocale const& m_locale;
    RecordingLimits m_limits;
    TreeExtent m_extent;
    ExpansionMemory m_memory;
    AnsweredTree m_tree;
    std::size_t m_first = 0;                 // the place of the tree's first entry
    std::size_t m_elements = 0;              // of its answer
    std::optional<std::size_t> m_continued;  // the entry that the tree's start stands for
    std::size_t m_firstTooDeep = 0;          // none comes before
    MembersMet m_members = MembersMet::Here; // as was said last
};

} // namespace vex
