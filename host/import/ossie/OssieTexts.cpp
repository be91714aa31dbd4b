#include "host/import/ossie/OssieTexts.h"

#include "host/import/draft/PlainText.h"
#include "host/import/ossie/OssieKeys.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vex {

namespace {

constexpr char const* mainDialect = "ANSI_SQL";

struct DatatypeRow {
    std::u16string_view said; // in the letters that compare
    char const* word;
};
constexpr DatatypeRow datatypes[] = {
    {u"string", "string"}, {u"integer", "int64"},     {u"decimal", "decimal"},
    {u"float", "double"},  {u"boolean", "boolean"},   {u"date", "date"},
    {u"time", "time"},     {u"datetime", "dateTime"}, {u"datetimetz", "dateTime"},
};

void addLine(std::string& text, std::string const& line) {
    if (!line.empty()) {
        text.append(text.empty() ? "" : "\n").append(line);
    }
}

/// The texts of a list in one line: "Synonyms: order, purchase".
std::string lineOf(SourceEntries& context, char const* key, char const* word) {
    if (!context.text(key)) {
        return {};
    }
    SourceTree const& tree = context.tree();
    SourceTree::Value const value = context.find(key);
    std::string line(tree.textOf(value));
    for (auto each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        line.append(line.empty() ? "" : ", ").append(tree.textOf(each));
    }
    return word + (": " + line);
}

std::string contextOf(SourceEntries& thing, ImportWork& work) {
    constexpr char const* key = "ai_context";
    SourceTree::Value const value = thing.find(key);
    if (value == SourceTree::None || thing.tree().kind(value) != SourceTree::Kind::Map) {
        return thing.text(key).value_or("");
    }
    thing.ignore(key);
    SourceEntries context(thing.tree(), value, key, work);
    std::string text = context.text("instructions").value_or("");
    addLine(text, lineOf(context, "synonyms", "Synonyms"));
    addLine(text, lineOf(context, "examples", "Examples"));
    context.leaveOutRest(unmappedOssieKeys(), thing.kind());
    return text;
}

/// Names of the extensions of a thing: "extension.DBT", and "extension.DBT.2" for a second one.
class ExtensionNames {
public:
    std::string next(std::string const& vendor) {
        std::size_t& count = m_counts[vendor];
        std::string name;
        do {
            ++count;
            name = "extension." + vendor + (count == 1 ? "" : '.' + std::to_string(count));
        } while (!m_taken.insert(name).second);
        return name;
    }

private:
    std::map<std::string, std::size_t> m_counts;
    std::set<std::string> m_taken; // a vendor may be called "DBT.2"
};

void copyExtensions(SourceEntries& thing, std::size_t object, ImportWork& work) {
    ExtensionNames names;
    for (SourceTree::Value const each : thing.list("custom_extensions")) {
        SourceEntries extension(thing.tree(), each, "extension", work);
        std::string const vendor = extension.name("vendor_name");
        if (auto const data = extension.text("data")) {
            work.account.mapped("extension");
            work.draft.model.set(object, names.next(vendor), *data);
        } else {
            work.account.leftOut("extension", "it has no text", {vendor, extension.position()});
        }
        extension.leaveOutRest(unmappedOssieKeys(), vendor);
    }
}

struct Expression {
    std::string dialect;
    std::string text;
};

std::vector<Expression> dialectsOf(SourceEntries& expression, ImportWork& work) {
    std::vector<Expression> found;
    std::set<std::string> dialects;
    for (SourceTree::Value const each : expression.list("dialects")) {
        SourceEntries dialect(expression.tree(), each, "dialect", work);
        std::string const name = dialect.name("dialect");
        auto const text = dialect.text("expression");
        char const* const problem = !text                           ? ossieReasons::NoExpression
                                    : !dialects.insert(name).second ? ossieReasons::SecondDialect
                                                                    : nullptr;
        if (problem != nullptr) {
            work.account.leftOut("dialect", problem, {name, dialect.position()});
        } else {
            work.account.mapped("dialect");
            found.push_back({name, *text});
        }
        dialect.leaveOutRest(unmappedOssieKeys(), name);
    }
    // The main one first.
    std::stable_partition(found.begin(), found.end(),
                          [](Expression const& each) { return each.dialect == mainDialect; });
    return found;
}

} // namespace

void copyText(SourceEntries& thing, std::size_t object, ImportWork& work, std::string_view key,
              std::string_view property) {
    if (auto const text = thing.text(key)) {
        work.draft.model.set(object, property.empty() ? key : property, *text);
    }
}

std::string copyDatatype(SourceEntries& thing, std::size_t object, ImportWork& work) {
    constexpr char const* key = "datatype";
    if (!thing.has(key)) {
        return {};
    }
    std::string const said = thing.plainText(key);
    std::string const kind = std::string(thing.kind()) + '.' + key;
    auto const row =
        std::find_if(std::begin(datatypes), std::end(datatypes),
                     [&](DatatypeRow const& each) { return each.said == foldedCase(said); });
    if (row == std::end(datatypes)) {
        work.account.leftOut(kind, ossieReasons::UnknownDatatype, {said, thing.position()});
        return {};
    }
    work.account.mapped(kind);
    work.draft.model.set(object, key, row->word);
    return row->word;
}

void copyTexts(SourceEntries& thing, std::size_t object, ImportWork& work) {
    std::string description = thing.text("description").value_or("");
    addLine(description, contextOf(thing, work));
    work.draft.model.set(object, "description", description);
    copyExtensions(thing, object, work);
}

std::string copyExpression(SourceEntries& thing, std::size_t object, ImportWork& work) {
    constexpr char const* key = "expression";
    SourceTree::Value const value = thing.find(key);
    if (value == SourceTree::None || thing.tree().kind(value) != SourceTree::Kind::Map) {
        std::string const text = thing.text(key).value_or("");
        work.draft.model.set(object, key, text);
        return text;
    }
    thing.ignore(key);
    SourceEntries expression(thing.tree(), value, key, work);
    std::vector<Expression> const found = dialectsOf(expression, work);
    expression.leaveOutRest(unmappedOssieKeys(), thing.kind());
    for (Expression const& each : found) {
        bool const isFirst = &each == found.data();
        work.draft.model.set(object, isFirst ? key : key + ('.' + each.dialect), each.text);
    }
    return found.empty() ? "" : found.front().text;
}

} // namespace vex
