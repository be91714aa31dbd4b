#include "host/insight/TreeRecorder.h"

#include "VexObject.h"
#include "host/insight/AnswerLimit.h"
#include "host/insight/ObjectText.h"
#include "host/store/image/Budget.h"

namespace vex {

namespace {
constexpr std::size_t elementsAround = 2; // "Response" and "Result"
} // namespace

void TreeRecorder::beginTree() {
    m_first = m_tree.size();
    m_elements = elementsAround;
    m_continued.reset();
}

void TreeRecorder::continueTree(std::size_t entry) {
    beginTree();
    m_continued = entry;
}

std::optional<std::size_t> TreeRecorder::findTooDeep() {
    for (; m_firstTooDeep < m_tree.size(); ++m_firstTooDeep) {
        AnsweredObject& entry = m_tree[m_firstTooDeep];
        if (entry.members != MembersMet::TooDeep) {
            continue;
        }
        if (!m_memory.has(entry.target, entry.losesItsMembers())) {
            return m_firstTooDeep;
        }
        entry.members = MembersMet::Elsewhere;
    }
    return std::nullopt;
}

void TreeRecorder::report(VexTreeReport const& report) {
    if (report.treatment == VexTreeTreatment::Written) {
        if (m_elements >= m_limits.elements) {
            raiseAnswerTooLarge(m_limits.elements);
        }
        ++m_elements;
    }
    if (isFull()) {
        throw KRLLimitException("the trees come to more than " + std::to_string(m_limits.entries) +
                                " objects");
    }
    if (!isContinued(report)) {
        Budget::chargeBytes(sizeof(AnsweredObject));
        m_tree.push_back(entryOf(report));
        return;
    }
    if (report.object != m_tree[*m_continued].object) {
        throw KRLLimitException("what stands behind a shortcut is too deep, and the path to the " +
                                describeObject(m_tree[*m_continued].object, m_locale) +
                                " leads elsewhere; give what it stands in names of their own");
    }
    m_tree[*m_continued].members = MembersMet::Here;
}

bool TreeRecorder::wantsMembers(VexTreeReport const& report) {
    bool const isShortcut = report.target.IsNotNull();
    bool const isBehind = isShortcut || report.shortcut != VexTreeReport::None;
    VEX_HANDLE const whole = isShortcut ? report.target : report.object;
    m_members = MembersMet::Here;
    if (m_extent == TreeExtent::Once && isBehind && VexObject(whole).hasChildObjects()) {
        bool const isLost = isContinued(report) ? m_tree[*m_continued].losesItsMembers()
                                                : entryOf(report).losesItsMembers();
        m_members =
            m_memory.enter(whole, isLost, isShortcut ? report.level : ExpansionMemory::NoShortcut);
    }
    return m_members == MembersMet::Here;
}

void TreeRecorder::reportOutside(VexTreeSize const& /*size*/) {}

std::size_t TreeRecorder::containerOf(VexTreeReport const& report) const {
    if (report.container == VexTreeReport::None) {
        return AnsweredObject::None;
    }
    if (!m_continued) {
        return m_first + report.container;
    }
    return report.container == 0 ? *m_continued : m_first + report.container - 1;
}

AnsweredObject TreeRecorder::entryOf(VexTreeReport const& report) const {
    std::size_t const container = containerOf(report);
    return {report.object,
            report.target,
            fateOf(report, container),
            container,
            report.shortcut != VexTreeReport::None,
            report.passesOverViewLists,
            report.members == VexTreeMembers::Refused ? m_members : MembersMet::Here};
}

ObjectFate TreeRecorder::fateOf(VexTreeReport const& report, std::size_t container) const {
    if (container != AnsweredObject::None) {
        if (m_tree[container].losesItsMembers()) {
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
