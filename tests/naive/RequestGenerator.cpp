#include "tests/naive/RequestGenerator.h"

#include <algorithm>
#include <utility>

namespace naive {

namespace {

std::vector<std::string> const classNames = {"namespace",   "folder",          "querySubject",
                                             "queryItem",   "queryItemFolder", "filter",
                                             "calculation", "shortcut",        "package"};

bool isBelowNamespace(Handle object) {
    for (Handle ancestor = object; ancestor; ancestor = ancestor->parent) {
        if (ancestor->cls == u"namespace") {
            return true;
        }
    }
    return false;
}

} // namespace

RequestGenerator::RequestGenerator(Random& random, PlainModel const& model, Text locale)
    : m_random(random), m_model(model), m_locale(std::move(locale)) {
    for (Handle object : allObjects(model)) {
        if (isBelowNamespace(object)) {
            m_objects.push_back(object);
        }
    }
}

std::string RequestGenerator::request() {
    m_classesOnPath.clear();
    std::string const chosen = options();
    std::string inside = properties();
    inside += collections();
    inside += globals();
    inside += constraints();
    if (m_random.chance(1)) {
        return "<Other>" + inside + "</Other>";
    }
    std::string const functions = m_random.chance(2) ? "<Functions any=\"\"/>" : "";
    std::string const metadata = "<Metadata" + chosen + ">" + functions + inside + "</Metadata>";
    switch (m_random.weighted({85, 6, 5, 4})) {
    case 0:
        return metadata;
    case 1:
        return "<Envelope><!-- wrapped -->" + metadata + "</Envelope>";
    case 2:
        return "<Envelope>" + metadata + "<Metadata" + options() + "/></Envelope>";
    default:
        return "<?target text?>" + metadata + "<!-- after -->";
    }
}

std::string RequestGenerator::options() {
    std::string text = depth();
    text += start();
    if (m_random.chance(4)) {
        text += attribute("function", m_random.chance(90) ? "package" : "");
    }
    if (m_random.chance(9)) {
        int const view = m_random.chance(50) ? 1 : m_random.between(1, 3);
        text += attribute("securityView", "v" + std::to_string(view));
    }
    if (m_random.chance(10)) {
        text += attribute("authoringLocale", "de");
    }
    return text;
}

std::string RequestGenerator::depth() {
    switch (m_random.weighted({8, 30, 52, 3, 3, 2, 1, 1})) {
    case 0:
        return "";
    case 1:
        return attribute("Depth", "0");
    case 2:
        return attribute("Depth", std::to_string(m_random.between(1, 5)));
    case 3:
        return attribute("Depth", std::to_string(m_random.between(6, 12)));
    case 4:
        return attribute("Depth", std::to_string(m_random.between(-3, -1)));
    case 5:
        return attribute("Depth", m_random.chance(50) ? "all" : " +2x");
    case 6:
        return attribute("Depth", std::to_string(m_random.between(1020, 3000)));
    default:
        return attribute("Depth", m_random.chance(50) ? "-99999999999" : "99999999999999999999999");
    }
}

std::string RequestGenerator::start() {
    auto const path = [this] { return toUtf8(spoilt(startPath())); };
    switch (m_random.weighted({14, 52, 16, 14, 4})) {
    case 0:
        return "";
    case 1:
        return attribute("start_at", path());
    case 2:
        return attribute("start_atPath", path()) + attribute("start_at", "[A]");
    case 3:
        return attribute("start_atRef", toUtf8(spoilt(reference())));
    default:
        return attribute("start_atRef", "") + attribute("start_atPath", path());
    }
}

std::string RequestGenerator::prefix() {
    switch (m_random.weighted({30, 45, 25})) {
    case 0:
        return "./";
    case 1:
        return "*/";
    default:
        return m_random.pick(classNames) + "/";
    }
}

std::string RequestGenerator::entry(std::string const& element, std::string const& text) {
    std::string result = "<" + element + attribute("name", text);
    if (m_random.chance(3)) {
        result += attribute("also", prefix() + "@usage");
    }
    return result + "/>";
}

std::string RequestGenerator::properties() {
    static std::vector<std::string> const names = {
        "name", "_path",  "_ref", "screenTip", "description", "usage",       "ID",
        "none", "format", "a b",  "",          "folder",      "relationship"};
    std::vector<std::string> asked;
    if (m_random.chance(5)) {
        asked.push_back((m_random.chance(70) ? "*/" : prefix()) + "@*");
    } else {
        for (auto const& [name, percent] : {std::pair("name", 88), {"_path", 50}, {"_ref", 50}}) {
            if (m_random.chance(percent)) {
                asked.push_back((m_random.chance(85) ? "*/@" : prefix() + "@") + name);
            }
        }
    }
    for (int more = m_random.between(0, 4); more > 0; --more) {
        std::size_t const name = m_random.weighted({6, 8, 8, 20, 16, 14, 12, 8, 4, 2, 1, 2, 1});
        asked.push_back(prefix() + "@" + names[name]);
    }
    if (m_random.chance(2)) {
        asked.push_back(prefix() + "@*");
    }
    for (int swaps = m_random.between(0, 3); swaps > 0 && asked.size() > 1; --swaps) {
        std::size_t const one = m_random.below(asked.size());
        std::swap(asked[one], asked[m_random.below(asked.size())]);
    }
    std::string text;
    for (std::string const& one : asked) {
        text += entry("Property", one);
    }
    return text;
}

std::string RequestGenerator::collections() {
    std::string text;
    switch (m_random.weighted({6, 3, 80})) {
    case 0:
        return entry("Property", m_random.chance(80) ? "*/*" : "./*");
    case 1:
        return m_random.chance(50) ? text : entry("Property", prefix() + "*");
    default:
        break;
    }
    int const share = m_random.chance(70) ? 92 : 40;
    bool const mixed = m_random.chance(15);
    for (std::string const& name : classNames) {
        bool const onPath = std::find(m_classesOnPath.begin(), m_classesOnPath.end(),
                                      fromUtf8(name)) != m_classesOnPath.end();
        bool const seldom = name == "namespace" || name == "shortcut" || name == "package";
        if (m_random.chance(onPath && !seldom ? 97 : seldom ? 12 : share)) {
            std::string const narrow = m_random.chance(50) ? "*/" : "./";
            text += entry("Property", (mixed && !onPath ? prefix() : narrow) + name);
        }
    }
    return text;
}

std::string RequestGenerator::globals() {
    static std::vector<std::string> const keys = {
        "/@decimal_separator", "/@decimalSeparator", "/@list_separator",   "/@listSeparator",
        "/@modelSearchPath",   "/@defaultLocale",    "/@supportedLocales", "/@effectiveLocale"};
    std::string text;
    for (int more = m_random.chance(30) ? m_random.between(1, 4) : 0; more > 0; --more) {
        text += entry("Property", m_random.pick(keys));
    }
    return text;
}

std::string RequestGenerator::constraints() {
    static std::vector<std::string> const names = {"name", "usage", "screenTip", "ID", "*", ""};
    static std::vector<std::string> const values = {"fact", "identifier", "about", "A", ""};
    std::string text;
    if (!m_random.chance(12)) {
        return text;
    }
    for (int more = m_random.between(1, 3); more > 0; --more) {
        std::string value = m_random.pick(values);
        if (m_random.chance(60) && !m_objects.empty()) {
            value = toUtf8(nameOf(m_random.pick(m_objects)));
        }
        std::string key = prefix() + "@";
        key += names[m_random.weighted({40, 30, 12, 10, 4, 2})];
        switch (m_random.weighted({90, 3, 3, 3})) {
        case 0:
            text += entry("Constraint", key + "=[" + value + "]");
            break;
        case 1:
            text += entry("Constraint", key + "[" + value);
            break;
        case 2:
            text += entry("Constraint", key + "=]" + value);
            break;
        default:
            text += entry("Constraint", key + "=(" + value);
        }
    }
    return text;
}

Text RequestGenerator::nameOf(Handle object) {
    static Texts const locales = {u"en", u"de", u"ja", u"de_AT"};
    Text name;
    m_model.readProperty(object, u"name", name,
                         m_random.chance(98) ? m_locale : m_random.pick(locales));
    return name;
}

Texts RequestGenerator::pathTo(Handle object) {
    Texts names;
    for (Handle step = object; step && isBelowNamespace(step); step = step->parent) {
        names.insert(names.begin(), nameOf(step));
        m_classesOnPath.push_back(step->cls);
        bool const mayStop = step->cls == u"namespace" && !names.front().empty();
        if (mayStop && m_random.chance(30)) {
            break;
        }
    }
    return names;
}

Handle RequestGenerator::startObject() {
    static Texts const containers = {u"namespace", u"folder", u"querySubject"};
    Handles candidates = m_objects;
    switch (m_random.weighted({25, 55, 20})) {
    case 0:
        break;
    case 1:
        candidates = m_model.elementsByTagName(m_model.root(), m_random.pick(containers));
        break;
    default:
        candidates = m_model.elementsByTagName(m_model.root(), u"shortcut");
    }
    return m_random.pick(candidates.empty() ? m_objects : candidates);
}

Text RequestGenerator::startPath() {
    if (m_objects.empty()) {
        return u"[A]";
    }
    Handle object = startObject();
    Texts names = pathTo(object);
    auto const hasGap = [&names] {
        return std::find(names.begin(), names.end(), Text()) != names.end();
    };
    while (hasGap() && m_random.chance(85)) {
        object = startObject();
        names = pathTo(object);
    }
    if (object->cls == u"shortcut" && m_random.chance(60)) {
        Text target;
        m_model.readProperty(object, u"refobj", target, u"");
        Handles const members = m_model.childObjects(m_model.objectWithReference(target));
        if (!members.empty()) {
            Handle const member = m_random.pick(members);
            m_classesOnPath.push_back(member->cls);
            names.push_back(nameOf(member));
        }
    }
    return quotedPath(names);
}

Text RequestGenerator::reference() {
    Handles candidates;
    for (Handle object : m_objects) {
        bool const inNamespace = m_model.getParent(object)->cls == u"namespace";
        bool const member =
            object->cls == u"filter" || object->cls == u"calculation" || object->cls == u"shortcut";
        if (object->cls == u"queryItem" || (member && inNamespace)) {
            candidates.push_back(object);
        }
    }
    if (candidates.empty() || m_random.chance(5)) {
        return m_random.chance(30) ? Text(u"[].[A].[B]") : startPath();
    }
    Handles const shortcuts = m_model.elementsByTagName(m_model.root(), u"shortcut");
    if (!shortcuts.empty() && m_random.chance(15)) {
        return quotedPath(referenceThrough(m_random.pick(shortcuts)));
    }
    Handle const object = m_random.pick(candidates);
    Texts names = {nameOf(object)};
    for (Handle above = object->parent; above; above = above->parent) {
        if (above->cls == u"namespace") {
            names.insert(names.begin(), nameOf(above));
            break;
        }
        if (above->cls == u"querySubject") {
            names.insert(names.begin(), nameOf(above));
        }
    }
    return quotedPath(names);
}

/// Namespace, shortcut, and an item of the shortcut's target where it has one.
Texts RequestGenerator::referenceThrough(Handle shortcut) {
    Handle above = shortcut->parent;
    while (above && above->cls != u"namespace") {
        above = above->parent;
    }
    Text target;
    m_model.readProperty(shortcut, u"refobj", target, u"");
    Handles const items =
        m_model.elementsByTagName(m_model.objectWithReference(target), u"queryItem");
    return {nameOf(above), nameOf(shortcut),
            nameOf(m_random.pick(items.empty() ? m_objects : items))};
}

Text RequestGenerator::spoilt(Text const& path) {
    switch (m_random.weighted({94, 2, 1, 1, 1, 1})) {
    case 0:
        return path;
    case 1:
        return u" " + path + u" ";
    case 2:
        return path + u".[A]";
    case 3:
        return u"[A]." + path;
    case 4:
        return path + u".";
    default:
        return path.substr(0, m_random.below(path.size() + 1));
    }
}

Text RequestGenerator::object() {
    if (m_objects.empty() || m_random.chance(3)) {
        return Text();
    }
    Handle const object = m_random.pick(m_objects);
    Text id;
    if (!m_random.chance(15) && m_model.getId(object, id)) {
        return id;
    }
    std::optional<Texts> const names = m_model.referenceOf(object);
    return names ? quotedPath(*names) : Text();
}

} // namespace naive
