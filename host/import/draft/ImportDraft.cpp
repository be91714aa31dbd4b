#include "host/import/draft/ImportDraft.h"

#include <algorithm>

namespace vex {

void ImportDraft::addUser(std::string const& name, std::string const& role) {
    auto const [known, isNew] = m_userOfName.emplace(name, m_users.size());
    if (isNew) {
        m_users.push_back({name});
    }
    if (m_rolesOfUsers.emplace(known->second, role).second) {
        m_users[known->second].roles.push_back(role);
    }
}

void ImportDraft::giveRoleOfAll() {
    if (roleOfAll.empty()) {
        return;
    }
    for (std::size_t user = 0; user < m_users.size(); ++user) {
        addUser(std::string(m_users[user].name), roleOfAll);
    }
}

bool ImportDraft::isSeenBySomebody() const {
    std::set<std::string> granted;
    for (DraftGrant const& grant : grants) {
        granted.insert(grant.role);
    }
    return std::any_of(m_users.begin(), m_users.end(), [&](DraftUser const& user) {
        return std::any_of(user.roles.begin(), user.roles.end(),
                           [&](std::string const& role) { return granted.contains(role); });
    });
}

} // namespace vex
