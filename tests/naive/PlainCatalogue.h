#pragma once

#include "tests/naive/PlainModel.h"

namespace naive {

/// What a host knows of one model path for one user.
class SecuritySource {
public:
    Texts views; ///< granted to any of the user's roles, each once, ascending
    Texts roles; ///< in the catalogue's order
    Handle package = nullptr;
    Text defaultLocale;

    Text packageValue(Text const& locale) const;
    Text packageProperty(Text const& locale, Text const& name) const;
};

/// The catalogue as a tree of XML elements, looked through for every question.
class PlainCatalogue {
public:
    explicit PlainCatalogue(std::string const& document);

    /// Nothing for a path that the catalogue lacks. The package's locale rule uses the default
    /// locale of the model.
    std::optional<SecuritySource> source(Text const& modelPath, Text const& user,
                                         Text const& defaultLocale) const;

private:
    struct Entry {
        Text path;
        std::unique_ptr<Node> package;
        std::vector<std::pair<Text, Text>> grants; ///< role and view
    };
    struct User {
        Text name;
        Texts roles;
    };

    Texts rolesOf(Text const& user) const;

    std::vector<Entry> m_entries;
    std::vector<User> m_users;
};

} // namespace naive
