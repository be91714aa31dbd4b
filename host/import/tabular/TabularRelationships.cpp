#include "host/import/draft/PlainText.h"
#include "host/import/tabular/TabularTables.h"
#include "host/import/tabular/UnmappedKeys.h"

#include <map>

namespace vex {

namespace {

/// Tables and their columns by name; of several with one name the first.
class ColumnsByName {
public:
    explicit ColumnsByName(TabularModel const& model) {
        for (std::size_t number = 0; number < model.parts.size(); ++number) {
            TabularPart const& part = model.parts[number];
            if (part.kind == TabularKind::Table) {
                m_tables.emplace(foldedCase(part.name), number);
            } else if (part.kind == TabularKind::Column) {
                m_columns.emplace(std::pair(part.table, foldedCase(part.name)), number);
            }
        }
    }

    /// `None` when there is no such column.
    std::size_t find(std::string const& table, std::string const& column) const {
        auto const owner = m_tables.find(foldedCase(table));
        if (owner == m_tables.end()) {
            return TabularPart::None;
        }
        auto const found = m_columns.find({owner->second, foldedCase(column)});
        return found == m_columns.end() ? TabularPart::None : found->second;
    }

private:
    std::map<std::u16string, std::size_t> m_tables;
    std::map<std::pair<std::size_t, std::u16string>, std::size_t> m_columns;
};

char const* cardinalityOf(std::string const& said) {
    return foldedCase(said) == u"one" ? "0..1" : "0..n";
}

class RelationshipReader {
public:
    RelationshipReader(TabularModel& model, ImportWork& work)
        : m_model(model), m_work(work), m_columns(model) {}

    void read(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries entries(tree, value, "relationship", m_work);
        std::size_t const from = end(entries, "fromTable", "fromColumn");
        std::size_t const to = end(entries, "toTable", "toColumn");
        if (from == TabularPart::None || to == TabularPart::None) {
            m_work.account.leftOut("relationship", "it joins a column that was not mapped",
                                   {"", entries.position()});
            return;
        }
        m_work.account.mapped("relationship");
        std::string path = pathOf(from);
        path += '.' + pathOf(to);
        ModelDraft& draft = m_work.draft.model;
        std::size_t const object =
            draft.add(m_model.space, "relationship", {"relationship", path}, entries.position());
        draft.set(object, "name", labelOf(from) + " \xE2\x86\x92 " + labelOf(to));
        draft.set(object, "left", referenceTo(tableOf(from)));
        draft.set(object, "leftCardinality",
                  cardinalityOf(entries.text("fromCardinality").value_or("many")));
        draft.set(object, "right", referenceTo(tableOf(to)));
        draft.set(object, "rightCardinality",
                  cardinalityOf(entries.text("toCardinality").value_or("one")));
        draft.set(object, "expression", referenceTo(from) + " = " + referenceTo(to));
        if (auto const isActive = entries.text("isActive");
            isActive && foldedCase(*isActive) == u"false") {
            draft.set(object, "isActive", "false");
        }
        m_model.relationships.push_back({object, from, to});
        entries.leaveOutRest(unmappedTabularKeys(), labelOf(from));
    }

private:
    std::size_t end(SourceEntries& entries, char const* tableKey, char const* columnKey) {
        std::string const table = entries.name(tableKey);
        std::size_t const column = m_columns.find(table, entries.name(columnKey));
        bool const isMapped =
            column != TabularPart::None && m_model.parts[column].object != TabularPart::None;
        return isMapped ? column : TabularPart::None;
    }

    std::size_t tableOf(std::size_t column) const { return m_model.parts[column].table; }

    std::string pathOf(std::size_t part) const {
        TabularPart const& named = m_model.parts[part];
        std::string path;
        if (named.table != TabularPart::None) {
            appendToPath(path, m_model.parts[named.table].name);
        }
        appendToPath(path, named.name);
        return path;
    }

    std::string referenceTo(std::size_t part) const {
        std::string reference;
        appendToPath(reference, m_model.spaceName);
        return reference + '.' + pathOf(part);
    }

    std::string labelOf(std::size_t column) const {
        return m_model.parts[tableOf(column)].name + '.' + m_model.parts[column].name;
    }

    TabularModel& m_model;
    ImportWork& m_work;
    ColumnsByName const m_columns;
};

} // namespace

void readRelationships(SourceEntries& model, TabularModel& parts, ImportWork& work) {
    RelationshipReader reader(parts, work);
    for (SourceTree::Value const each : model.list("relationships")) {
        reader.read(model.tree(), each);
    }
}

} // namespace vex
