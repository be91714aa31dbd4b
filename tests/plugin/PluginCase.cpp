#include "tests/plugin/PluginCase.h"

PluginCase::PluginCase(std::string const& xml)
    : model(xml), session(model),
      plugin(VexPluginFactory_getInstance()->FindCreator("VexMAActionPlugin")->create()) {
    session.setViews({"v"});
    session.setRoles({"clerk"});
}

PluginCase::~PluginCase() {
    model.calls().failAt(0);
    notify(VexNotification::SessionClosed);
}

long PluginCase::act(VexVariant const& action, VexParams const& in) {
    VexException exception(0);
    out.clear();
    out.AddParam(VexVariant(0L));
    out.AddParam(VexVariant(&response.node()));
    return plugin->DoAction(session, action, exception, in, out).GetCode();
}

void PluginCase::notify(int kind) {
    plugin->Notify(TestNotification(kind, session));
}

long PluginCase::askMetadata(char const* path) {
    TestRequest request("<Metadata Depth=\"1\"><Property name=\"*/@name\"/></Metadata>");
    I18NString modelPath(path);
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&modelPath));
    in.AddParam(VexVariant(&request.node()));
    return act(Metadata, in);
}

long PluginCase::askAccess(char const* id, long mode, char const* path) {
    I18NString modelPath(path);
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(VexVariant(&modelPath));
    in.AddParam(VexVariant(model.byId(id)));
    in.AddParam(VexVariant(mode));
    return act(Accessibility, in);
}

std::string PluginCase::entry(char const* key) {
    return session.customData().Get(key, "VexMAActionPlugin").toUtf8();
}
