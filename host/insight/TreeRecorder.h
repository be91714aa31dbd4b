#pragma once

#include "VexTreeExplanation.h"
#include "host/insight/AnsweredTree.h"

namespace vex {

/// Keeps what the plug-in reports about trees of names: the answers to
/// `TreeQuestion::makeRequest`, one after the other, of which none is built.
class TreeRecorder final : public VexTreeObserver {
public:
    /// The locale stays where it is. `elementLimit` is each answer's.
    TreeRecorder(I18NLocale const& locale, std::size_t elementLimit)
        : m_locale(locale), m_elementLimit(elementLimit) {}

    /// Comes before each tree.
    void beginTree();

    /// Raises `KRLLimitException` when the answer would hold too many elements.
    void report(VexTreeReport const& report) override;
    void reportOutside(VexTreeSize const& size) override;

    AnsweredTree take() { return std::move(m_tree); }

private:
    ObjectFate fateOf(VexTreeReport const& report, std::size_t container) const;

    I18NLocale const& m_locale;
    std::size_t m_elementLimit;
    AnsweredTree m_tree;
    std::size_t m_first = 0;    // the place of the tree's first entry
    std::size_t m_elements = 0; // of its answer
};

} // namespace vex
