#include "apps/vexma/StartWarning.h"

#include "apps/vexma/StartSuggestion.h"
#include "host/insight/AskedStart.h"
#include "host/insight/ObjectText.h"
#include "resources.h"

namespace vex {

namespace {

/// What the answer begins with; null when it holds nothing.
KRLIDOM_Element answeredStart(KRLIDOM_Node const& response) {
    return KRLIDOM_Element(response.getFirstChild().getFirstChild());
}

I18NString nameOf(KRLIDOM_Element const& element) {
    return element.isNull() ? I18NString()
                            : element.getAttribute(resources::getString(resources::Name));
}

std::string describe(I18NString const& className, I18NString const& name) {
    return className.toUtf8() + (name.empty() ? " without a name" : " \"" + name.toUtf8() + '"');
}

bool maySee(Workplace& workplace, VEX_HANDLE object) {
    Vex_Handle_Collection objects;
    objects.push_back(object);
    AccessAnswer const answer = workplace.access(objects, 0);
    return answer.end.isAnswered() && answer.verdicts.front();
}

/// As much about where the answer starts as the user may be told.
std::string describeStart(VEX_HANDLE object, KRLIDOM_Element const& answered,
                          Workplace& workplace) {
    if (!nameOf(answered).empty()) {
        return describe(answered.getNodeName(), nameOf(answered));
    }
    return maySee(workplace, object) ? describe(classOf(object), nameIn(workplace.locale(), object))
                                     : "another object";
}

std::string questionAbout(MetadataRequest const& asked, Workplace& workplace) {
    std::string const question = askAboutStart(asked, workplace);
    return question.empty() ? question : "; " + question;
}

} // namespace

void warnAboutStart(MetadataRequest const& asked, I18NString const& id,
                    KRLIDOM_Node const& response, Workplace& workplace, RequestWarnings& warnings) {
    if (!id.empty()) {
        if (asked.functions) {
            warnings.add("the request asks for the package, which has no start; --id is not "
                         "looked at");
        } else if (!asked.startText().empty()) {
            warnings.add("--id says where to start; the request's own start " +
                         asked.startText().toUtf8() + " is not looked at");
        }
        return;
    }
    std::optional<AskedStart> const start = AskedStart::of(asked);
    KRLIDOM_Element const answered = answeredStart(response);
    if (!start) {
        return;
    }
    std::string const text =
        (start->isReference ? "the reference " : "the start path ") + start->text.toUtf8();
    StartObserver observer;
    CallEnd const end =
        workplace.explainTree(startAloneOf(asked).toDocument().document(), observer);
    if (!end.isAnswered()) {
        warnings.add("whether " + text +
                     " led to an object of that name cannot be told: " + end.text);
    } else if (!observer.start().IsNotNull()) {
        warnings.add(text + " leads to nothing; the answer is empty" +
                     questionAbout(asked, workplace));
    } else if (!bearsName(workplace.model(), workplace.locale(), observer.start(),
                          start->lastName)) {
        warnings.add(text + " asks for \"" + start->lastName.toUtf8() + "\" and leads to " +
                     describeStart(observer.start(), answered, workplace) +
                     ", which has that name in no language" + questionAbout(asked, workplace));
    } else if (!standsOnTheWay(workplace.model(), workplace.locale(), observer, *start)) {
        warnings.add(text + " leads to " + describeStart(observer.start(), answered, workplace) +
                     ", which does not stand where the path says" +
                     questionAbout(asked, workplace));
    }
}

} // namespace vex
