#pragma once

#include "VexTreeExplanation.h"

namespace vex {

/// How large an answer becomes: adds up what the plug-in reports about it while
/// nothing is built.
class AnswerEstimate final : public VexTreeObserver {
public:
    /// Counting ends when the elements are more than `elementLimit`.
    explicit AnswerEstimate(std::size_t elementLimit) : m_elementLimit(elementLimit) {}

    /// @{
    /// Raise `KRLLimitException` past the limit.
    void report(VexTreeReport const& report) override { add(report.size); }
    void reportOutside(VexTreeSize const& size) override { add(size); }
    /// @}

    /// As many as the answer has: "Response" and "Result" count.
    std::size_t elements() const { return m_size.elements; }
    /// Of memory while it is made, at most.
    std::size_t bytes() const;
    /// True when the answer has more than the limit.
    bool isMore() const { return m_size.elements > m_elementLimit; }

private:
    void add(VexTreeSize const& size);

    std::size_t m_elementLimit;
    VexTreeSize m_size;
};

} // namespace vex
