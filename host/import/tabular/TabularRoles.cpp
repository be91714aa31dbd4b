#include "host/import/tabular/TabularRoles.h"

#include "host/import/draft/PlainText.h"
#include "host/import/tabular/HiddenSpread.h"
#include "host/import/tabular/UnmappedKeys.h"

#include <algorithm>
#include <map>

namespace vex {

namespace {

constexpr char const* readingPermissions[] = {"read", "readrefresh", "administrator"};

std::string folded(std::string const& text) {
    return I18NString(foldedCase(text)).toUtf8();
}

class RoleReader {
public:
    RoleReader(TabularModel const& model, ImportWork& work)
        : m_model(model), m_work(work), m_spread(model) {
        for (std::size_t number = 0; number < model.parts.size(); ++number) {
            TabularPart const& part = model.parts[number];
            if (part.kind == TabularKind::Table) {
                m_tables[foldedCase(part.name)].push_back(number);
            } else if (part.kind == TabularKind::Column) {
                m_columns[{foldedCase(model.parts[part.table].name), foldedCase(part.name)}]
                    .push_back(number);
            }
        }
    }

    void read(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries role(tree, value, "role", m_work);
        std::string const name = role.name();
        std::string const permission = folded(role.text("modelPermission").value_or("none"));
        bool const mayRead = std::find(std::begin(readingPermissions), std::end(readingPermissions),
                                       permission) != std::end(readingPermissions);
        std::vector<std::size_t> hidden;
        for (SourceTree::Value const each : role.list("tablePermissions")) {
            readTablePermission(tree, each, name, hidden);
        }
        auto const description = role.text("description");
        if (mayRead) {
            m_work.account.mapped("role");
            addView(name, description.value_or(""), hidden);
        } else {
            m_work.account.leftOut("role", "it may not read the model, so it sees nothing",
                                   {name, role.position()});
        }
        for (SourceTree::Value const each : role.list("members")) {
            readMember(tree, each, name);
        }
        role.leaveOutRest(unmappedTabularKeys(), name);
    }

private:
    /// True for a permission that takes the thing away. What is no known permission does, too:
    /// better hidden than shown by mistake.
    bool isHiding(SourceEntries& permission, std::string const& thing) {
        auto const said = permission.text("metadataPermission");
        std::string const word = folded(said.value_or("default"));
        if (word == "default" || word == "read") {
            return !said.has_value() && permission.has("metadataPermission");
        }
        if (word != "none") {
            m_work.account.note("the permission " + quotedText(*said) + " is not known; " + thing +
                                    " is hidden",
                                permission.position());
        }
        return true;
    }

    void readTablePermission(SourceTree const& tree, SourceTree::Value value,
                             std::string const& role, std::vector<std::size_t>& hidden) {
        SourceEntries permission(tree, value, "table permission", m_work);
        std::string const table = permission.name();
        bool const hides = isHiding(permission, table);
        if (permission.has("filterExpression")) {
            m_work.account.leftOut("row filter", tabularReasons::RowFilter,
                                   {role + ": " + table, permission.position()});
            permission.ignore("filterExpression");
        }
        auto const columns = permission.list("columnPermissions");
        auto const named = m_tables.find(foldedCase(table));
        if (named == m_tables.end() && (hides || !columns.empty())) {
            refuseUnknown(role, "the table " + quotedText(table), permission.position());
        }
        if (hides) {
            m_work.account.mapped("hidden table");
            hidden.insert(hidden.end(), named->second.begin(), named->second.end());
        }
        for (SourceTree::Value const each : columns) {
            readColumnPermission(tree, each, role, table, hidden);
        }
        permission.leaveOutRest(unmappedTabularKeys(), table);
    }

    void readColumnPermission(SourceTree const& tree, SourceTree::Value value,
                              std::string const& role, std::string const& table,
                              std::vector<std::size_t>& hidden) {
        SourceEntries permission(tree, value, "column permission", m_work);
        std::string const column = permission.name();
        if (isHiding(permission, table + '[' + column + ']')) {
            auto const named = m_columns.find({foldedCase(table), foldedCase(column)});
            if (named == m_columns.end()) {
                refuseUnknown(
                    role, "the column " + quotedText(column) + " of the table " + quotedText(table),
                    permission.position());
            }
            m_work.account.mapped("hidden column");
            hidden.insert(hidden.end(), named->second.begin(), named->second.end());
        }
        permission.leaveOutRest(unmappedTabularKeys(), column);
    }

    /// What a misspelt permission was to hide would be shown.
    [[noreturn]] void refuseUnknown(std::string const& role, std::string const& what,
                                    DocumentPosition at) {
        m_work.refuse("the role " + quotedText(role) + " has a permission for " + what +
                          ", which the model lacks; correct the name",
                      at);
    }

    void addView(std::string const& role, std::string const& description,
                 std::vector<std::size_t> const& hidden) {
        std::vector<bool> const isHidden = m_spread.spread(hidden, m_work);
        DraftView view{.key = {"role", pathOf(role)}, .name = role, .description = description};
        view.included = visibleObjects(isHidden);
        noteSpread(role, hidden, isHidden);
        m_work.draft.grants.push_back({role, m_work.draft.views.size()});
        m_work.draft.views.push_back(std::move(view));
    }

    static std::string pathOf(std::string const& name) {
        std::string path;
        appendToPath(path, name);
        return path;
    }

    /// A folder is seen with something in it, a hierarchy with a level; a relationship with
    /// both of its ends.
    std::vector<std::size_t> visibleObjects(std::vector<bool> const& isHidden) {
        ModelDraft const& draft = m_work.draft.model;
        m_work.spendOnViews(draft.size());
        std::vector<bool> isSeen(draft.size());
        isSeen[m_model.space] = true;
        for (std::size_t number = 0; number < m_model.parts.size(); ++number) {
            TabularPart const& part = m_model.parts[number];
            if (part.object != TabularPart::None) {
                isSeen[part.object] = !isHidden[number];
            }
        }
        for (TabularPart const& part : m_model.parts) {
            if (part.kind == TabularKind::Hierarchy && part.object != TabularPart::None) {
                auto const& levels = draft[part.object].members;
                bool const hasLevel =
                    levels.empty() || std::any_of(levels.begin(), levels.end(),
                                                  [&](std::size_t level) { return isSeen[level]; });
                isSeen[part.object] = isSeen[part.object] && hasLevel;
            }
        }
        for (TabularRelationship const& each : m_model.relationships) {
            isSeen[each.object] = !isHidden[each.from] && !isHidden[each.to];
        }
        // Members are younger than the folders around them.
        for (std::size_t object = draft.size(); object-- > 0;) {
            std::size_t const around = draft[object].container;
            if (isSeen[object] && around != DraftObject::None &&
                draft[around].className == "queryItemFolder") {
                isSeen[around] = true;
            }
        }
        std::vector<std::size_t> seen;
        for (std::size_t object = 0; object < draft.size(); ++object) {
            if (isSeen[object]) {
                seen.push_back(object);
            }
        }
        return seen;
    }

    void noteSpread(std::string const& role, std::vector<std::size_t> const& hidden,
                    std::vector<bool> const& isHidden) {
        std::vector<bool> isFirst(m_model.parts.size());
        for (std::size_t const number : hidden) {
            isFirst[number] = true;
        }
        std::size_t measures = 0;
        std::size_t others = 0;
        for (std::size_t number = 0; number < m_model.parts.size(); ++number) {
            TabularPart const& part = m_model.parts[number];
            bool const isWithTable = part.table != TabularPart::None && isHidden[part.table];
            if (!isHidden[number] || isFirst[number] || isWithTable ||
                part.object == TabularPart::None) {
                continue;
            }
            (part.kind == TabularKind::Measure ? measures : others) += 1;
        }
        if (measures + others > 0) {
            m_work.account.note("the role " + quotedText(role) + " does not see measures: " +
                                std::to_string(measures) + ", others: " + std::to_string(others) +
                                ", since they name what is hidden from it");
        }
    }

    void readMember(SourceTree const& tree, SourceTree::Value value, std::string const& role) {
        SourceEntries member(tree, value, "member", m_work);
        auto name = member.text("memberName");
        if (!name || trimmed(*name).empty()) {
            name = member.text("memberId");
        }
        member.text("memberType"); // a group is a user of the catalogue, too
        if (!name || trimmed(*name).empty()) {
            m_work.account.leftOut("member", "it has no name", {role, member.position()});
        } else {
            m_work.account.mapped("member");
            m_work.draft.addUser(trimmed(*name), role);
        }
        member.leaveOutRest(unmappedTabularKeys(), role);
    }

    TabularModel const& m_model;
    ImportWork& m_work;
    HiddenSpread const m_spread;
    std::map<std::u16string, std::vector<std::size_t>> m_tables;
    std::map<std::pair<std::u16string, std::u16string>, std::vector<std::size_t>> m_columns;
};

} // namespace

void readRoles(SourceEntries& model, TabularModel const& parts, ImportWork& work) {
    RoleReader reader(parts, work);
    for (SourceTree::Value const each : model.list("roles")) {
        reader.read(model.tree(), each);
    }
}

} // namespace vex
