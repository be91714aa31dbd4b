#include "host/protocol/JsonSight.h"

#include "host/protocol/JsonListText.h"
#include "host/protocol/JsonObjects.h"

#include <nlohmann/json.hpp>

namespace vex {

namespace {

Json describe(ObjectLabel const& object) {
    return {{"id", object.id},
            {"reference", object.reference},
            {"class", object.className},
            {"name", object.name}};
}

Json describe(ToldViewers const& viewers) {
    return {{viewers.areRoles ? "roles" : "users", viewers.names},
            {"sees", codeOf(viewers.sight)},
            {"why", viewers.why},
            {"tree", viewers.tree}};
}

std::vector<std::string> namesOf(SightMatrix::Column const& column) {
    std::vector<std::string> names{column.name};
    names.insert(names.end(), column.alike.begin(), column.alike.end());
    return names;
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

std::string toJson(std::vector<ObjectSight> const& objects) {
    Json list = Json::array();
    for (ObjectSight const& object : objects) {
        Json told = describe(object.object);
        told["seenBy"] = Json::array();
        for (ToldViewers const& viewers : object.viewers) {
            told["seenBy"].push_back(describe(viewers));
        }
        list.push_back(std::move(told));
    }
    return toText(Json{{"objects", std::move(list)}}, JsonForm::Indented);
}

std::string toJson(SightMatrix const& matrix) {
    Json refused = Json::object();
    for (SightMatrix::Column const& column : matrix.columns) {
        for (std::string const& name : namesOf(column)) {
            if (!column.refusal.empty()) {
                appendMember(refused, name, column.refusal);
            }
        }
    }
    JsonListText text(Json{{"refused", std::move(refused)}, {"objects", Json::array()}}, "objects",
                      1);
    for (SightMatrix::Row const& row : matrix.rows) {
        Json told = describe(row.object);
        Json sees = Json::object();
        for (std::size_t number = 0; number < matrix.columns.size(); ++number) {
            for (std::string const& name : namesOf(matrix.columns[number])) {
                appendMember(sees, name, codeOf(row.cells[number]));
            }
        }
        told["sees"] = std::move(sees);
        text.add(told);
    }
    return std::move(text).finish();
}

std::string toCsv(SightMatrix const& matrix) {
    std::string text = "id,reference,class,name";
    for (SightMatrix::Column const& column : matrix.columns) {
        for (std::string const& name : namesOf(column)) {
            text += ',' + csvField(name);
        }
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
