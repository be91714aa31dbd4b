#include "resources.h"

#include <array>

namespace {

struct Row {
    std::size_t id;
    char const* text;
};

constexpr Row rows[] = {
    {16, ","},          {46, " "},
    {55, "Collection"}, {119, "calculation"},
    {126, "path:"},     {128, "roleId"},
    {182, "hidden"},    {194, "filter"},
    {197, "folder"},    {201, "function"},
    {209, "excluded"},  {227, "included"},
    {228, "kind"},      {236, "roleBased"},
    {278, "name"},      {279, "namespace"},
    {325, "package"},   {327, "querySubject"},
    {328, "queryItem"}, {329, "queryItemFolder"},
    {330, "item"},      {350, "member"},
    {356, "shortcut"},  {360, "securityView"},
};

constexpr std::size_t pastLastId = 361;
using Table = std::array<I18NString, pastLastId>;

Table const* makeTable() {
    auto* const table = new Table;
    for (Row const& row : rows) {
        (*table)[row.id] = row.text;
    }
    return table;
}

} // namespace

I18NString const& resources::getString(long id) {
    // Never destroyed: other static objects may hold on to a text to the end.
    static Table const* const table = makeTable();
    auto const index = static_cast<std::size_t>(id);
    return index < pastLastId ? (*table)[index] : (*table)[0];
}
