#include "host/import/odata/OdataImport.h"

#include "I18NString.h"
#include "KRLException.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlDocument.h"
#include "host/import/odata/OdataNavigation.h"
#include "host/import/odata/OdataSubjects.h"
#include "host/import/xml/ElementTree.h"
#include "host/import/xml/FileText.h"

namespace vex {

namespace {

ElementTree readTree(std::string_view csdl, ImportWork& work) {
    ImportLimits const& limits = work.request.limits;
    MemorySource source(csdl);
    try {
        return readElementTree(source, work.request.sourceName(),
                               {.values = limits.sourceValues, .depth = limits.sourceDepth});
    } catch (KRLDocumentException const& problem) {
        work.refuse(problem.GetProblem(), {problem.GetLine(), problem.GetColumn()});
    }
}

OdataNavigationForm formOf(ImportRequest const& request) {
    auto const option = request.options.find("navigation");
    bool const isShortcut = option != request.options.end() && !option->second.empty() &&
                            option->second.back() == "shortcut";
    return isShortcut ? OdataNavigationForm::Shortcut : OdataNavigationForm::Relationship;
}

} // namespace

void importOdata(ImportWork& work) {
    importOdataText(readFileText(work.request.source, work.request.limits.sourceBytes), work);
}

void importOdataText(std::string_view csdl, ImportWork& work) {
    ElementTree const tree = readTree(csdl, work);
    work.draft.model.setDefaultLocale(I18NLocale(I18NString::fromUtf8(work.request.language)));
    CsdlDocument const document = readCsdl(tree, work);
    OdataSubjects subjects(document, work);
    subjects.make();
    makeNavigation(document, subjects, formOf(work.request), work);
}

} // namespace vex
