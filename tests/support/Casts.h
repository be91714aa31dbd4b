#pragma once

#include <initializer_list>
#include <string>

/// Models for tests that are not about their model: all are of one small shop.
/// What a test is about, it says itself.
namespace casts {

/// A security view that includes the objects with these ids, for whoever it is
/// granted to, or for those who hold the role as well.
inline std::string view(char const* id, std::initializer_list<char const*> included,
                        char const* role = nullptr) {
    std::string text = std::string("<securityView id=\"") + id + '"';
    text += role == nullptr ? ">"
                            : std::string(R"( roleBased="true"><member roleId=")") + role + "\"/>";
    text += R"(<set kind="included">)";
    for (char const* const object : included) {
        text += std::string("<item>") + object + "</item>";
    }
    return text + "</set></securityView>";
}

inline std::string views(std::string const& all) {
    return "<securityViews>" + all + "</securityViews>";
}

/// The user "carl", a clerk, who may use these views of "/content/m".
inline std::string catalogue(std::initializer_list<char const*> granted,
                             char const* file = "m.model.xml") {
    std::string text = std::string(R"(<catalog><model path="/content/m" file=")") + file + "\">";
    for (char const* const each : granted) {
        text += std::string(R"(<grant role="clerk" view=")") + each + "\"/>";
    }
    return text + R"(</model><user name="carl"><role>clerk</role></user></catalog>)";
}

/// "Sales" (n) with the filters "X" (x) and "Y" (y), of which the view "v" has the
/// first.
inline std::string plainShop() {
    return R"(<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales"><filter id="x" name="X"/><filter id="y" name="Y"/></namespace>)" +
           views(view("v", {"n", "x"})) + "</model>";
}

/// "Sales" (n) with the query subject "Orders" (q), whose item is "Quantity" (i),
/// and the shortcut "Again" (s) to it. `more` stands behind "Sales".
inline std::string shop(std::string const& more = "") {
    return R"(<model id="m" defaultLocale="en">
  <namespace id="n" name="Sales">
    <querySubject id="q" name="Orders"><queryItem id="i" name="Quantity"/></querySubject>
    <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
  </namespace>)" +
           more + "</model>";
}

/// In English and German: "Sales" or "Vertrieb" (n) with the folder "Facts" or
/// "Fakten" (f), in it "Orders" (q), and the filter "Open", which has no id.
inline constexpr char const* bilingualShop = R"(<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n">
    <property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <folder id="f">
      <property name="name" locale="en">Facts</property>
      <property name="name" locale="de">Fakten</property>
      <querySubject id="q" name="Orders"/>
    </folder>
    <filter name="Open"/>
  </namespace></model>)";

/// "Sales" or "Vertrieb" (n) with two query subjects, the first (q) of any name,
/// the second "Costs" (c); the view "some" has the first, the view "all" both.
inline std::string guardedShop(std::string const& subject = "Orders") {
    return R"(<model defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n"><property name="name" locale="en">Sales</property>
    <property name="name" locale="de">Vertrieb</property>
    <querySubject id="q" name=")" +
           subject + R"("/><querySubject id="c" name="Costs"/>
  </namespace>)" +
           views(view("some", {"n", "q"}) + view("all", {"n", "q", "c"})) + "</model>";
}

/// For the guarded shop: ann may use "some", ben both views.
inline constexpr char const* guardedCatalogue = R"(<catalog>
  <model path="/content/m" file="m.xml"><grant role="clerk" view="some"/>
    <grant role="boss" view="all"/></model>
  <user name="ann"><role>clerk</role></user>
  <user name="ben"><role>clerk</role><role>boss</role></user></catalog>)";

/// Something for every end that a tree comes to: "Sales" (n) with the folder
/// "Facts" (f), in it "Orders" (q) with "Total" (i); a filter without a name
/// (nameless) with one that has one (inner); the shortcut "Again" (s) to
/// "Orders", and one that stands for nothing (none). `more` stands behind "Sales".
inline std::string shopOfAllEnds(std::string const& more = "") {
    return R"(<model defaultLocale="en">
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts"><querySubject id="q" name="Orders">
      <queryItem id="i" name="Total"/></querySubject></folder>
    <filter id="nameless"><filter id="inner" name="Inner"/></filter>
    <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
    <shortcut id="none" name="Nothing"/>
  </namespace>)" +
           more + "</model>";
}

/// Something for every road that a request takes: folders, a namespace that the
/// views leave out (h) around what they include, collections two levels down, a
/// shortcut; the views "v" and, for clerks, "r".
inline std::string shopOfAllRoads() {
    std::initializer_list<char const*> const included{"n", "q", "i", "p", "x", "s"};
    return R"(<model id="m" defaultLocale="en">
  <locales><locale>en</locale><locale>de</locale></locales>
  <namespace id="n" name="Sales">
    <folder id="f" name="Facts"><querySubject id="q" name="Orders">
      <queryItem id="i" name="Quantity"/></querySubject></folder>
    <namespace id="h" name="Hidden"><querySubject id="p" name="Parts"/>
      <filter id="x" name="Open"/></namespace>
    <shortcut id="s" name="Again" refobj="[Sales].[Orders]"/>
  </namespace>)" +
           views(view("v", included) + view("r", included, "clerk")) + "</model>";
}

} // namespace casts
