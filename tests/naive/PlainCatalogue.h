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

    Text packageValue(const Text& locale) const;
    Text packageProperty(const Text& locale, const Text& name) const;
};

/// The catalogue as a tree of XML elements, looked through for every question.
class PlainCatalogue {
public:
    explicit PlainCatalogue(const std::string& document);

    Texts modelPaths() const;
    Texts userNames() const;

    /// Nothing for a path that the catalogue lacks. The package's locale rule uses the default
    /// locale of the model.
    std::optional<SecuritySource> source(const Text& modelPath, const Text& user,
                                         const Text& defaultLocale) const;

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

    Texts rolesOf(const Text& user) const;

    std::vector<Entry> m_entries;
    std::vector<User> m_users;
};

} // namespace naive
