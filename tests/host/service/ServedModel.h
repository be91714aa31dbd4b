#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/import/xml/ModelLoader.h"
#include "host/service/Service.h"
#include "tests/support/Casts.h"

constexpr char const* servedPath = "/content/m";

/// The plug-in of the whole program.
inline std::shared_ptr<vex::PluginProxy> const& servingPlugin() {
    static std::shared_ptr<vex::PluginProxy> const plugin = vex::loadPlugin(VEX_PLUGIN_FILE);
    return plugin;
}

/// Two subjects, one view that has the first of them and one that has both.
inline std::shared_ptr<vex::Model const> servedModel(std::string const& subject = "Orders") {
    return vex::loadModelText(casts::guardedShop(subject), "m.xml");
}

/// Ann may use the first view, ben both.
inline std::shared_ptr<vex::Catalogue const> servedCatalogue() {
    vex::Diagnostics found;
    return vex::readCatalogueText(casts::guardedCatalogue, "c.xml", ".", found);
}
