#pragma once

#include "host/import/cube/CubeModel.h"
#include "host/import/draft/SourceEntries.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vex {

/// Who is granted which members by the access policies of cubes and views. What cannot be
/// understood grants nothing.
class CubePolicies {
public:
    /// The role of everybody.
    static constexpr char const* All = "*";

    CubePolicies(CubeModel const& model, ImportWork& work) : m_model(model), m_work(work) {}

    /// Reads those of a thing: `entries` are its own, or those of what it extends. False when
    /// it says nothing about access.
    bool read(std::size_t thing, SourceEntries& entries);

    /// Grants everything in a thing to everybody: it has no policy.
    void open(std::size_t thing);

    /// Grants nothing in a thing: its policies are not to be had.
    void close() { m_areThere = true; }

    /// True when some thing has a policy.
    bool areThere() const { return m_areThere; }

    /// Roles in the order in which they came first, that of everybody before all.
    std::vector<std::string> const& roles() const { return m_roles; }

    /// For each part, whether the role is granted it by itself, without what everybody is.
    std::vector<bool> grantedTo(std::string const& role) const;

private:
    char const* reasonToSkip(SourceTree const& tree, SourceTree::Value policy,
                             CubeThing const& thing) const;
    void readPolicy(std::size_t thing, SourceTree const& tree, SourceTree::Value value);
    std::vector<std::size_t> membersOf(std::size_t thing, SourceEntries& policy);
    std::vector<std::size_t> readMembers(std::size_t thing, SourceEntries& level, char const* key);
    void grant(std::string const& role, std::vector<std::size_t> const& parts);

    CubeModel const& m_model;
    ImportWork& m_work;
    bool m_areThere = false;
    std::vector<std::string> m_roles{All};
    std::map<std::string, std::vector<std::size_t>> m_granted; // by role: parts
};

} // namespace vex
