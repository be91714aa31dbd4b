#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vex {

class ImportWork;

/// True when the whole text is of the pattern: "*" stands for any characters, "?" for one.
/// Upper and lower case differ. Both are UTF-8.
bool matchesGlob(std::string_view pattern, std::string_view text);

/// The schemas and tables that are asked for with --schema, --include and --exclude.
class DatabaseFilter {
public:
    explicit DatabaseFilter(ImportWork& work);

    bool wantsSchema(std::string const& schema);
    /// A pattern is one of the table's name, or of "schema.table".
    bool wantsTable(std::string const& schema, std::string const& table);

    /// Once all were asked about: refuses a name that nothing bears, as what it was meant to
    /// leave out would be imported; tells of patterns that match nothing.
    void tellUnmatched();

private:
    struct Pattern {
        std::string text;
        bool isMatched = false;
    };
    struct Patterns {
        char const* option;
        std::vector<Pattern> all{};
    };

    Patterns patternsOf(char const* option) const;
    static bool isOneOf(Patterns& patterns, std::string const& name, std::string const& qualified);

    ImportWork& m_work;
    Patterns m_schemas;
    Patterns m_included;
    Patterns m_excluded;
};

} // namespace vex
