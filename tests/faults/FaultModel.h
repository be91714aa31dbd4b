#pragma once

/// A small model with something of every kind: localised names, folders, a
/// shortcut, views with and without roles, names too long for a string's own room.
inline constexpr char const* faultModel = R"(<?xml version="1.0" encoding="UTF-8"?>
<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de_AT</locale></locales>
  <namespace id="n">
    <property name="name" locale="en">Sales of every store and of the shop on the web</property>
    <property name="name" locale="de">Vertrieb</property>
    <folder id="f" name="Facts">
      <querySubject id="q" name="Orders" screenTip="One row for each line of each order, returned ones too">
        <queryItem id="i" name="Quantity" datatype="int32" usage="fact">
          <property name="format">decimal<property name="digits">2</property></property>
        </queryItem>
        <queryItemFolder id="d" name="Dates"><queryItem id="j" name="Ordered"/></queryItemFolder>
        <filter id="x" name="Open" expression="[Sales].[Orders].[Shipped] is null"/>
      </querySubject>
      <shortcut id="s" name="Orders again" refobj="[Sales of every store and of the shop on the web].[Orders]"/>
    </folder>
    <calculation id="c" name="Margin" expression="1"/>
  </namespace>
  <securityViews>
    <securityView id="v">
      <set kind="included">
        <item>n</item><item>f</item><item>q</item><item>i</item><item>j</item><item>x</item>
        <item>s</item><item>an object that was in the model until the version before last</item>
      </set>
    </securityView>
    <securityView id="w" roleBased="true">
      <member roleId="clerk"/>
      <set kind="included"><item>i</item><item>q</item><item>f</item><item>n</item></set>
      <set kind="excluded"><item>j</item></set>
      <set kind="hidden"><item>x</item></set>
    </securityView>
  </securityViews>
</model>
)";

inline constexpr char const* faultCatalogue = R"(<?xml version="1.0" encoding="UTF-8"?>
<catalog>
  <model path="/content/m" file="m.model.xml">
    <package value="Sales">
      <property name="screenTip" locale="en">Sales and stock of all stores, day by day</property>
      <property name="screenTip">-</property>
    </package>
    <grant role="clerk" view="v"/>
    <grant role="clerk" view="w"/>
  </model>
  <user name="carl"><role>clerk</role><role>a role with a name that is rather long</role></user>
</catalog>
)";
