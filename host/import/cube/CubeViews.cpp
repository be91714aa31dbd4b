#include "host/import/cube/CubeViews.h"

#include "host/import/cube/CubeKeys.h"
#include "host/import/draft/PlainText.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace vex {

namespace {

constexpr std::array<char const*, 4> overridden{"title", "description", "format", "meta"};

/// The cube that a path of joins ends at, and what names of it begin with.
std::string lastOf(std::string const& joinPath) {
    std::string path = joinPath;
    std::erase_if(path, [](char unit) { return unit == '{' || unit == '}' || unit == '$'; });
    std::size_t const dot = path.rfind('.');
    return trimmed(dot == std::string::npos ? path : path.substr(dot + 1));
}

class IncludedCube {
public:
    IncludedCube(std::size_t view, SourceEntries& entries, bool isInherited, CubeModel& model,
                 CubeMembers& members, ImportWork& work)
        : m_view(view), m_entries(entries), m_isInherited(isInherited), m_model(model),
          m_members(members), m_work(work) {}

    void read() {
        std::string const cubeName = lastOf(m_entries.name("join_path"));
        m_cube = m_model.findThing(cubeName);
        std::string const alias = m_entries.text("alias").value_or(cubeName);
        m_prefix = m_entries.isTrue("prefix") ? alias + '_' : "";
        SourceTree::Value const includes = take("includes");
        SourceTree::Value const excludes = take("excludes");
        if (m_cube == CubePart::None || m_model.things[m_cube].isView) {
            m_model.things[m_view].isComplete = false;
            m_work.account.leftOut("included cube", cubeReasons::UnknownCube,
                                   {cubeName, m_entries.position()});
            return;
        }
        tellMapped("included cube");
        readExcludes(excludes);
        if (isAll(includes)) {
            // A copy: parts of the view are added to the same list.
            std::vector<std::size_t> const all = m_model.things[m_cube].parts;
            for (std::size_t const part : all) {
                if (m_model.parts[part].kind != CubePartKind::Join &&
                    !m_excluded.contains(m_model.parts[part].name)) {
                    tellMapped("included member");
                    include(part, m_model.parts[part].name, nullptr, m_entries.position());
                } else {
                    m_work.countMade(1, 0, m_entries.position()); // looked at all the same
                }
            }
        } else {
            readIncludes(includes);
        }
        m_entries.leaveOutRest(unmappedCubeKeys(), cubeName);
    }

private:
    SourceTree const& tree() const { return m_entries.tree(); }

    SourceTree::Value take(char const* key) {
        SourceTree::Value const value = m_entries.find(key);
        m_entries.ignore(key);
        return value;
    }

    bool isAll(SourceTree::Value value) const {
        return value != SourceTree::None && trimmed(tree().textOf(value)) == "*";
    }

    void tellMapped(char const* kind) {
        if (!m_isInherited) {
            m_work.account.mapped(kind);
        }
    }

    void readExcludes(SourceTree::Value value) {
        if (value == SourceTree::None || tree().kind(value) == SourceTree::Kind::Nothing) {
            return;
        }
        if (tree().kind(value) != SourceTree::Kind::List) {
            m_work.refuse("\"excludes\" of a view is a list of members; write one here",
                          tree().positionOf(value));
        }
        for (auto each = tree().first(value); each != SourceTree::None; each = tree().next(each)) {
            std::string const name = trimmed(tree().textOf(each));
            if (m_model.things[m_cube].find(name) == CubePart::None) {
                m_work.refuse("the cube " + quotedText(m_model.things[m_cube].name) +
                                  " has no member " + quotedText(name) +
                                  " that the view could leave out; correct the name",
                              tree().positionOf(each));
            }
            tellMapped("excluded member");
            m_excluded.insert(name);
        }
    }

    void readIncludes(SourceTree::Value value) {
        if (value == SourceTree::None || tree().kind(value) != SourceTree::Kind::List) {
            m_work.refuse("a view includes \"*\" or a list of members of a cube; write one in "
                          "\"includes\"",
                          value == SourceTree::None ? m_entries.position()
                                                    : tree().positionOf(value));
        }
        for (auto each = tree().first(value); each != SourceTree::None; each = tree().next(each)) {
            if (tree().kind(each) == SourceTree::Kind::Map) {
                SourceEntries member(tree(), each, "included member", m_work);
                if (m_isInherited) {
                    member.tellNothing();
                }
                std::string const name = member.name();
                includeNamed(name, member.text("alias").value_or(name), &member, each);
                member.leaveOutRest(unmappedCubeKeys(), name);
            } else {
                std::string const name = trimmed(tree().textOf(each));
                includeNamed(name, name, nullptr, each);
            }
        }
    }

    void includeNamed(std::string const& name, std::string const& alias, SourceEntries* member,
                      SourceTree::Value value) {
        std::size_t const part = m_model.things[m_cube].find(name);
        if (part == CubePart::None) {
            m_model.things[m_view].isComplete = false;
            m_work.account.leftOut(
                "included member", cubeReasons::UnknownMember,
                {m_model.things[m_cube].name + '.' + name, tree().positionOf(value)});
        } else if (!m_excluded.contains(name)) {
            tellMapped("included member");
            include(part, alias, member, tree().positionOf(value));
        }
    }

    /// The SQL of the cube's member stays there: whoever sees the view's may not see what it
    /// names.
    void include(std::size_t origin, std::string const& alias, SourceEntries* member,
                 DocumentPosition at) {
        CubePart part{
            .kind = m_model.parts[origin].kind, .name = m_prefix + alias, .owner = m_view};
        part.standsFor = origin;
        part.isPublic = m_model.parts[origin].isPublic;
        part.file = m_model.things[m_view].chain.front().first;
        part.position = at;
        for (std::string const& level : m_model.parts[origin].levels) {
            part.levels.push_back(level.find('.') == std::string::npos ? m_prefix + level : level);
        }
        part.add("name", part.name);
        for (auto const& [property, value] : m_model.parts[origin].properties) {
            bool const isOwn = property == "name" || property == "expression" ||
                               property == "filter" || isOverridden(property, member);
            if (!isOwn) {
                part.add(property, value);
            }
        }
        if (member != nullptr) {
            for (char const* const key : overridden) {
                if (std::string_view(key) == "meta") {
                    copyCubeMeta(*member, part, m_work);
                } else {
                    copyCubeText(*member, part, key);
                }
            }
        }
        if (m_model.things[m_view].find(part.name) != CubePart::None) {
            m_work.countMade(1, part.name.size(), at);
            m_work.account.leftOut("second member of a name", cubeReasons::SameName,
                                   {part.name, at});
            return;
        }
        m_members.add(std::move(part));
    }

    static bool isOverridden(std::string const& property, SourceEntries const* member) {
        return member != nullptr &&
               std::any_of(overridden.begin(), overridden.end(), [&](char const* key) {
                   return member->has(key) &&
                          (property == key || property.starts_with(std::string(key) + '.'));
               });
    }

    std::size_t const m_view;
    SourceEntries& m_entries;
    bool const m_isInherited;
    CubeModel& m_model;
    CubeMembers& m_members;
    ImportWork& m_work;
    std::size_t m_cube = CubePart::None;
    std::string m_prefix;
    std::set<std::string> m_excluded;
};

} // namespace

void readCubesOfView(std::size_t view, SourceEntries& entries, bool isInherited, CubeModel& model,
                     CubeMembers& members, ImportWork& work) {
    for (SourceTree::Value const each : entries.list("cubes")) {
        SourceEntries included(entries.tree(), each, "included cube", work);
        if (isInherited) {
            included.tellNothing();
        }
        IncludedCube(view, included, isInherited, model, members, work).read();
    }
}

} // namespace vex
