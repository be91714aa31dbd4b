#include "resources.h"

#include <array>

namespace {

struct Row {
    resources::Word number;
    char const* text;
};

constexpr Row rows[] = {
    {resources::ListSeparator, ","},
    {resources::ListBlank, " "},
    {resources::CollectionSuffix, "Collection"},
    {resources::Calculation, "calculation"},
    {resources::PathMark, "path:"},
    {resources::MemberRole, "roleId"},
    {resources::Hidden, "hidden"},
    {resources::Filter, "filter"},
    {resources::Folder, "folder"},
    {resources::Function, "function"},
    {resources::Excluded, "excluded"},
    {resources::Included, "included"},
    {resources::SetKind, "kind"},
    {resources::RoleBased, "roleBased"},
    {resources::Name, "name"},
    {resources::Namespace, "namespace"},
    {resources::Package, "package"},
    {resources::QuerySubject, "querySubject"},
    {resources::QueryItem, "queryItem"},
    {resources::QueryItemFolder, "queryItemFolder"},
    {resources::SetEntry, "item"},
    {resources::ViewMember, "member"},
    {resources::Shortcut, "shortcut"},
    {resources::SecurityView, "securityView"},
};

constexpr std::size_t pastLastId = resources::SecurityView + 1;
using Table = std::array<I18NString, pastLastId>;

Table const* makeTable() {
    auto* const table = new Table;
    for (Row const& row : rows) {
        (*table)[static_cast<std::size_t>(row.number)] = row.text;
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
