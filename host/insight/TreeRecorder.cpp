#include "host/insight/TreeRecorder.h"

#include "host/insight/AnswerLimit.h"
#include "host/insight/ObjectText.h"

namespace vex {

namespace {
constexpr std::size_t elementsAround = 2; // "Response" and "Result"
} // namespace

void TreeRecorder::beginTree() {
    m_first = m_tree.size();
    m_elements = elementsAround;
}

void TreeRecorder::report(VexTreeReport const& report) {
    if (report.treatment == VexTreeTreatment::Written) {
        if (m_elements >= m_elementLimit) {
            raiseAnswerTooLarge(m_elementLimit);
        }
        ++m_elements;
    }
    std::size_t const container =
        report.container == VexTreeReport::None ? AnsweredObject::None : m_first + report.container;
    m_tree.push_back({report.object, report.target, fateOf(report, container), container,
                      report.shortcut != VexTreeReport::None, report.passesOverViewLists});
}

void TreeRecorder::reportOutside(VexTreeSize const& /*size*/) {} // the same for every tree

ObjectFate TreeRecorder::fateOf(VexTreeReport const& report, std::size_t container) const {
    if (container != AnsweredObject::None) {
        ObjectFate const around = m_tree[container].fate;
        if (around == ObjectFate::WithoutName || around == ObjectFate::WithItsContainer) {
            return ObjectFate::WithItsContainer;
        }
    }
    if (report.treatment == VexTreeTreatment::NothingToStandFor) {
        return ObjectFate::NothingToStandFor;
    }
    // The request asks for ids and paths, too: it shows what has no name.
    if (nameIn(m_locale, report.object).empty()) {
        return ObjectFate::WithoutName;
    }
    return report.treatment == VexTreeTreatment::Written ? ObjectFate::Written
                                                         : ObjectFate::LeftOut;
}

} // namespace vex
