#pragma once

#include "host/import/xml/ModelLoader.h"

/// A model with English and German, and a few objects.
inline std::shared_ptr<vex::Model const> smallModel(char const* rootName = "Sales") {
    std::string const text = std::string(R"(<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n1" name=")") +
                             rootName + R"(">
    <querySubject id="q1" name="Orders"/>
    <shortcut id="s1" name="Again" refobj="[Sales].[Orders]"/>
  </namespace>
</model>)";
    return vex::loadModelText(text, "small.model.xml");
}
