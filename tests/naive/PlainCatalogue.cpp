#include "tests/naive/PlainCatalogue.h"

#include <algorithm>

namespace naive {

namespace {

Text attributeOf(XmlElement const& element, Text const& name) {
    Text const* value = element.attribute(name);
    return value ? *value : Text();
}

} // namespace

PlainCatalogue::PlainCatalogue(std::string const& document) {
    std::unique_ptr<XmlElement> const tree = parseXml(document);
    for (auto const& element : tree->children) {
        if (element->name == u"user") {
            User user;
            user.name = attributeOf(*element, u"name");
            for (auto const& role : element->children) {
                user.roles.push_back(trimmed(role->text));
            }
            m_users.push_back(std::move(user));
            continue;
        }
        Entry entry;
        entry.path = attributeOf(*element, u"path");
        for (auto const& part : element->children) {
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

Texts PlainCatalogue::rolesOf(Text const& user) const {
    for (User const& known : m_users) {
        if (known.name == user) {
            return known.roles;
        }
    }
    return {};
}

std::optional<SecuritySource> PlainCatalogue::source(Text const& modelPath, Text const& user,
                                                     Text const& defaultLocale) const {
    for (Entry const& entry : m_entries) {
        if (entry.path != modelPath) {
            continue;
        }
        SecuritySource source;
        source.roles = rolesOf(user);
        source.package = entry.package.get();
        source.defaultLocale = defaultLocale;
        for (auto const& [role, view] : entry.grants) {
            bool const held =
                std::find(source.roles.begin(), source.roles.end(), role) != source.roles.end();
            bool const known =
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

Text SecuritySource::packageValue(Text const& locale) const {
    return packageProperty(locale, u"value");
}

Text SecuritySource::packageProperty(Text const& locale, Text const& name) const {
    if (!package) {
        return Text();
    }
    Handle const property = findSimpleProperty(package, name, locale, defaultLocale);
    return property ? property->value.value_or(Text()) : Text();
}

} // namespace naive
