#pragma once

#include "tests/naive/PlainModel.h"

#include <set>

namespace naive {

/// Is the object with this id included, under the requested views and the user's roles?
class NaiveAccessEngine {
public:
    NaiveAccessEngine(PlainModel const& model, Texts requestedViews, Texts roles,
                      bool unrestricted);

    /// Reads the views on the first call; may raise.
    bool isIncluded(Text const& id, bool skipViewLists);

private:
    void populate();
    void filterSecurityViews(Handles const& views);
    bool isRoleBased(Handle view) const;
    void loadIds(Handle view, Text const& listKind, std::set<Text>& ids) const;

    PlainModel const& m_model;
    Texts m_requestedViews;
    Texts m_roles;
    bool m_enforced;
    bool m_populated = false;
    bool m_hasRoleBasedViews = false;
    bool m_hasDefaultView = false;
    std::set<Text> m_includedIds;
    std::set<Text> m_roleIncludedIds;
    std::set<Text> m_roleExcludedIds;
    std::set<Text> m_roleHiddenIds;
    std::set<Text> m_defaultExcludedIds;
};

} // namespace naive
