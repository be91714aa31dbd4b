#include "host/insight/Explanation.h"

#include "host/insight/AccessStory.h"
#include "host/insight/TreeStory.h"
#include "host/store/image/Budget.h"

namespace vex {

namespace {

std::vector<ToldMention> tellMentions(VexExplainedObject const& object,
                                      VexAccessExplanation const& access,
                                      AccessStory const& story) {
    std::vector<std::string> sentences = story.mentionsOf(object);
    std::vector<ToldMention> told;
    for (VexViewMention const& mention : object.mentions) {
        told.push_back({access.views[mention.view].id.toUtf8(), mention.included, mention.excluded,
                        mention.hidden, std::move(sentences[told.size()])});
    }
    return told;
}

/// The memory that it takes, about.
std::size_t bytesOf(ToldObject const& told) {
    std::size_t bytes = told.label.byteCount() + told.verdict.size();
    for (std::string const& sentence : told.tree) {
        bytes += sizeof sentence + sentence.size();
    }
    for (ToldMention const& mention : told.mentions) {
        bytes += sizeof mention + mention.view.size() + mention.text.size();
    }
    return bytes;
}

} // namespace

Explanation tellAccess(Model const& model, I18NLocale const& locale,
                       Vex_Handle_Collection const& objects, VexAccessExplanation const& access,
                       AnsweredTree const& trees, std::optional<std::string> const& refusal) {
    AccessStory const accessStory(model, locale, access);
    TreeStory const treeStory(locale, trees);
    Explanation told;
    for (std::size_t index = 0; index < objects.size(); ++index) {
        VexExplainedObject const& object = access.objects[index];
        ToldObject each{labelOf(model, objects[index], locale),
                        object.included,
                        object.reason,
                        accessStory.verdictOf(object),
                        refusal ? std::vector<std::string>{"there is none: " + *refusal}
                                : treeStory.treatmentOf(objects[index], object.included),
                        tellMentions(object, access, accessStory)};
        Budget::chargeBytes(bytesOf(each));
        told.objects.push_back(std::move(each));
    }
    for (VexExplainedView const& view : access.views) {
        told.views.push_back({view.id.toUtf8(), nameIn(locale, model.findById(view.id)).toUtf8(),
                              accessStory.nameOf(view), view.inForce, view.role,
                              view.firstMemberRole.toUtf8(), accessStory.partOf(view)});
    }
    told.notGoneIntoAgain = labelsOf(model, notGoneIntoAgain(trees), locale);
    return told;
}

} // namespace vex
