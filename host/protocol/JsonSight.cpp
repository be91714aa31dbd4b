#include "host/protocol/JsonSight.h"

#include "host/protocol/JsonStream.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

void addLabel(JsonStream& json, ObjectLabel const& object) {
    json.member("id", object.id);
    json.member("reference", object.reference);
    json.member("class", object.className);
    json.member("name", object.name);
}

void addViewers(JsonStream& json, ToldViewers const& viewers) {
    json.beginObject();
    json.beginList(viewers.areRoles ? "roles" : "users");
    for (std::string const& name : viewers.names) {
        json.entry(Json(name));
    }
    json.end();
    json.member("sees", codeOf(viewers.sight));
    json.member("why", viewers.why);
    json.member("tree", viewers.tree);
    json.end();
}

/// Hands over each name that a column stands for.
template <class Take> void eachName(SightMatrix::Column const& column, Take const& take) {
    take(column.name);
    std::for_each(column.alike.begin(), column.alike.end(), take);
}

std::string csvField(std::string const& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (char const character : text) {
        quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
    }
    return quoted + '"';
}

} // namespace

void writeJson(std::ostream& out, std::vector<ObjectSight> const& objects) {
    JsonStream json(out);
    json.beginObject();
    json.beginList("objects");
    for (ObjectSight const& object : objects) {
        json.beginObject();
        addLabel(json, object.object);
        json.beginList("seenBy");
        for (ToldViewers const& viewers : object.viewers) {
            addViewers(json, viewers);
        }
        json.end();
        json.end();
    }
    json.end();
    json.end();
}

void writeJson(std::ostream& out, SightMatrix const& matrix) {
    JsonStream json(out);
    json.beginObject();
    json.beginObject("refused");
    for (SightMatrix::Column const& column : matrix.columns) {
        if (!column.refusal.empty()) {
            eachName(column, [&](std::string const& name) { json.member(name, column.refusal); });
        }
    }
    json.end();
    json.beginList("objects");
    for (SightMatrix::Row const& row : matrix.rows) {
        json.beginObject();
        addLabel(json, row.object);
        json.beginObject("sees");
        for (std::size_t number = 0; number < matrix.columns.size(); ++number) {
            eachName(matrix.columns[number], [&](std::string const& name) {
                json.member(name, codeOf(row.cells[number]));
            });
        }
        json.end();
        json.end();
    }
    json.end();
    json.end();
}

std::string toCsv(SightMatrix const& matrix) {
    std::string text = "id,reference,class,name";
    for (SightMatrix::Column const& column : matrix.columns) {
        eachName(column, [&](std::string const& name) { text += ',' + csvField(name); });
    }
    text += "\r\n";
    for (SightMatrix::Row const& row : matrix.rows) {
        ObjectLabel const& object = row.object;
        text += csvField(object.id) + ',' + csvField(object.reference) + ',' +
                csvField(object.className) + ',' + csvField(object.name);
        for (std::size_t number = 0; number < matrix.columns.size(); ++number) {
            for (std::size_t each = 0; each <= matrix.columns[number].alike.size(); ++each) {
                text += std::string(",") + codeOf(row.cells[number]);
            }
        }
        text += "\r\n";
    }
    return text;
}

} // namespace vex
