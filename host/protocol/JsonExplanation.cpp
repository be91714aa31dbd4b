#include "host/protocol/JsonExplanation.h"

#include "host/insight/AccessStory.h"
#include "host/protocol/JsonObjects.h"

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
    Json told{{"id", object.label.id},       {"class", object.label.className},
              {"name", object.label.name},   {"accessible", object.accessible},
              {"rule", codeOf(object.rule)}, {"text", object.verdict},
              {"tree", object.tree},         {"views", mentions}};
    if (!object.rules.empty()) {
        told["policy"] = object.rules;
    }
    return told;
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

void writeJson(std::ostream& out, Explanation const& explanation) {
    JsonStream json(out);
    json.beginObject();
    json.beginList("objects");
    for (ToldObject const& object : explanation.objects) {
        json.entry(describe(object));
    }
    json.end();
    json.beginList("views");
    for (ToldView const& view : explanation.views) {
        json.entry(describe(view));
    }
    json.end();
    addNotGoneIntoAgain(json, explanation.notGoneIntoAgain);
    json.end();
}

} // namespace vex
