#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/Service.h"

constexpr char const* servedPath = "/content/m";

/// The plug-in of the whole program.
inline std::shared_ptr<vex::PluginProxy> const& servingPlugin() {
    static std::shared_ptr<vex::PluginProxy> const plugin = vex::loadPlugin(VEX_PLUGIN_FILE);
    return plugin;
}

/// Two subjects, one view that has the first of them and one that has both.
inline std::shared_ptr<vex::Model const> servedModel(std::string const& subject = "Orders") {
    return vex::loadModelText(R"(<model defaultLocale="en">
        <locales><locale>en</locale><locale>de</locale></locales>
        <namespace id="n"><property name="name" locale="en">Sales</property>
          <property name="name" locale="de">Vertrieb</property>
          <querySubject id="q" name=")" +
                                  subject + R"("/><querySubject id="c" name="Costs"/>
        </namespace>
        <securityViews>
          <securityView id="some"><set kind="included"><item>n</item><item>q</item></set>
          </securityView>
          <securityView id="all"><set kind="included"><item>n</item><item>q</item><item>c</item>
            </set></securityView>
        </securityViews></model>)",
                              "m.xml");
}

/// Ann may use the first view, ben both.
inline std::shared_ptr<vex::Catalogue const> servedCatalogue() {
    vex::Diagnostics found;
    return vex::readCatalogueText(R"(<catalog>
        <model path="/content/m" file="m.xml"><grant role="clerk" view="some"/>
          <grant role="boss" view="all"/></model>
        <user name="ann"><role>clerk</role></user>
        <user name="ben"><role>clerk</role><role>boss</role></user></catalog>)",
                                  "c.xml", ".", found);
}
