#include "tests/naive/ModelGenerator.h"

#include "tests/naive/OddContent.h"

#include <algorithm>
#include <functional>

namespace naive {

namespace {

struct PropertyDraft {
    std::string name;
    std::string locale;
    std::string value;
    bool nested = false;
};

struct Draft {
    std::string cls;
    std::string id;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<PropertyDraft> properties;
    std::vector<std::unique_ptr<Draft>> children;
    std::vector<std::string> between; // odd content before each child, and at the end
};

std::vector<std::string> const namePool = {"Sales", "A",    "B",     "C",   "Orders",     "Margin",
                                           "a b",   "x]y",  "p.q",   "[q",  "]]",         "A B",
                                           "ä",     "日本", "a].[b", "<&>", "\"quoted\"", "É.é"};

class ModelDrafter {
public:
    ModelDrafter(Random& random, int objects, bool isOdd)
        : m_random(random), m_odd(random), m_isOdd(isOdd),
          m_left(random.between(std::min(8, objects), objects)) {
        int const names = m_random.between(3, 8);
        for (int i = 0; i < names; ++i) {
            m_names.push_back(m_random.pick(namePool));
        }
        m_withoutQuerySubjects = m_random.chance(5);
        m_mostlyDistinct = m_random.chance(68);
        m_dangling = m_random.chance(12);
        m_shortcutsLeft = m_random.chance(25) ? 0 : m_random.between(1, 5);
    }

    std::string draw();

private:
    std::unique_ptr<Draft> element(std::string const& cls);
    void name(Draft& draft, bool wanted);
    std::string anyName();
    void describe(Draft& draft);
    void fill(Draft& parent, int depth);
    void makeOdd(Draft& draft);
    std::string childClass(std::string const& parent);
    void aimShortcuts(Draft& root);
    std::string target(PlainModel const& model, Handle shortcut);
    void addRefobj(Draft& draft, std::string const& reference);
    std::string views(PlainModel const& model);
    std::string set(Texts const& ids, int depth = 0);
    std::string printed(Draft const& draft) const;
    std::string printedMembers(Draft const& draft) const;
    std::string document(Draft const& root, std::string const& views) const;

    Random& m_random;
    OddContent m_odd;
    bool m_isOdd;
    int m_left;
    int m_shortcutsLeft;
    bool m_dangling;
    bool m_withoutQuerySubjects;
    bool m_mostlyDistinct; ///< then most names end in a number of their own
    int m_nextId = 1;
    std::vector<std::string> m_names;
    std::string m_head;
};

std::unique_ptr<Draft> ModelDrafter::element(std::string const& cls) {
    --m_left;
    auto draft = std::make_unique<Draft>();
    draft->cls = cls;
    if (m_random.chance(95)) {
        draft->id = cls.substr(0, 1) + std::to_string(m_nextId);
    }
    ++m_nextId;
    name(*draft, cls == "namespace");
    describe(*draft);
    return draft;
}

std::string ModelDrafter::anyName() {
    std::string const& name = m_random.pick(m_names);
    return m_mostlyDistinct && m_random.chance(85) ? name + std::to_string(m_nextId) : name;
}

void ModelDrafter::name(Draft& draft, bool wanted) {
    auto const localised = [&](std::string const& locale) {
        draft.properties.push_back({"name", locale, anyName()});
    };
    switch (m_random.weighted({50, 40, wanted ? 1 : 3, wanted ? 1 : 3, wanted ? 1 : 2, 2, 1})) {
    case 0:
        draft.attributes.emplace_back("name", anyName());
        break;
    case 1:
        for (char const* locale : {"en", "de", "de_AT", "ja"}) {
            if (m_random.chance(locale == std::string("en") ? 93 : 72)) {
                localised(locale);
            }
        }
        break;
    case 2:
        localised(m_random.chance(50) ? "de" : "ja");
        break;
    case 3:
        break;
    case 4:
        draft.properties.push_back({"name", "", ""});
        break;
    case 5:
        draft.attributes.emplace_back("name", anyName());
        localised("de");
        break;
    default:
        draft.attributes.emplace_back("name", anyName());
        draft.properties.push_back({"name", "", anyName()});
    }
}

void ModelDrafter::describe(Draft& draft) {
    if (m_random.chance(30)) {
        draft.attributes.emplace_back("screenTip", "tip " + std::to_string(m_nextId));
    }
    if (m_random.chance(20)) {
        draft.properties.push_back({"description", m_random.chance(50) ? "de" : "", "about"});
    }
    if (m_random.chance(25)) {
        draft.attributes.emplace_back("usage", m_random.chance(50) ? "fact" : "identifier");
    }
    if (m_random.chance(6)) {
        draft.properties.push_back({"format", "", "long", true});
    }
    if (m_random.chance(4)) {
        draft.properties.push_back({m_random.chance(50) ? "a b" : "*", "", "odd"});
    }
    if (m_random.chance(4)) {
        draft.properties.push_back({"usage", "de", "localised"});
    }
}

std::string ModelDrafter::childClass(std::string const& parent) {
    if (m_isOdd && m_random.chance(40)) {
        return m_odd.cls();
    }
    static std::vector<std::string> const classes = {
        "namespace", "folder",      "querySubject", "queryItemFolder", "queryItem",
        "filter",    "calculation", "shortcut",     "relationship",    "queryItem"};
    if (parent == "namespace") {
        return classes[m_random.weighted({14, 20, 26, 0, 2, 12, 10, 16, 2})];
    }
    if (parent == "folder") {
        return classes[m_random.weighted({6, 16, 40, 0, 2, 12, 8, 16, 1})];
    }
    if (parent == "querySubject") {
        return classes[m_random.weighted({1, 2, 2, 22, 52, 10, 6, 6, 1})];
    }
    if (parent == "queryItemFolder") {
        return classes[m_random.weighted({0, 1, 0, 20, 65, 3, 6, 6, 0})];
    }
    return m_random.pick(classes);
}

// Brothers come before children, so that what is left is not spent on the first branch.
void ModelDrafter::fill(Draft& parent, int depth) {
    bool const container = parent.cls == "namespace" || parent.cls == "folder" ||
                           parent.cls == "querySubject" || parent.cls == "queryItemFolder";
    if (depth > 6 || !(container || m_isOdd || m_random.chance(4))) {
        return;
    }
    int const count = m_random.between(parent.cls == "namespace" ? 3 : 1, 6);
    for (int i = 0; i < count && m_left > 0; ++i) {
        std::string cls = childClass(parent.cls);
        if (cls == "shortcut") {
            if (m_shortcutsLeft == 0) {
                cls = "querySubject";
            } else {
                --m_shortcutsLeft;
            }
        }
        if (cls == "querySubject" && m_withoutQuerySubjects) {
            cls = "filter";
        }
        parent.children.push_back(element(cls));
    }
    for (auto const& child : parent.children) {
        fill(*child, depth + 1);
    }
}

void ModelDrafter::makeOdd(Draft& draft) {
    std::set<std::string> taken;
    for (PropertyDraft const& property : draft.properties) {
        taken.insert(OddContent::key(property.name, property.locale));
    }
    for (std::size_t i = 0; i <= draft.children.size(); ++i) {
        draft.between.push_back(m_odd.between(taken));
    }
    for (auto const& child : draft.children) {
        for (auto const& each : m_odd.attributes()) {
            child->attributes.push_back(each);
        }
        makeOdd(*child);
    }
}

std::string ModelDrafter::target(PlainModel const& model, Handle shortcut) {
    static std::vector<std::string> const classes = {"namespace", "querySubject", "queryItem",
                                                     "filter",    "folder",       "shortcut"};
    if (m_dangling && m_random.chance(40)) {
        return m_random.chance(80) ? "[" + anyName() + "].[nowhere]" : "[broken";
    }
    std::string const& wanted = classes[m_random.weighted({24, 30, 12, 8, 14, 12})];
    Handles candidates = model.elementsByTagName(model.root(), fromUtf8(wanted));
    if (m_random.chance(6)) {
        candidates = {shortcut};
    } else if (m_random.chance(6)) {
        candidates = {model.getParent(shortcut)};
    }
    if (candidates.empty() || m_random.chance(6)) {
        candidates = allObjects(model);
    }
    std::optional<Texts> const names = model.referenceOf(m_random.pick(candidates));
    return names ? toUtf8(quotedPath(*names)) : "";
}

void ModelDrafter::addRefobj(Draft& draft, std::string const& reference) {
    if (m_random.chance(60)) {
        draft.attributes.emplace_back("refobj", reference);
    } else {
        draft.properties.push_back({"refobj", "", reference});
    }
}

// The targets are looked up in the model as it stands without them: a target changes no name.
void ModelDrafter::aimShortcuts(Draft& root) {
    PlainModel const model(document(root, ""));
    Handles const objects = allObjects(model);
    std::size_t next = 0;
    std::function<void(Draft&)> const aim = [&](Draft& draft) {
        for (auto const& child : draft.children) {
            Handle const object = objects[next];
            ++next;
            if (child->cls == "shortcut" && m_random.chance(96)) {
                addRefobj(*child, target(model, object));
                if (m_random.chance(12)) {
                    std::string const second = m_random.chance(30) ? "" : target(model, object);
                    child->properties.push_back({"refobj", "", second});
                }
            }
            aim(*child);
        }
    };
    aim(root);
}

std::string ModelDrafter::set(Texts const& ids, int depth) {
    static std::vector<std::string> const kinds = {"included", "excluded", "hidden", "other"};
    std::size_t const kind = m_random.weighted({60, 20, 17, 2});
    int const share = kind == 0 ? m_random.between(40, 100) : m_random.between(5, 40);
    std::string text = "<set";
    if (m_random.chance(98)) {
        text += attribute("kind", kinds[kind]);
    }
    text += ">";
    if (m_isOdd && m_random.chance(10)) { // another kind, or one in a language
        text += "<property" + attribute("name", "kind") +
                (m_random.chance(50) ? attribute("locale", "de") : "") + ">" +
                m_random.pick(kinds) + "</property>";
    }
    for (Text const& id : ids) {
        if (m_random.chance(share)) {
            text += "<item>" + escapedContent(id) + "</item>";
        }
        if (m_isOdd && depth < 3 && m_random.chance(1)) {
            text += set(ids, depth + 1);
        }
    }
    return text + (m_random.chance(3) ? "<item/></set>" : "</set>");
}

std::string ModelDrafter::views(PlainModel const& model) {
    static std::vector<std::string> const flags = {"true", "false", "1", "0", "2x", "yes"};
    Texts ids;
    for (Handle object : allObjects(model)) {
        Text id;
        if (model.getId(object, id)) {
            ids.push_back(id);
        }
    }
    std::string text;
    int const count = m_random.chance(3) ? 0 : m_random.between(1, 5);
    bool const roleBased = m_random.chance(45);
    bool const mayDefault = m_random.chance(60);
    for (int i = 1; i <= count; ++i) {
        text += "<securityView" + attribute("id", "v" + std::to_string(i));
        if (roleBased && m_random.chance(70)) {
            text += attribute("roleBased", flags[m_random.weighted({60, 8, 10, 6, 8, 8})]);
        }
        text += ">";
        int const members = mayDefault ? m_random.between(0, 2) : m_random.between(1, 2);
        for (int m = 0; m < members; ++m) {
            text += "<member" + attribute("roleId", "r" + std::to_string(m_random.between(1, 3))) +
                    "/>";
        }
        int const sets = m_random.between(i == 1 ? 1 : 0, 4);
        for (int s = 0; s < sets; ++s) {
            text += set(ids);
        }
        text += m_isOdd && m_random.chance(10) ? "<group>" + set(ids) + "</group>" : "";
        text += "</securityView>";
    }
    return "<securityViews>" + text + "</securityViews>";
}

std::string ModelDrafter::printed(Draft const& draft) const {
    std::string text = "<" + draft.cls;
    if (!draft.id.empty()) {
        text += attribute("id", draft.id);
    }
    for (auto const& [name, value] : draft.attributes) {
        text += attribute(name, value);
    }
    text += ">";
    for (PropertyDraft const& property : draft.properties) {
        text += "<property" + attribute("name", property.name);
        if (!property.locale.empty()) {
            text += attribute("locale", property.locale);
        }
        text += ">" + escapedContent(fromUtf8(property.value));
        text +=
            property.nested ? "<property name=\"inner\">in</property></property>" : "</property>";
    }
    return text + printedMembers(draft) + "</" + draft.cls + ">";
}

std::string ModelDrafter::printedMembers(Draft const& draft) const {
    auto between = draft.between.begin();
    std::string text;
    for (auto const& child : draft.children) {
        text += (m_isOdd ? *between++ : "") + printed(*child);
    }
    return text + (m_isOdd ? *between : "");
}

std::string ModelDrafter::document(Draft const& root, std::string const& views) const {
    return m_head + printedMembers(root) + views + "</model>";
}

std::string ModelDrafter::draw() {
    static std::vector<std::string> const defaults = {"en", "de", "ja", "de_AT"};
    m_head = "<model";
    if (m_random.chance(90)) {
        m_head += attribute("defaultLocale", defaults[m_random.weighted({70, 16, 6, 3})]);
    }
    m_head += ">";
    if (m_random.chance(85)) {
        m_head += "<locales>";
        for (char const* locale : {"en", "de", "de-AT", "ja", "fr"}) {
            if (m_random.chance(50)) {
                m_head += std::string(m_isOdd ? "<locale> " : "<locale>") + locale + "</locale>";
            }
        }
        m_head += "</locales>";
    }
    Draft root;
    if (m_random.chance(5)) {
        root.children.push_back(element("folder"));
        fill(*root.children.back(), 1);
    }
    int const namespaces = m_random.chance(2)    ? 0
                           : m_random.chance(60) ? 1
                                                 : m_random.between(2, 3);
    for (int i = 0; i < namespaces; ++i) {
        root.children.push_back(element("namespace"));
        fill(*root.children.back(), 1);
    }
    if (m_isOdd) {
        fill(root, 1);
        makeOdd(root);
    }
    aimShortcuts(root);
    return document(root, views(PlainModel(document(root, ""))));
}

} // namespace

std::string generateModel(Random& random, int objects) {
    return ModelDrafter(random, objects, false).draw();
}

std::string generateOddModel(Random& random, int objects) {
    return ModelDrafter(random, objects, true).draw();
}

std::string generateCatalogue(Random& random) {
    std::string text = "<catalog>";
    for (char const* path : {"/content/m", "/content/other"}) {
        text += "<model" + attribute("path", path) + attribute("file", "m.model.xml") + ">";
        if (random.chance(80)) {
            text += "<package" + attribute("value", random.chance(90) ? "Pack & Co" : "") +
                    "><property name=\"screenTip\" locale=\"en\">tip</property>"
                    "<property name=\"screenTip\" locale=\"de\">Tipp</property>"
                    "<property name=\"description\">about</property></package>";
        }
        int const grants = random.chance(2) ? 0 : random.between(2, 6);
        for (int i = 0; i < grants; ++i) {
            int const role = i == 0 ? 1 : random.between(1, 3);
            int const view = i == 0 ? 1 : random.between(1, 5);
            text += "<grant" + attribute("role", "r" + std::to_string(role)) +
                    attribute("view", "v" + std::to_string(view)) + "/>";
        }
        text += "</model>";
    }
    text += "<user name=\"ann\"><role>r1</role></user>"
            "<user name=\"bob\"><role>r2</role><role>r1</role></user>"
            "<user name=\"cleo\"><role>r1</role><role>r3</role></user>"
            "<user name=\"dan\"><role>none</role></user><user name=\"eve\"/>";
    return text + "</catalog>";
}

} // namespace naive
