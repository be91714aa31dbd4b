#include "host/import/tabular/TabularTables.h"

#include "host/import/draft/PlainText.h"
#include "host/import/tabular/UnmappedKeys.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace vex {

namespace {

using Place = ImportAccount::Place;

using ColumnName = std::pair<std::u16string, std::u16string>; // of a table, and of its column

/// The ends of all relationships.
std::set<ColumnName> joinedColumns(SourceTree const& tree, SourceTree::Value relationships) {
    std::set<ColumnName> joined;
    auto const textOf = [&](SourceTree::Value map, char const* key) {
        SourceTree::Value const value = tree.find(map, key);
        return foldedCase(trimmed(value == SourceTree::None ? "" : tree.textOf(value)));
    };
    for (auto each = tree.first(relationships); each != SourceTree::None; each = tree.next(each)) {
        joined.emplace(textOf(each, "fromTable"), textOf(each, "fromColumn"));
        joined.emplace(textOf(each, "toTable"), textOf(each, "toColumn"));
    }
    return joined;
}

constexpr std::array<std::u16string_view, 3> numericTypes{u"int64", u"double", u"decimal"};

class TableReader {
public:
    TableReader(TabularModel& parts, DisplayFolders& folders, ImportWork& work,
                bool hasImplicitMeasures, std::set<ColumnName> joined)
        : m_parts(parts), m_folders(folders), m_work(work),
          m_hasImplicitMeasures(hasImplicitMeasures), m_joined(std::move(joined)) {}

    void read(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries table(tree, value, "table", m_work);
        m_isGroup = tree.find(value, "calculationGroup") != SourceTree::None;
        tellNothingOfGroups(table);
        m_name = table.name();
        m_object = TabularPart::None;
        if (m_isGroup) {
            m_work.account.leftOut("table", tabularReasons::CalculationGroup,
                                   {m_name, table.position()});
        } else {
            m_work.account.mapped("table");
            m_object = draft().add(m_parts.space, "querySubject",
                                   {"table", pathTo(""), tagOf(table)}, table.position());
            draft().set(m_object, "name", m_name);
            copy(table, m_object, "description");
            copy(table, m_object, "dataCategory");
            copyHidden(table, m_object);
        }
        m_table = m_parts.parts.size();
        m_parts.parts.push_back({.kind = TabularKind::Table,
                                 .name = m_name,
                                 .object = m_object,
                                 .position = table.position()});
        for (SourceTree::Value const each : table.list("columns")) {
            readColumn(tree, each);
        }
        for (SourceTree::Value const each : table.list("measures")) {
            readMeasure(tree, each);
        }
        for (SourceTree::Value const each : table.list("hierarchies")) {
            readHierarchy(tree, each);
        }
        for (SourceTree::Value const each : table.list("partitions")) {
            readPartition(tree, each);
        }
        if (SourceTree::Value const group = table.map("calculationGroup");
            group != SourceTree::None) {
            readGroup(tree, group);
        }
        table.leaveOutRest(unmappedTabularKeys(), m_name);
    }

private:
    ModelDraft& draft() { return m_work.draft.model; }

    std::string pathTo(std::string_view name) const {
        std::string path;
        appendToPath(path, m_name);
        if (!name.empty()) {
            appendToPath(path, name);
        }
        return path;
    }

    static std::string tagOf(SourceEntries& entries) {
        return entries.text("lineageTag").value_or("");
    }

    void tellNothingOfGroups(SourceEntries& entries) const {
        if (m_isGroup) {
            entries.tellNothing();
        }
    }

    void copy(SourceEntries& entries, std::size_t object, std::string_view key,
              std::string_view property = {}) {
        if (auto const text = entries.text(key)) {
            draft().set(object, property.empty() ? key : property, *text);
        }
    }

    void copyHidden(SourceEntries& entries, std::size_t object) {
        if (entries.isTrue("isHidden")) {
            draft().set(object, "isHidden", "true");
        }
    }

    /// A part of the table in its display folder; `None` in a table that is not mapped.
    std::size_t addObject(SourceEntries& entries, char const* className, std::string const& name) {
        if (m_isGroup) {
            m_work.account.leftOut(entries.kind(), tabularReasons::CalculationGroup,
                                   {name, entries.position()});
            return TabularPart::None;
        }
        m_work.account.mapped(entries.kind());
        auto const folder = entries.text("displayFolder");
        std::size_t const place =
            folder ? m_folders.placeOf(m_object, m_name, *folder, entries.position()) : m_object;
        std::size_t const object = draft().add(
            place, className, {std::string(entries.kind()), pathTo(name), tagOf(entries)},
            entries.position());
        draft().set(object, "name", name);
        return object;
    }

    void readColumn(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries column(tree, value, "column", m_work);
        tellNothingOfGroups(column);
        std::string const type = foldedType(tree, value, "type");
        if (type == "rownumber") {
            m_work.account.leftOut("column", tabularReasons::RowNumber,
                                   {m_name, column.position()});
            return;
        }
        std::string const name = column.name();
        TabularPart part{.kind = TabularKind::Column,
                         .name = name,
                         .table = m_table,
                         .position = column.position()};
        part.object = addObject(column, "queryItem", name);
        if (part.object != TabularPart::None) {
            auto const dataType = column.text("dataType");
            draft().set(part.object, "datatype", dataType.value_or(""));
            draft().set(part.object, "usage", usageOf(column, name, dataType.value_or("")));
            if (auto const expression = column.text("expression")) {
                draft().set(part.object, "expression", *expression);
            }
            copy(column, part.object, "formatString", "format");
            copy(column, part.object, "dataCategory");
            copy(column, part.object, "description");
            copyHidden(column, part.object);
            if (!type.empty()) {
                column.text("type"); // an expression, or none, says as much
            }
        }
        part.expression = textUnder(tree, value, "expression");
        if (type == "calculatedtablecolumn") {
            // Where the column of a calculated table comes from: "Orders[Total]".
            part.expression += " " + textUnder(tree, value, "sourceColumn");
        }
        m_parts.parts.push_back(std::move(part));
        column.leaveOutRest(unmappedTabularKeys(), name);
    }

    /// Keys identify, and so does what tables are joined by; numbers that are not told to be
    /// left alone are summed, unless the whole model says that nothing is without a measure.
    std::string usageOf(SourceEntries& column, std::string const& name,
                        std::string const& dataType) {
        bool const isKey =
            column.isTrue("isKey") || m_joined.contains({foldedCase(m_name), foldedCase(name)});
        auto const summary = column.text("summarizeBy");
        if (isKey) {
            return "identifier";
        }
        std::u16string const type = foldedCase(dataType);
        bool const isNumber =
            std::find(numericTypes.begin(), numericTypes.end(), type) != numericTypes.end();
        bool const isLeftAlone = summary && foldedCase(*summary) == u"none";
        return isNumber && m_hasImplicitMeasures && !isLeftAlone ? "fact" : "attribute";
    }

    void readMeasure(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries measure(tree, value, "measure", m_work);
        tellNothingOfGroups(measure);
        std::string const name = measure.name();
        TabularPart part{.kind = TabularKind::Measure,
                         .name = name,
                         .table = m_table,
                         .position = measure.position()};
        part.object = addObject(measure, "queryItem", name);
        if (part.object != TabularPart::None) {
            copy(measure, part.object, "dataType", "datatype");
            draft().set(part.object, "usage", "fact");
            copy(measure, part.object, "expression");
            copy(measure, part.object, "formatString", "format");
            copy(measure, part.object, "dataCategory");
            copy(measure, part.object, "description");
            copyHidden(measure, part.object);
        }
        part.expression = textUnder(tree, value, "expression");
        m_parts.parts.push_back(std::move(part));
        measure.leaveOutRest(unmappedTabularKeys(), name);
    }

    void readHierarchy(SourceTree const& tree, SourceTree::Value value) {
        SourceEntries hierarchy(tree, value, "hierarchy", m_work);
        tellNothingOfGroups(hierarchy);
        std::string const name = hierarchy.name();
        TabularPart part{.kind = TabularKind::Hierarchy,
                         .name = name,
                         .table = m_table,
                         .position = hierarchy.position()};
        part.object = addObject(hierarchy, "hierarchy", name);
        if (part.object != TabularPart::None) {
            copy(hierarchy, part.object, "description");
            copyHidden(hierarchy, part.object);
        }
        std::size_t const number = m_parts.parts.size();
        m_parts.parts.push_back(part);
        for (SourceTree::Value const each : orderedLevels(tree, hierarchy.list("levels"))) {
            readLevel(tree, each, number);
        }
        hierarchy.leaveOutRest(unmappedTabularKeys(), name);
    }

    static std::vector<SourceTree::Value> orderedLevels(SourceTree const& tree,
                                                        std::vector<SourceTree::Value> levels) {
        auto const ordinal = [&](SourceTree::Value level) {
            SourceTree::Value const value = tree.find(level, "ordinal");
            std::string_view const text =
                value == SourceTree::None ? std::string_view() : tree.textOf(value);
            return std::pair(text.size(), text); // as numbers without a sign compare
        };
        std::stable_sort(levels.begin(), levels.end(),
                         [&](auto a, auto b) { return ordinal(a) < ordinal(b); });
        return levels;
    }

    void readLevel(SourceTree const& tree, SourceTree::Value value, std::size_t hierarchy) {
        SourceEntries level(tree, value, "level", m_work);
        tellNothingOfGroups(level);
        std::string const name = level.name();
        TabularPart part{.kind = TabularKind::Level,
                         .name = name,
                         .table = m_table,
                         .owner = hierarchy,
                         .position = level.position()};
        part.column = level.text("column").value_or("");
        std::size_t const around = m_parts.parts[hierarchy].object;
        if (around == TabularPart::None) {
            m_work.account.leftOut("level", tabularReasons::CalculationGroup,
                                   {name, level.position()});
        } else {
            m_work.account.mapped("level");
            std::string path = pathTo(m_parts.parts[hierarchy].name);
            appendToPath(path, name);
            part.object =
                draft().add(around, "level", {"level", path, tagOf(level)}, level.position());
            draft().set(part.object, "name", name);
            if (!part.column.empty()) {
                std::string column;
                appendToPath(column, m_parts.spaceName);
                draft().set(part.object, "expression", column + '.' + pathTo(part.column));
            }
            copy(level, part.object, "description");
        }
        level.text("ordinal"); // they were put in order by it
        m_parts.parts.push_back(std::move(part));
        level.leaveOutRest(unmappedTabularKeys(), name);
    }

    void readPartition(SourceTree const& tree, SourceTree::Value value) {
        SourceTree::Value const source = tree.find(value, "source");
        bool const isCalculated =
            source != SourceTree::None && foldedType(tree, source, "type") == "calculated";
        if (!isCalculated) {
            m_work.account.leftOut("partition", tabularReasons::DataSource,
                                   {m_name, tree.positionOf(value)});
            return;
        }
        m_work.account.mapped("partition"); // what it computes is the table's expression
        std::string const expression = textUnder(tree, source, "expression");
        m_parts.parts[m_table].expression += " " + expression;
        if (m_object != TabularPart::None) {
            draft().set(m_object, "expression", expression);
        }
    }

    void readGroup(SourceTree const& tree, SourceTree::Value value) {
        m_work.account.leftOut("calculation group", tabularReasons::CalculationGroup,
                               {m_name, tree.positionOf(value)});
        SourceEntries group(tree, value, "calculation group", m_work);
        group.tellNothing();
        for (SourceTree::Value const each : group.list("calculationItems")) {
            SourceTree::Value const name = tree.find(each, "name");
            m_work.account.leftOut(
                "calculation item", tabularReasons::CalculationGroup,
                {name == SourceTree::None ? m_name : std::string(tree.textOf(name)),
                 tree.positionOf(each)});
        }
    }

    /// Without telling the account: what counts for security counts whether mapped or not.
    static std::string textUnder(SourceTree const& tree, SourceTree::Value map,
                                 std::string_view key) {
        SourceTree::Value const value = tree.find(map, key);
        if (value == SourceTree::None) {
            return {};
        }
        std::string text(tree.textOf(value));
        for (auto line = tree.first(value); line != SourceTree::None; line = tree.next(line)) {
            text.append(text.empty() ? "" : "\n").append(tree.textOf(line));
        }
        return text;
    }

    static std::string foldedType(SourceTree const& tree, SourceTree::Value map,
                                  std::string_view key) {
        return I18NString(foldedCase(textUnder(tree, map, key))).toUtf8();
    }

    TabularModel& m_parts;
    DisplayFolders& m_folders;
    ImportWork& m_work;
    bool const m_hasImplicitMeasures;
    std::set<ColumnName> const m_joined;

    std::string m_name;       // of the table that is read
    std::size_t m_table = 0;  // as a part
    std::size_t m_object = 0; // in the draft
    bool m_isGroup = false;   // it holds a calculation group
};

} // namespace

void readTables(SourceEntries& model, TabularModel& parts, DisplayFolders& folders,
                ImportWork& work) {
    bool const hasImplicitMeasures = !model.isTrue("discourageImplicitMeasures");
    SourceTree const& tree = model.tree();
    SourceTree::Value const relationships = model.find("relationships");
    TableReader reader(parts, folders, work, hasImplicitMeasures,
                       relationships == SourceTree::None ? std::set<ColumnName>()
                                                         : joinedColumns(tree, relationships));
    for (SourceTree::Value const each : model.list("tables")) {
        reader.read(tree, each);
    }
}

} // namespace vex
