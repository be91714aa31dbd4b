#include "host/import/database/DatabaseObjects.h"

#include "host/import/database/DatabaseModel.h"
#include "host/import/database/DatabaseReasons.h"
#include "host/import/database/SqlTypes.h"
#include "host/import/draft/ImportWork.h"

#include <algorithm>
#include <string_view>

namespace vex {

namespace {

constexpr char const* arrow = " \xE2\x86\x92 ";

std::string pathOf(std::initializer_list<std::string_view> names) {
    std::string path;
    for (std::string_view const name : names) {
        appendToPath(path, name);
    }
    return path;
}

class ObjectsDraft {
public:
    ObjectsDraft(DatabaseModel& model, ImportWork& work)
        : m_model(model), m_work(work), m_draft(work.draft.model) {}

    void write() {
        std::vector<bool> hasTable(m_model.schemas.size());
        for (DatabaseTable const& table : m_model.tables) {
            hasTable[table.schema] = true;
        }
        for (std::size_t number = 0; number < hasTable.size(); ++number) {
            if (hasTable[number]) {
                writeSchema(m_model.schemas[number]);
            } else {
                m_work.account.leftOut("schema", "no table in it is imported",
                                       {m_model.schemas[number].name});
            }
        }
        for (DatabaseTable& table : m_model.tables) {
            writeTable(table);
        }
        for (DatabaseForeignKey& key : m_model.foreignKeys) {
            writeForeignKey(key);
        }
    }

private:
    void writeSchema(DatabaseSchema& schema) {
        schema.object =
            m_draft.add(ModelDraft::Root, "namespace", {"schema", pathOf({schema.name})});
        m_draft.set(schema.object, "name", schema.name);
        m_work.account.mapped("schema");
        describe(schema.object, "schema.description", schema.comment);
    }

    void describe(std::size_t object, char const* kind, std::string const& comment) {
        if (comment.empty()) {
            return;
        }
        if (!databaseReasons::isWritable(comment)) {
            m_work.account.leftOut(kind, databaseReasons::Unwritable, {m_draft[object].key.path});
            return;
        }
        m_draft.set(object, "description", comment);
        m_work.account.mapped(kind);
    }

    void writeTable(DatabaseTable& table) {
        std::string const& schema = m_model.schemas[table.schema].name;
        table.object = m_draft.add(m_model.schemas[table.schema].object, "querySubject",
                                   {"table", pathOf({schema, table.name})});
        m_draft.set(table.object, "name", table.name);
        m_draft.set(table.object, "tableType", table.kind);
        describe(table.object, "table.description", table.comment);
        for (DatabaseColumn& column : table.columns) {
            column.object = m_draft.add(table.object, "queryItem",
                                        {"column", pathOf({schema, table.name, column.name})});
            m_draft.set(column.object, "name", column.name);
            m_draft.set(column.object, "datatype", column.datatype);
            m_draft.set(column.object, "usage", usageOf(column));
            m_draft.set(column.object, "sqlType", column.sqlType);
            m_draft.set(column.object, "nullable", column.isNullable ? "true" : "false");
            describe(column.object, "column.description", column.comment);
        }
        if (!table.columns.empty()) {
            m_work.account.mapped("column", table.columns.size());
        }
    }

    static char const* usageOf(DatabaseColumn const& column) {
        if (column.isKey) {
            return "identifier";
        }
        return isNumericDatatype(column.datatype) ? "fact" : "attribute";
    }

    void writeForeignKey(DatabaseForeignKey& key) {
        DatabaseTable const& table = m_model.tables[key.table];
        DatabaseTable const& target = m_model.tables[key.target];
        std::string path = pathOf({m_model.schemas[table.schema].name, table.name});
        std::string name;
        std::string targetName;
        std::string expression;
        bool isNullable = false;
        for (std::size_t place = 0; place < key.columns.size(); ++place) {
            DatabaseColumn const& column = table.columns[key.columns[place]];
            DatabaseColumn const& other = target.columns[key.targetColumns[place]];
            appendToPath(path, column.name);
            name += (place == 0 ? "" : ", ") + table.name + '.' + column.name;
            targetName += (place == 0 ? "" : ", ") + target.name + '.' + other.name;
            expression += (place == 0 ? "" : " and ") + referenceTo(table, column) + " = " +
                          referenceTo(target, other);
            isNullable = isNullable || column.isNullable;
        }
        appendToPath(path, m_model.schemas[target.schema].name);
        appendToPath(path, target.name);
        for (std::size_t const column : key.targetColumns) {
            appendToPath(path, target.columns[column].name);
        }
        key.object = m_draft.add(m_model.schemas[table.schema].object, "relationship",
                                 {"relationship", path});
        m_draft.set(key.object, "name", name + arrow + targetName);
        m_draft.set(key.object, "left", referenceTo(table));
        m_draft.set(key.object, "leftCardinality", isUnique(table, key.columns) ? "0..1" : "0..n");
        m_draft.set(key.object, "right", referenceTo(target));
        m_draft.set(key.object, "rightCardinality", isNullable ? "0..1" : "1..1");
        m_draft.set(key.object, "expression", expression);
    }

    std::string referenceTo(DatabaseTable const& table) const {
        return pathOf({m_model.schemas[table.schema].name, table.name});
    }
    std::string referenceTo(DatabaseTable const& table, DatabaseColumn const& column) const {
        return pathOf({m_model.schemas[table.schema].name, table.name, column.name});
    }

    /// True when no two rows agree in these columns: some key has no others.
    static bool isUnique(DatabaseTable const& table, std::vector<std::size_t> const& columns) {
        return std::any_of(table.keys.begin(), table.keys.end(), [&](auto const& key) {
            return !key.empty() && std::all_of(key.begin(), key.end(), [&](std::size_t column) {
                return std::find(columns.begin(), columns.end(), column) != columns.end();
            });
        });
    }

    DatabaseModel& m_model;
    ImportWork& m_work;
    ModelDraft& m_draft;
};

} // namespace

void draftDatabase(DatabaseModel& model, ImportWork& work) {
    ObjectsDraft(model, work).write();
}

} // namespace vex
