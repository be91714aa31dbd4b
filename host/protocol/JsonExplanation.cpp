#include "host/protocol/JsonExplanation.h"

#include "host/insight/AccessStory.h"
#include "host/protocol/JsonObjects.h"
#include "host/protocol/JsonText.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json describe(ToldObject const& object) {
    Json mentions = Json::array();
    for (ToldMention const& mention : object.mentions) {
        mentions.push_back({{"view", mention.view},
                            {"included", mention.included},
                            {"excluded", mention.excluded},
                            {"hidden", mention.hidden}});
    }
    return {{"id", object.label.id},       {"class", object.label.className},
            {"name", object.label.name},   {"accessible", object.accessible},
            {"rule", codeOf(object.rule)}, {"text", object.verdict},
            {"tree", object.tree},         {"views", mentions}};
}

Json describe(ToldView const& view) {
    return {{"id", view.id},
            {"name", view.name},
            {"inForce", view.inForce},
            {"role", codeOf(view.role)},
            {"firstMemberRole", view.firstMemberRole},
            {"text", view.part}};
}

} // namespace

std::string toJson(Explanation const& explanation) {
    Json whole{{"objects", Json::array()}, {"views", Json::array()}};
    for (ToldObject const& object : explanation.objects) {
        whole["objects"].push_back(describe(object));
    }
    for (ToldView const& view : explanation.views) {
        whole["views"].push_back(describe(view));
    }
    addNotGoneIntoAgain(whole, explanation.notGoneIntoAgain);
    return toText(whole, JsonForm::Indented);
}

} // namespace vex
