#include "host/insight/AccessStory.h"

#include "host/insight/ObjectText.h"

#include <algorithm>
#include <iterator>

namespace vex {

namespace {

template <class Value> struct CodeRow {
    Value value;
    char const* code;
};

constexpr CodeRow<VexAccessReason> reasonCodes[] = {
    {VexAccessReason::Unrestricted, "unrestricted"},
    {VexAccessReason::NotInViews, "not-in-views"},
    {VexAccessReason::NoRoleBasedViews, "no-role-based-views"},
    {VexAccessReason::RoleIncludes, "role-includes"},
    {VexAccessReason::RoleExcludes, "role-excludes"},
    {VexAccessReason::DefaultExcludes, "default-excludes"},
    {VexAccessReason::DefaultAllows, "default-allows"},
    {VexAccessReason::RoleHides, "role-hides"},
    {VexAccessReason::RoleDoesNotInclude, "role-does-not-include"},
};

constexpr CodeRow<VexViewRole> roleCodes[] = {
    {VexViewRole::NotRoleBased, "not-role-based"}, {VexViewRole::RoleHeld, "role-held"},
    {VexViewRole::RoleNotHeld, "role-not-held"},   {VexViewRole::DefaultView, "default-view"},
    {VexViewRole::ReplacedDefault, "replaced"},
};

template <class Rows, class Value> char const* codeIn(Rows const& rows, Value value) {
    return std::find_if(std::begin(rows), std::end(rows),
                        [&](auto const& row) { return row.value == value; })
        ->code;
}

void addToList(std::string& list, std::string const& entry) {
    list += (list.empty() ? "" : ", ") + entry;
}

} // namespace

char const* codeOf(VexAccessReason reason) {
    return codeIn(reasonCodes, reason);
}

char const* codeOf(VexViewRole role) {
    return codeIn(roleCodes, role);
}

std::string AccessStory::verdictOf(VexExplainedObject const& object) const {
    constexpr auto included = &VexViewMention::included;
    constexpr auto excluded = &VexViewMention::excluded;
    constexpr auto hidden = &VexViewMention::hidden;
    switch (object.reason) {
    case VexAccessReason::Unrestricted:
        return "shown: nobody is restricted on this model path";
    case VexAccessReason::NotInViews:
        return "hidden: not among the included objects of the views in force (" + viewsInForce() +
               ")";
    case VexAccessReason::NoRoleBasedViews:
        return "shown: " + includedBy(object) + ", and no view of the model is role based";
    case VexAccessReason::RoleIncludes: {
        std::string text = "shown: " + rolesThat(object, included, "includes it");
        if (says(object, excluded, VexViewRole::RoleHeld)) {
            text += ", which comes before the exclusion by " +
                    viewsThat(object, excluded, VexViewRole::RoleHeld);
        }
        if (says(object, excluded, VexViewRole::DefaultView)) {
            text += ", which comes before the default view's exclusion (" + defaultView() + ')';
        }
        return text;
    }
    case VexAccessReason::RoleExcludes:
        return "hidden: " + rolesThat(object, excluded, "excludes it");
    case VexAccessReason::DefaultExcludes:
        return "hidden: the default view (" + defaultView() +
               ") excludes it, and no view of a role that the user holds includes it";
    case VexAccessReason::DefaultAllows:
        return "shown: " + includedBy(object) + ", and neither the default view (" + defaultView() +
               ") nor a view of a role that the user holds excludes it";
    case VexAccessReason::RoleHides:
        return "hidden: " + rolesThat(object, hidden, "hides it") +
               ", and the model has no default view";
    case VexAccessReason::RoleDoesNotInclude:
        return "hidden: no view of a role that the user holds includes it, and the model has no "
               "default view";
    }
    return {};
}

std::string AccessStory::partOf(VexExplainedView const& view) const {
    std::string const role = "role " + view.firstMemberRole.toUtf8();
    std::string text = view.inForce ? "in force" : "not in force: not granted to the user";
    switch (view.role) {
    case VexViewRole::NotRoleBased:
        return text + "; not role based";
    case VexViewRole::RoleHeld:
        return text + "; role based, and the user holds " + role;
    case VexViewRole::RoleNotHeld:
        return text + "; role based, and the user does not hold " + role + ", its first member's";
    case VexViewRole::DefaultView:
        return text + "; the default view, being role based without members: what it excludes "
                      "counts for everybody";
    case VexViewRole::ReplacedDefault:
        return text + "; role based without members, but replaced as the default view by a later "
                      "one";
    }
    return text;
}

std::vector<std::string> AccessStory::mentionsOf(VexExplainedObject const& object) const {
    struct Row {
        Mark mark;
        char const* verb;
    };
    constexpr Row rows[] = {{&VexViewMention::included, "includes"},
                            {&VexViewMention::excluded, "excludes"},
                            {&VexViewMention::hidden, "hides"}};
    std::vector<std::string> list;
    for (VexViewMention const& mention : object.mentions) {
        std::string verbs;
        for (Row const& row : rows) {
            if (mention.*row.mark) {
                addToList(verbs, row.verb);
            }
        }
        list.push_back(nameOf(m_explanation.views[mention.view]) + ' ' + verbs + " it");
    }
    return list;
}

std::string AccessStory::nameOf(VexExplainedView const& view) const {
    VEX_HANDLE const object = m_model.findById(view.id);
    return object.IsNotNull() ? idAndName(object, m_locale) : view.id.toUtf8();
}

std::string AccessStory::viewsInForce() const {
    std::string list;
    for (VexExplainedView const& view : m_explanation.views) {
        if (view.inForce) {
            addToList(list, nameOf(view));
        }
    }
    return list;
}

bool AccessStory::says(VexExplainedObject const& object, Mark mark, VexViewRole role) const {
    return std::any_of(object.mentions.begin(), object.mentions.end(), [&](auto const& mention) {
        return mention.*mark && m_explanation.views[mention.view].role == role;
    });
}

std::string AccessStory::viewsThat(VexExplainedObject const& object, Mark mark,
                                   VexViewRole role) const {
    std::string list;
    for (VexViewMention const& mention : object.mentions) {
        VexExplainedView const& view = m_explanation.views[mention.view];
        if (mention.*mark && view.role == role) {
            addToList(list, nameOf(view));
        }
    }
    return list;
}

std::string AccessStory::rolesThat(VexExplainedObject const& object, Mark mark,
                                   char const* verb) const {
    std::string list;
    for (VexViewMention const& mention : object.mentions) {
        VexExplainedView const& view = m_explanation.views[mention.view];
        if (mention.*mark && view.role == VexViewRole::RoleHeld) {
            addToList(list, "role " + view.firstMemberRole.toUtf8() + ' ' + verb + " (view " +
                                nameOf(view) + ')');
        }
    }
    return list;
}

std::string AccessStory::includedBy(VexExplainedObject const& object) const {
    std::string list;
    for (VexViewMention const& mention : object.mentions) {
        VexExplainedView const& view = m_explanation.views[mention.view];
        if (mention.included && view.inForce) {
            addToList(list, nameOf(view));
        }
    }
    return list.empty() ? "the views' lists are left out of account"
                        : "included by the views in force (" + list + ')';
}

std::string AccessStory::defaultView() const {
    for (VexExplainedView const& view : m_explanation.views) {
        if (view.role == VexViewRole::DefaultView) {
            return nameOf(view);
        }
    }
    return {};
}

} // namespace vex
