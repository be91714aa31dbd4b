#include "host/import/cube/CubePolicies.h"

#include "host/import/cube/CubeKeys.h"
#include "host/import/draft/PlainText.h"
#include "host/import/yamltree/YamlTree.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>

namespace vex {

namespace {

using Kind = SourceTree::Kind;
using Value = SourceTree::Value;

constexpr std::array<char const*, 4> roleKeys{"role", "roles", "group", "groups"};
constexpr std::array<std::string_view, 9> knownKeys{"role",           "roles",      "group",
                                                    "groups",         "conditions", "member_level",
                                                    "member_masking", "row_level",  "description"};

/// What no name of a role or member is.
bool isCode(std::string_view text) {
    constexpr std::array<std::string_view, 8> signs{"${",
                                                    "=>",
                                                    "(",
                                                    "`",
                                                    "COMPILE_CONTEXT",
                                                    "security_context",
                                                    "securityContext",
                                                    "userAttributes"};
    return std::any_of(signs.begin(), signs.end(), [&](std::string_view sign) {
        return text.find(sign) != std::string_view::npos;
    });
}

/// One text, or a list of them; nothing for what is neither.
bool readTexts(SourceTree const& tree, Value value, std::vector<std::string>& into) {
    if (tree.kind(value) == Kind::Text || tree.kind(value) == Kind::Scalar) {
        into.push_back(trimmed(tree.textOf(value)));
        return !into.back().empty();
    }
    if (tree.kind(value) != Kind::List) {
        return false;
    }
    for (Value each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        into.push_back(trimmed(tree.textOf(each)));
        if (into.back().empty()) {
            return false;
        }
    }
    return true;
}

/// Whom a policy is for; nothing when that is not clear.
std::vector<std::string> rolesOf(SourceTree const& tree, Value policy) {
    std::vector<std::string> roles;
    std::size_t count = 0;
    for (char const* const key : roleKeys) {
        Value const value = tree.find(policy, key);
        if (value != SourceTree::None && (++count > 1 || !readTexts(tree, value, roles))) {
            return {};
        }
    }
    return roles;
}

/// A list of members that is not there restricts nothing; one that is there and empty names
/// none.
bool isListOfMembers(SourceTree const& tree, Value level, char const* key) {
    Value const value = tree.find(level, key);
    std::vector<std::string> texts;
    return value == SourceTree::None || tree.kind(value) == Kind::Nothing ||
           readTexts(tree, value, texts);
}

/// A member's name without what may stand around it: "{CUBE.status}", "orders.status".
std::string memberName(std::string text, std::string const& owner) {
    std::erase_if(text, [](char unit) { return unit == '{' || unit == '}'; });
    text = trimmed(text);
    for (std::string const& place : {std::string("CUBE"), owner}) {
        if (text.starts_with(place + '.')) {
            return text.substr(place.size() + 1);
        }
    }
    return text;
}

bool isGranted(CubePartKind kind) {
    return kind != CubePartKind::Join;
}

} // namespace

void CubePolicies::grant(std::string const& role, std::vector<std::size_t> const& parts) {
    auto const [known, isNew] = m_granted.try_emplace(role);
    if (isNew && role != All) {
        m_roles.push_back(role);
    }
    m_work.spendOnViews(1 + parts.size());
    auto& granted = known->second;
    granted.insert(granted.end(), parts.begin(), parts.end());
}

void CubePolicies::open(std::size_t thing) {
    grant(All, m_model.things[thing].parts);
}

std::vector<bool> CubePolicies::grantedTo(std::string const& role) const {
    m_work.spendOnViews(m_model.parts.size());
    std::vector<bool> isGrantedPart(m_model.parts.size());
    if (auto const found = m_granted.find(role); found != m_granted.end()) {
        for (std::size_t const part : found->second) {
            isGrantedPart[part] = true;
        }
    }
    return isGrantedPart;
}

bool CubePolicies::read(std::size_t thing, SourceEntries& entries) {
    Value const value = entries.find("access_policy");
    if (value == SourceTree::None) {
        return false;
    }
    m_areThere = true;
    entries.ignore("access_policy");
    SourceTree const& tree = entries.tree();
    if (tree.kind(value) != Kind::List) {
        m_work.account.leftOut(
            "access policy", isTemplate(tree, value) ? cubeReasons::Template : cubeReasons::NoList,
            {m_model.things[thing].name, tree.positionOf(value)});
        return true;
    }
    for (Value each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        readPolicy(thing, tree, each);
    }
    return true;
}

char const* CubePolicies::reasonToSkip(SourceTree const& tree, Value policy,
                                       CubeThing const& thing) const {
    if (holdsTemplate(tree, policy)) {
        return cubeReasons::Template;
    }
    if (tree.kind(policy) != Kind::Map) {
        return cubeReasons::NoList;
    }
    for (Value each = tree.first(policy); each != SourceTree::None; each = tree.next(each)) {
        if (std::find(knownKeys.begin(), knownKeys.end(), tree.keyOf(each)) == knownKeys.end()) {
            return cubeReasons::UnknownKey;
        }
    }
    Value const conditions = tree.find(policy, "conditions");
    if (conditions != SourceTree::None &&
        (tree.kind(conditions) != Kind::List || tree.first(conditions) != SourceTree::None)) {
        return cubeReasons::Condition;
    }
    std::vector<std::string> texts = rolesOf(tree, policy);
    if (texts.empty()) {
        return cubeReasons::NoRole;
    }
    if (std::any_of(texts.begin(), texts.end(),
                    [](std::string const& role) { return role.find('{') != std::string::npos; })) {
        return cubeReasons::Computed;
    }
    Value const level = tree.find(policy, "member_level");
    if (level != SourceTree::None) {
        if (tree.kind(level) != Kind::Map || !isListOfMembers(tree, level, "includes") ||
            !isListOfMembers(tree, level, "excludes")) {
            return cubeReasons::NoMembers;
        }
        for (Value each = tree.first(level); each != SourceTree::None; each = tree.next(each)) {
            if (tree.keyOf(each) != "includes" && tree.keyOf(each) != "excludes") {
                return cubeReasons::UnknownKey;
            }
            readTexts(tree, each, texts);
        }
    }
    if (std::any_of(texts.begin(), texts.end(), isCode)) {
        return cubeReasons::Computed;
    }
    Value const excludes = level == SourceTree::None ? level : tree.find(level, "excludes");
    std::vector<std::string> excluded;
    if (excludes != SourceTree::None && readTexts(tree, excludes, excluded) && !thing.isComplete) {
        for (std::string const& each : excluded) {
            if (each != All && thing.find(memberName(each, thing.name)) == CubePart::None) {
                return cubeReasons::PartOfView;
            }
        }
    }
    return nullptr;
}

void CubePolicies::readPolicy(std::size_t thing, SourceTree const& tree, Value value) {
    std::string const& name = m_model.things[thing].name;
    if (char const* const reason = reasonToSkip(tree, value, m_model.things[thing])) {
        m_work.account.leftOut("access policy", reason, {name, tree.positionOf(value)});
        return;
    }
    SourceEntries policy(tree, value, "access policy", m_work);
    m_work.account.mapped("access policy");
    for (char const* const key : roleKeys) {
        policy.text(key);
    }
    std::vector<std::size_t> const members = membersOf(thing, policy);
    std::vector<std::string> const roles = rolesOf(tree, value);
    for (std::string const& role : std::set<std::string>(roles.begin(), roles.end())) {
        grant(role, members);
    }
    policy.leaveOutRest(unmappedCubeKeys(), name);
}

std::vector<std::size_t> CubePolicies::membersOf(std::size_t thing, SourceEntries& policy) {
    std::vector<std::size_t> const& all = m_model.things[thing].parts;
    Value const value = policy.map("member_level");
    if (value == SourceTree::None) {
        // There and empty is no list either; only what is not there grants all.
        return policy.has("member_level") ? std::vector<std::size_t>() : all;
    }
    SourceEntries level(policy.tree(), value, "member level", m_work);
    std::vector<std::size_t> included = all;
    if (level.has("includes")) {
        included = readMembers(thing, level, "includes");
        for (std::size_t const part : all) { // hierarchies are seen by their levels
            if (m_model.parts[part].kind == CubePartKind::Hierarchy) {
                included.push_back(part);
            }
        }
    }
    std::vector<std::size_t> const list = readMembers(thing, level, "excludes");
    std::set<std::size_t> const excluded(list.begin(), list.end());
    std::erase_if(included, [&](std::size_t part) {
        return excluded.contains(part) || !isGranted(m_model.parts[part].kind);
    });
    level.leaveOutRest(unmappedCubeKeys(), m_model.things[thing].name);
    return included;
}

std::vector<std::size_t> CubePolicies::readMembers(std::size_t thing, SourceEntries& level,
                                                   char const* key) {
    SourceTree const& tree = level.tree();
    CubeThing const& owner = m_model.things[thing];
    Value const value = level.find(key);
    std::vector<std::size_t> parts;
    std::vector<std::string> texts;
    if (value == SourceTree::None || !readTexts(tree, value, texts)) {
        level.ignore(key);
        return parts;
    }
    level.text(key); // told as a whole
    bool const isExclusion = std::string_view(key) == "excludes";
    for (std::string const& text : texts) {
        if (text == All) {
            parts.insert(parts.end(), owner.parts.begin(), owner.parts.end());
            continue;
        }
        std::size_t const part = owner.find(memberName(text, owner.name));
        if (part != CubePart::None) {
            m_work.account.mapped(isExclusion ? "denied member" : "granted member");
            parts.push_back(part);
        } else if (isExclusion) {
            m_work.refuse("a policy of " + quotedText(owner.name) + " excludes the member " +
                              quotedText(text) + ", which it lacks; correct the name",
                          tree.positionOf(value));
        } else {
            m_work.account.leftOut("granted member", cubeReasons::UnknownMember,
                                   {owner.name + '.' + text, tree.positionOf(value)});
        }
    }
    return parts;
}

} // namespace vex
