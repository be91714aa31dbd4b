#pragma once

#include "VexTreeExplanation.h"

/// A tree output that is observed: numbers what is reported, and says whether
/// anything is built. Lives through one request.
class VexTreeObservation {
public:
    /// The observer must outlive this.
    VexTreeObservation(VexTreeObserver& observer, bool builds)
        : m_observer(observer), m_builds(builds) {}
    VexTreeObservation(VexTreeObservation const&) = delete;
    VexTreeObservation& operator=(VexTreeObservation const&) = delete;

    /// False when the tree is only reported.
    bool builds() const { return m_builds; }

    /// Counts an attribute of the element that is reported next.
    void addAttribute(I18NString const& value) {
        ++m_size.attributes;
        m_size.characters += static_cast<std::size_t>(value.length());
    }

    /// Gives the report's number. The size of what is written is filled in here,
    /// and that the observer does not want the members.
    std::size_t report(VexTreeReport& report) {
        if (report.treatment == VexTreeTreatment::Written) {
            m_size.elements = 1;
            report.size = m_size;
        }
        m_size = {};
        bool const goesOn =
            report.members == VexTreeMembers::Below || report.members == VexTreeMembers::Lifted;
        if (goesOn && !m_observer.wantsMembers(report)) {
            report.members = VexTreeMembers::Refused;
        }
        m_observer.report(report);
        return m_reports++;
    }

private:
    VexTreeObserver& m_observer;
    bool m_builds;
    std::size_t m_reports = 0;
    VexTreeSize m_size; // of the element at hand
};
