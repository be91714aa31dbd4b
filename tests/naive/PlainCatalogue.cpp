#include "tests/naive/PlainCatalogue.h"

#include <algorithm>

namespace naive {

namespace {

Text attributeOf(const XmlElement& element, const Text& name) {
    const Text* value = element.attribute(name);
    return value ? *value : Text();
}

} // namespace

PlainCatalogue::PlainCatalogue(const std::string& document) {
    const std::unique_ptr<XmlElement> tree = parseXml(document);
    for (const auto& element : tree->children) {
        if (element->name == u"user") {
            User user;
            user.name = attributeOf(*element, u"name");
            for (const auto& role : element->children) {
                user.roles.push_back(trimmed(role->text));
            }
            m_users.push_back(std::move(user));
            continue;
        }
        Entry entry;
        entry.path = attributeOf(*element, u"path");
        for (const auto& part : element->children) {
            if (part->name == u"package") {
                entry.package = std::make_unique<Node>();
                entry.package->cls = u"package";
                readProperties(*part, {}, *entry.package);
            } else {
                entry.grants.emplace_back(attributeOf(*part, u"role"), attributeOf(*part, u"view"));
            }
        }
        m_entries.push_back(std::move(entry));
    }
}

Texts PlainCatalogue::modelPaths() const {
    Texts paths;
    for (const Entry& entry : m_entries) {
        paths.push_back(entry.path);
    }
    return paths;
}

Texts PlainCatalogue::userNames() const {
    Texts names;
    for (const User& user : m_users) {
        names.push_back(user.name);
    }
    return names;
}

Texts PlainCatalogue::rolesOf(const Text& user) const {
    for (const User& known : m_users) {
        if (known.name == user) {
            return known.roles;
        }
    }
    return {};
}

std::optional<SecuritySource> PlainCatalogue::source(const Text& modelPath, const Text& user,
                                                     const Text& defaultLocale) const {
    for (const Entry& entry : m_entries) {
        if (entry.path != modelPath) {
            continue;
        }
        SecuritySource source;
        source.roles = rolesOf(user);
        source.package = entry.package.get();
        source.defaultLocale = defaultLocale;
        for (const auto& [role, view] : entry.grants) {
            const bool held =
                std::find(source.roles.begin(), source.roles.end(), role) != source.roles.end();
            const bool known =
                std::find(source.views.begin(), source.views.end(), view) != source.views.end();
            if (held && !known) {
                source.views.push_back(view);
            }
        }
        std::sort(source.views.begin(), source.views.end());
        return source;
    }
    return std::nullopt;
}

Text SecuritySource::packageValue(const Text& locale) const {
    return packageProperty(locale, u"value");
}

Text SecuritySource::packageProperty(const Text& locale, const Text& name) const {
    if (!package) {
        return Text();
    }
    const Handle property = findSimpleProperty(package, name, locale, defaultLocale);
    return property ? property->value.value_or(Text()) : Text();
}

} // namespace naive
