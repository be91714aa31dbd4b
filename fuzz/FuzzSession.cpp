#include "fuzz/FuzzSession.h"

#include "KRLIDOM_Reader.h"
#include "VexAction.h"
#include "VexNotification.h"
#include "fuzz/FuzzTargets.h"
#include "host/catalogue/Catalogue.h"
#include "host/content/MemoryContent.h"
#include "host/import/xml/ModelLoader.h"

namespace {

constexpr std::string_view modelText = R"(<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n"><property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <folder id="f" name="Facts">
      <querySubject id="q" name="Orders" screenTip="Lines">
        <queryItem id="i" name="Quantity" datatype="int32"/>
        <queryItemFolder id="d" name="Dates"><queryItem id="j" name="Ordered"/></queryItemFolder>
        <filter id="x" name="Open"/>
      </querySubject>
    </folder>
    <namespace id="o" name="Orders"><calculation id="c" name="Margin"/></namespace>
    <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
    <shortcut id="t" name="Loop" refobj="[Sales]"/>
  </namespace>
  <securityViews>
    <securityView id="v"><set kind="included"><item>n</item><item>q</item><item>i</item>
      <item>s</item><item>c</item></set></securityView>
    <securityView id="w" roleBased="true"><member roleId="r"/>
      <set kind="included"><item>q</item><item>i</item></set><set kind="hidden"><item>j</item></set>
    </securityView>
  </securityViews></model>)";

constexpr std::string_view catalogueText = R"(<catalog>
  <model path="/content/m" file="m.xml"><package value="P"><property name="screenTip">T</property>
    </package><grant role="r" view="v"/><grant role="r" view="w"/></model>
  <user name="ann"><role>r</role></user></catalog>)";

std::shared_ptr<vex::PluginProxy> const& sharedPlugin() {
    static std::shared_ptr<vex::PluginProxy> const proxy = vex::loadPlugin(VEX_PLUGIN_FILE);
    return proxy;
}

} // namespace

namespace fuzz {

vex::PluginProxy& plugin() {
    return *sharedPlugin();
}

vex::Service& service() {
    static vex::Service calls(sharedPlugin());
    return calls;
}

vex::Visit const& usualVisit() {
    static vex::MemoryContent content([] {
        vex::Diagnostics found;
        return vex::readCatalogueText(catalogueText, "c.xml", ".", found);
    }());
    static vex::Visit const visit = [] {
        content.setModel("/content/m", vex::loadModelText(modelText, "m.xml"));
        return vex::openVisit(content, {"/content/m", "ann", I18NLocale("de")});
    }();
    return visit;
}

vex::Visit visitAlone(std::shared_ptr<vex::Model const> model) {
    static vex::MemoryContent content;
    content.setModel("file:m", std::move(model));
    return vex::openVisit(content, {"file:m", "", I18NLocale("de")});
}

vex::MetadataAnswer request(vex::Visit const& visit, std::string_view text) {
    KRLIDOM_OwnedDocument const document = KRLIDOM_Reader::parse(text, "request");
    return service().metadata(visit, document.document(), smallLimits());
}

std::unique_ptr<vex::HostSession> openSession(vex::SessionPaths paths) {
    return vex::openSession(usualVisit(), paths);
}

void close(vex::HostSession& session) {
    plugin().Notify(session, VexNotification::SessionClosed);
}

vex::ActionLimits smallLimits() {
    vex::ActionLimits limits;
    limits.response.elements = 500;
    limits.response.bytes = 4U << 20U;
    return limits;
}

vex::ActionOutcome ask(vex::HostSession& session, std::string_view request) {
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text("/content/m"));
    in.AddParam(values.node(KRLIDOM_Reader::parse(request, "request")));
    return vex::callAction(plugin(), session, VexVariant(VexAction::MetadataRequest), in,
                           smallLimits());
}

vex::ActionOutcome check(vex::HostSession& session) {
    vex::ActionValues values;
    VexParams in;
    in.AddParam(VexVariant(0L));
    in.AddParam(values.text("/content/m"));
    in.AddParam(VexVariant(session.findObject("q")));
    in.AddParam(VexVariant(0L));
    return vex::callAction(plugin(), session, VexVariant(VexAction::AccessibilityRequest), in,
                           smallLimits());
}

void requireSound(vex::ActionOutcome const& outcome) {
    using End = vex::ActionOutcome::End;
    if (outcome.end == End::Raised) {
        require(outcome.raised->GetId() != 0 && !outcome.text.empty(), "a failure says what it is");
        require(outcome.appended.empty(), "a failed call appends nothing");
    } else if (outcome.end == End::Stopped) {
        require(outcome.text.find(", which is the limit.") != std::string::npos,
                "only a limit of the answer stops a call: " + outcome.text);
    }
    require(outcome.response.elementCount() <= smallLimits().response.elements,
            "an answer keeps to its limit");
}

void requireSound(vex::MetadataAnswer const& answer) {
    using Kind = vex::CallEnd::Kind;
    if (answer.end.kind == Kind::Raised) {
        require(answer.end.failure->id != 0 && !answer.end.text.empty(),
                "a failure says what it is");
    } else if (answer.end.kind == Kind::Stopped) {
        require(answer.end.text.find(", which is the limit.") != std::string::npos,
                "only a limit of the answer stops a call: " + answer.end.text);
    }
    require(answer.response.elementCount() <= smallLimits().response.elements,
            "an answer keeps to its limit");
}

} // namespace fuzz
