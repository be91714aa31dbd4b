#pragma once

#include "host/import/draft/ModelDraft.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vex {

/// A view that an import makes: what its holders may see, and nothing else.
struct DraftView {
    DraftKey key;
    std::string name;
    std::string description{};
    std::vector<std::size_t> included{}; // objects of the draft, in any order
    std::string id{};                    // once they were given
};

/// A role and the view that it is granted, by its place in the list of views.
struct DraftGrant {
    std::string role;
    std::size_t view;
};

struct DraftUser {
    std::string name;
    std::vector<std::string> roles{};
};

/// All that an import makes: what stands in the two documents that it writes.
class ImportDraft {
public:
    ModelDraft model;

    std::vector<DraftView> views;
    std::vector<DraftGrant> grants;

    /// A role that every user of the catalogue gets, whoever they are; empty without one.
    std::string roleOfAll;

    /// Gives the user the role; who has it already has it once.
    void addUser(std::string const& name, std::string const& role);
    std::vector<DraftUser> const& users() const { return m_users; }

    /// Gives the role of all to those who are users now.
    void giveRoleOfAll();

    /// True when some user of the draft has a role that is granted a view.
    bool isSeenBySomebody() const;

private:
    std::vector<DraftUser> m_users;
    std::map<std::string, std::size_t> m_userOfName;
    std::set<std::pair<std::size_t, std::string>> m_rolesOfUsers;
};

} // namespace vex
