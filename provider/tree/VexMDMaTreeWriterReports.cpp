// What an observed tree tells, and what is left out of it when nothing is built.

#include "KRLIDOM_Document.h"
#include "provider/VexConstants.h"
#include "provider/tree/VexMDMaTreeObject.h"
#include "provider/tree/VexTreeObservation.h"

namespace {

VexTreeReport reportAt(VexTreePlace const& place, VEX_HANDLE object, VexTreeTreatment treatment,
                       VexTreeMembers members) {
    VexTreeReport report;
    report.object = object;
    report.treatment = treatment;
    report.members = members;
    report.container = place.around.container;
    report.shortcut = place.around.shortcut;
    report.level = place.level;
    report.passesOverViewLists = place.skipViewLists;
    return report;
}

VexReported reportedTo(VexTreeObservation& observation, VexTreeReport& report) {
    std::size_t const number = observation.report(report);
    return {number, report.members == VexTreeMembers::Refused};
}

} // namespace

KRLIDOM_Element VexMDMaTreeWriter::makeElement(I18NString const& tag) const {
    bool const builds = m_context.observation == nullptr || m_context.observation->builds();
    return builds ? m_context.document.createElement(tag) : KRLIDOM_Element();
}

void VexMDMaTreeWriter::setAttribute(KRLIDOM_Element const& element, I18NString const& name,
                                     I18NString const& value) const {
    if (m_context.observation != nullptr) {
        m_context.observation->addAttribute(value);
    }
    element.setAttribute(name, value);
}

VexReported VexMDMaTreeWriter::reportObject(VexTreePlace const& place, Object const& object,
                                            bool shown) const {
    if (!shown) {
        VexTreeReport report =
            reportAt(place, object.handle, VexTreeTreatment::NotIncluded, VexTreeMembers::Lifted);
        return reportedTo(*m_context.observation, report);
    }
    VexTreeReport report =
        reportAt(place, object.handle, VexTreeTreatment::Written,
                 descends(place.level) ? VexTreeMembers::Below : VexTreeMembers::PastDepth);
    report.tag = object.tag();
    return reportedTo(*m_context.observation, report);
}

VexReported VexMDMaTreeWriter::reportShortcut(VexTreePlace const& place, VEX_HANDLE shortcut,
                                              VEX_HANDLE target, I18NString const& tag,
                                              bool endless) const {
    VexTreeMembers const members = endless                 ? VexTreeMembers::Endless
                                   : descends(place.level) ? VexTreeMembers::Below
                                                           : VexTreeMembers::PastDepth;
    VexTreeReport report = reportAt(place, shortcut, VexTreeTreatment::Written, members);
    report.target = target;
    report.tag = tag;
    return reportedTo(*m_context.observation, report);
}

void VexMDMaTreeWriter::reportLeftOut(VexTreePlace const& place, VEX_HANDLE object,
                                      VexTreeTreatment treatment, VexTreeMembers members) const {
    if (m_context.observation != nullptr) {
        VexTreeReport report = reportAt(place, object, treatment, members);
        m_context.observation->report(report);
    }
}
