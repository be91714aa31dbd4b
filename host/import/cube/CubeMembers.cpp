#include "host/import/cube/CubeMembers.h"

#include "host/import/cube/CubeKeys.h"
#include "host/import/draft/PlainText.h"
#include "host/import/yamltree/YamlTree.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace vex {

namespace {

struct ListRow {
    char const* key;
    char const* kind; // in the account, and of ids
    CubePartKind part;
};
constexpr ListRow lists[] = {
    {"dimensions", "dimension", CubePartKind::Dimension},
    {"measures", "measure", CubePartKind::Measure},
    {"segments", "segment", CubePartKind::Segment},
    {"hierarchies", "hierarchy", CubePartKind::Hierarchy},
};

struct DatatypeRow {
    std::u16string_view said; // in the letters that compare
    char const* word;         // of a model
};
constexpr DatatypeRow datatypes[] = {
    {u"string", "string"}, {u"number", "decimal"}, {u"boolean", "boolean"},
    {u"time", "dateTime"}, {u"geo", "string"},     {u"switch", "string"},
};

/// Keys whose texts are SQL, at any depth, and keys that hold names without braces.
constexpr std::array<char const*, 7> sqlKeys{"sql",       "case",     "filters", "latitude",
                                             "longitude", "order_by", "mask"};
constexpr std::array<char const*, 4> nameKeys{"group_by", "reduce_by", "add_group_by",
                                              "time_shift"};

void collectTexts(SourceTree const& tree, SourceTree::Value value, bool inBraces,
                  std::string& into) {
    std::string_view const text = tree.textOf(value);
    if (!text.empty()) {
        into.append("\n").append(inBraces ? "{" : "").append(text).append(inBraces ? "}" : "");
    }
    for (auto each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        collectTexts(tree, each, inBraces, into);
    }
}

std::string textAt(SourceTree const& tree, SourceTree::Value map, std::string_view key) {
    SourceTree::Value const value = tree.find(map, key);
    return value == SourceTree::None ? std::string() : std::string(tree.textOf(value));
}

} // namespace

std::size_t CubeMembers::add(CubePart part) {
    CubeThing& owner = m_model.things[part.owner];
    std::size_t const number = m_model.parts.size();
    if (part.kind != CubePartKind::Join && !owner.partOfName.emplace(part.name, number).second) {
        m_work.refuse(quotedText(owner.name) + " has the member " + quotedText(part.name) +
                          " twice; rename one of the two",
                      part.position);
    }
    std::size_t bytes = owner.name.size() + part.sql.size();
    for (auto const& [property, value] : part.properties) {
        bytes += property.size() + value.size();
    }
    for (std::string const& level : part.levels) {
        bytes += owner.name.size() + part.name.size() + level.size();
    }
    m_work.countMade(1 + part.levels.size(), bytes, part.position);
    owner.parts.push_back(number);
    m_model.parts.push_back(std::move(part));
    return number;
}

void CubeMembers::read(std::size_t thing, SourceEntries& entries, bool isInherited) {
    for (ListRow const& row : lists) {
        refuseCubeTemplate(entries, row.key, m_work);
        for (SourceTree::Value const each : entries.list(row.key)) {
            SourceEntries member(entries.tree(), each, row.kind, m_work);
            readMember(thing, member, row.part, isInherited);
        }
    }
    refuseCubeTemplate(entries, "joins", m_work);
    for (SourceTree::Value const each : entries.list("joins")) {
        SourceEntries join(entries.tree(), each, "join", m_work);
        readMember(thing, join, CubePartKind::Join, isInherited);
    }
}

void CubeMembers::readMember(std::size_t thing, SourceEntries& member, CubePartKind kind,
                             bool isInherited) {
    if (isInherited) {
        member.tellNothing();
    }
    refuseCubeTemplate(member, "name", m_work);
    CubePart part{.kind = kind, .name = member.name(), .owner = thing};
    part.position = member.position();
    part.file = m_model.things[thing].chain.front().first;
    SourceTree const& tree = member.tree();
    CubeThing& owner = m_model.things[thing];
    bool const isThere = kind == CubePartKind::Join ? !owner.joins.insert(part.name).second
                                                    : owner.find(part.name) != CubePart::None;
    if (isInherited && isThere) {
        return; // its own one counts
    }
    m_work.account.mapped(isInherited ? "inherited " + std::string(member.kind())
                                      : std::string(member.kind()));
    part.add("name", part.name);
    copyCubeText(member, part, "title");
    for (char const* const key : sqlKeys) {
        if (SourceTree::Value const value = member.find(key); value != SourceTree::None) {
            collectTexts(tree, value, false, part.sql);
            part.isOpaque = part.isOpaque || holdsTemplate(tree, value);
        }
    }
    for (char const* const key : nameKeys) {
        if (SourceTree::Value const value = member.find(key); value != SourceTree::None) {
            collectTexts(tree, value, true, part.sql);
            part.isOpaque = part.isOpaque || holdsTemplate(tree, value);
        }
    }
    if (kind == CubePartKind::Join || kind == CubePartKind::Hierarchy) {
        // Their other keys are read once all members are there.
        if (kind == CubePartKind::Hierarchy) {
            part.isPublic = isPublicInCubes(member, m_work);
            for (SourceTree::Value const each : member.list("levels")) {
                part.levels.push_back(trimmed(tree.textOf(each)));
            }
        } else {
            part.relationship = member.text("relationship").value_or("");
        }
        copyCubeText(member, part, "sql", "expression");
    } else {
        copyType(member, part);
        copySql(member, part);
        copyCubeText(member, part, "format");
        part.isPublic = isPublicInCubes(member, m_work);
    }
    copyCubeText(member, part, "description");
    part.add("isHidden", part.isPublic ? "" : "true");
    copyCubeMeta(member, part, m_work);
    member.leaveOutRest(unmappedCubeKeys(), part.name);
    add(std::move(part));
}

/// Of a measure the type may be how it is computed; else it is what its values are.
void CubeMembers::copyType(SourceEntries& member, CubePart& part) {
    std::string const said = member.text("type").value_or("");
    auto const row =
        std::find_if(std::begin(datatypes), std::end(datatypes),
                     [&](DatatypeRow const& each) { return each.said == foldedCase(said); });
    bool const isMeasure = part.kind == CubePartKind::Measure;
    if (row != std::end(datatypes)) {
        part.add("datatype", row->word);
    } else {
        part.add(isMeasure ? "aggregation" : "datatype", said);
    }
    if (isMeasure) {
        part.add("usage", "fact");
    } else if (part.kind == CubePartKind::Dimension) {
        bool const isKey = member.isTrue("primary_key") || member.isTrue("primaryKey");
        part.add("usage", isKey ? "identifier" : "attribute");
    }
}

void CubeMembers::copySql(SourceEntries& member, CubePart& part) {
    std::string expression = member.text("sql").value_or("");
    for (std::string const& more : {casesOf(member, part), placesOf(member, part)}) {
        expression.append(expression.empty() || more.empty() ? "" : "\n").append(more);
    }
    part.add("expression", expression);
    part.add("filter", filtersOf(member, part));
}

/// `case` in the words of SQL.
std::string CubeMembers::casesOf(SourceEntries& member, CubePart& part) {
    SourceTree const& tree = member.tree();
    SourceTree::Value const value = member.find("case");
    if (value == SourceTree::None || tree.kind(value) != SourceTree::Kind::Map) {
        return {}; // what it may be else is told as left out
    }
    member.ignore("case");
    m_work.account.mapped(std::string(member.kind()) + ".case");
    auto const labelOf = [&](SourceTree::Value branch) {
        SourceTree::Value const label = tree.find(branch, "label");
        if (label == SourceTree::None) {
            return textAt(tree, branch, "sql");
        }
        return tree.kind(label) == SourceTree::Kind::Map
                   ? textAt(tree, label, "sql")
                   : '\'' + std::string(tree.textOf(label)) + '\'';
    };
    std::string text = "case";
    SourceTree::Value const when = tree.find(value, "when");
    for (auto each = when == SourceTree::None ? when : tree.first(when); each != SourceTree::None;
         each = tree.next(each)) {
        text += " when " + textAt(tree, each, "sql") + " then " + labelOf(each);
    }
    if (SourceTree::Value const other = tree.find(value, "else"); other != SourceTree::None) {
        text += " else " + labelOf(other);
    }
    part.isOpaque = part.isOpaque || holdsTemplate(tree, value);
    return text + " end";
}

std::string CubeMembers::filtersOf(SourceEntries& measure, CubePart& part) {
    std::string text;
    SourceTree const& tree = measure.tree();
    if (part.kind != CubePartKind::Measure) {
        return text;
    }
    for (SourceTree::Value const each : measure.list("filters")) {
        m_work.account.mapped("filter of a measure");
        text.append(text.empty() ? "" : " and ").append("(" + textAt(tree, each, "sql") + ")");
    }
    return text;
}

/// Of a place on a map: where it lies.
std::string CubeMembers::placesOf(SourceEntries& dimension, CubePart& part) {
    std::string text;
    if (part.kind != CubePartKind::Dimension) {
        return text;
    }
    for (char const* const key : {"latitude", "longitude"}) {
        if (SourceTree::Value const value = dimension.map(key); value != SourceTree::None) {
            m_work.account.mapped(std::string("dimension.") + key);
            text.append(text.empty() ? "" : ", ").append(textAt(dimension.tree(), value, "sql"));
        }
    }
    return text;
}

} // namespace vex
