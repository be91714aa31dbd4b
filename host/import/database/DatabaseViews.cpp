#include "host/import/database/DatabaseViews.h"

#include "host/import/database/DatabaseModel.h"
#include "host/import/database/DatabaseReasons.h"
#include "host/import/database/ObjectSet.h"
#include "host/import/draft/ImportWork.h"

#include <algorithm>
#include <map>
#include <utility>

namespace vex {

namespace {

class ViewsDraft {
public:
    ViewsDraft(DatabaseModel const& model, ImportWork& work) : m_model(model), m_work(work) {
        // Most of those who log in may read what others may, to the letter.
        std::map<std::pair<std::vector<std::size_t>, std::vector<DatabaseColumnPlace>>, std::size_t>
            known;
        for (DatabaseRole const& role : model.roles) {
            auto const [seen, isNew] =
                known.try_emplace({role.tablesGrantedAlike, role.columns}, m_sets.size());
            if (isNew) {
                m_sets.push_back(objectsOf(role));
            }
            m_setOf.push_back(seen->second);
        }
    }

    void write() {
        std::vector<bool> hasView;
        for (std::size_t number = 0; number < m_model.roles.size(); ++number) {
            hasView.push_back(!m_model.roles[number].canLogIn && !seenBy(number).isEmpty());
        }
        std::vector<std::vector<std::size_t>> held(m_model.roles.size());
        for (std::size_t number = 0; number < m_model.roles.size(); ++number) {
            DatabaseRole const& role = m_model.roles[number];
            if (role.canLogIn && role.mayConnect) {
                held[number] = heldBy(number, hasView);
            }
        }
        for (auto const& roles : held) {
            for (std::size_t const role : roles) {
                hasView[role] = true;
            }
        }
        for (std::size_t number = 0; number < m_model.roles.size(); ++number) {
            if (hasView[number]) {
                writeView(number);
            }
            tellRole(number, hasView[number], held[number]);
        }
        writeUsers(held);
    }

private:
    /// A column with its table, a table with its schema, a relationship with both its ends.
    ObjectSet objectsOf(DatabaseRole const& role) {
        std::size_t const objects = m_work.draft.model.size();
        ObjectSet seen(objects);
        if (role.tablesGrantedAlike.empty() && role.columns.empty()) {
            return seen;
        }
        m_work.spendOnViews(objects);
        auto const seeTable = [&](DatabaseTable const& table) {
            seen.add(table.object);
            seen.add(m_model.schemas[table.schema].object);
        };
        for (std::size_t const group : role.tablesGrantedAlike) {
            for (std::size_t const number : m_model.tablesGrantedAlike[group]) {
                DatabaseTable const& table = m_model.tables[number];
                seeTable(table);
                for (DatabaseColumn const& column : table.columns) {
                    seen.add(column.object);
                }
            }
        }
        for (DatabaseColumnPlace const& place : role.columns) {
            DatabaseTable const& table = m_model.tables[place.table];
            seeTable(table);
            seen.add(table.columns[place.column].object);
        }
        for (DatabaseForeignKey const& key : m_model.foreignKeys) {
            auto const seesAll = [&](std::size_t table, std::vector<std::size_t> const& columns) {
                return std::all_of(columns.begin(), columns.end(), [&](std::size_t column) {
                    return seen.has(m_model.tables[table].columns[column].object);
                });
            };
            if (seesAll(key.table, key.columns) && seesAll(key.target, key.targetColumns)) {
                seen.add(key.object);
            }
        }
        return seen;
    }

    ObjectSet const& seenBy(std::size_t role) const { return m_sets[m_setOf[role]]; }

    /// The roles with a view that make up what a role sees: those that it inherits from, else
    /// everybody's, else its own.
    std::vector<std::size_t> heldBy(std::size_t number, std::vector<bool> const& hasView) const {
        ObjectSet const& wanted = seenBy(number);
        if (wanted.isEmpty()) {
            return {};
        }
        std::vector<std::size_t> roles;
        ObjectSet seen(m_work.draft.model.size());
        for (std::size_t const role : m_model.roles[number].inherited) {
            if (hasView[role]) {
                roles.push_back(role);
                seen.addAll(seenBy(role));
            }
        }
        if (seen == wanted) {
            return roles;
        }
        for (std::size_t role = 0; role < m_model.roles.size(); ++role) {
            if (m_model.roles[role].isEverybody && seenBy(role) == wanted) {
                return {role};
            }
        }
        return {number};
    }

    void writeView(std::size_t number) {
        DatabaseRole const& role = m_model.roles[number];
        std::vector<std::size_t> included = seenBy(number).objects();
        m_work.spendOnViews(included.size());
        std::string path;
        appendToPath(path, role.name);
        m_work.draft.grants.push_back({role.name, m_work.draft.views.size()});
        m_work.draft.views.push_back({.key = {"role", path},
                                      .name = role.name,
                                      .description = databaseReasons::isWritable(role.comment)
                                                         ? role.comment
                                                         : std::string(),
                                      .included = std::move(included)});
    }

    void tellRole(std::size_t number, bool hasView, std::vector<std::size_t> const& held) {
        DatabaseRole const& role = m_model.roles[number];
        if (hasView || !held.empty()) {
            m_work.account.mapped("role");
        } else if (!role.isEverybody) {
            m_work.account.leftOut("role",
                                   role.canLogIn && !role.mayConnect
                                       ? "it may not connect to the database, so it sees nothing"
                                       : "it may read no table, so it sees nothing",
                                   {role.name});
        }
    }

    void writeUsers(std::vector<std::vector<std::size_t>> const& held) {
        for (std::size_t number = 0; number < m_model.roles.size(); ++number) {
            DatabaseRole const& role = m_model.roles[number];
            if (!role.canLogIn) {
                continue;
            }
            m_work.account.mapped("user");
            if (held[number].empty()) {
                m_work.draft.addUser(role.name, role.name); // a user who is refused
            }
            for (std::size_t const other : held[number]) {
                m_work.draft.addUser(role.name, m_model.roles[other].name);
            }
        }
    }

    DatabaseModel const& m_model;
    ImportWork& m_work;
    std::vector<ObjectSet> m_sets;
    std::vector<std::size_t> m_setOf; // by each role
};

} // namespace

void draftDatabaseViews(DatabaseModel const& model, ImportWork& work) {
    ViewsDraft(model, work).write();
}

} // namespace vex
