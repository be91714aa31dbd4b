#include "tests/naive/OddContent.h"

namespace naive {

std::string OddContent::cls() {
    static std::vector<std::string> const classes = {"namespace",    "folder",    "queryItemFolder",
                                                     "querySubject", "queryItem", "filter",
                                                     "shortcut",     "a",         "b",
                                                     "model"};
    return m_random.pick(classes);
}

std::vector<std::pair<std::string, std::string>> OddContent::attributes() {
    std::vector<std::pair<std::string, std::string>> drawn;
    for (char const* const name : {"ID", "role", "b", "class"}) {
        if (m_random.chance(25)) {
            drawn.emplace_back(name, m_random.chance(50) ? "v" : " v]");
        }
    }
    return drawn;
}

std::string OddContent::between(std::set<std::string>& taken) {
    std::string text = words();
    while (m_random.chance(40)) {
        text += property(0, taken) + words();
    }
    return text;
}

// One locale may be written in two ways.
std::string OddContent::key(std::string const& name, std::string const& locale) {
    return name + ' ' + (locale == "de_AT" ? "de-at" : locale);
}

std::string OddContent::words() {
    static std::vector<std::string> const some = {
        "", "", " ", "x", "Orders", " padded ", "a]b", "\u5C0F\U0001F600", "&lt;"};
    return m_random.pick(some);
}

std::string OddContent::property(int depth, std::set<std::string>& taken) {
    static std::vector<std::string> const names = {"name", "a",      "b",   "folder",
                                                   "ID",   "refobj", "text"};
    static std::vector<std::string> const locales = {"en", "de", "de-at", "de_CH", "fr", "en_US"};
    std::string const& name = m_random.pick(names);
    std::string text = "<property" + attribute("name", name);
    std::string const& locale = m_random.pick(locales);
    if (m_random.chance(50) && taken.insert(key(name, locale)).second) {
        text += attribute("locale", locale);
    }
    if (m_random.chance(25)) {
        text += attribute("role", m_random.chance(50) ? "r" : "s");
    }
    text += ">" + words();
    std::set<std::string> inner;
    int const members = depth < 3 && m_random.chance(25) ? m_random.between(1, 3) : 0;
    for (int i = 0; i < members; ++i) {
        text += property(depth + 1, inner);
    }
    return text + words() + "</property>";
}

} // namespace naive
