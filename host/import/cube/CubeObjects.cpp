#include "host/import/cube/CubeObjects.h"

#include "host/import/cube/CubeKeys.h"
#include "host/import/cube/CubeMembers.h"
#include "host/import/draft/PlainText.h"

#include <algorithm>
#include <iterator>

namespace vex {

namespace {

/// What stands for a part, by the numbers of `CubePartKind`.
struct ClassRow {
    char const* className;
    char const* kind; // of ids
};
constexpr ClassRow classes[] = {{"queryItem", "dimension"},
                                {"queryItem", "measure"},
                                {"filter", "segment"},
                                {"hierarchy", "hierarchy"},
                                {"relationship", "join"}};

ClassRow const& classOf(CubePart const& part) {
    return classes[static_cast<std::size_t>(part.kind)];
}

struct CardinalityRow {
    std::u16string_view said; // in the letters that compare, without "_"
    char const* left;
    char const* right;
};
constexpr char const* one = "0..1";
constexpr char const* many = "0..n";
constexpr CardinalityRow cardinalities[] = {
    {u"manytoone", many, one}, {u"belongsto", many, one}, {u"onetomany", one, many},
    {u"hasmany", one, many},   {u"onetoone", one, one},   {u"hasone", one, one},
};

std::string pathOf(std::string const& first, std::string const& second = "") {
    std::string path;
    appendToPath(path, first);
    if (!second.empty()) {
        appendToPath(path, second);
    }
    return path;
}

} // namespace

std::string CubeObjects::pathTo(CubePart const& part) const {
    return pathOf(m_model.things[part.owner].name, part.name);
}

void CubeObjects::setProperties(std::size_t object, CubePart const& part) {
    for (auto const& [property, value] : part.properties) {
        m_work.draft.model.set(object, property, value);
    }
}

void CubeObjects::make(std::size_t number, SourceEntries& entries) {
    CubeThing& thing = m_model.things[number];
    m_thing = number;
    m_folderOf.clear();
    m_placed.clear();
    CubePart itself{.kind = CubePartKind::Dimension, .name = thing.name, .owner = number};
    itself.add("name", thing.name);
    copyCubeText(entries, itself, "title");
    copyCubeText(entries, itself, "description");
    itself.add("isHidden", thing.isPublic ? "" : "true");
    copyCubeMeta(entries, itself, m_work);
    thing.object = m_work.draft.model.add(m_model.space, "querySubject",
                                          {thing.isView ? "view" : "cube", pathOf(thing.name)},
                                          entries.position());
    setProperties(thing.object, itself);
    readFolders(entries.tree(), entries.list("folders"), thing.object, pathOf(thing.name));
    for (std::size_t const part : thing.parts) {
        if (m_model.parts[part].kind != CubePartKind::Join) {
            makePart(part);
        }
    }
    for (std::size_t const part : thing.parts) {
        if (m_model.parts[part].kind == CubePartKind::Hierarchy) {
            makeLevels(part);
        }
    }
}

void CubeObjects::readFolders(SourceTree const& tree, std::vector<SourceTree::Value> const& folders,
                              std::size_t container, std::string const& path) {
    for (SourceTree::Value const each : folders) {
        readFolder(tree, each, container, path);
    }
}

void CubeObjects::readFolder(SourceTree const& tree, SourceTree::Value value, std::size_t container,
                             std::string path) {
    SourceEntries folder(tree, value, "folder", m_work);
    std::string const name = folder.name();
    m_work.account.mapped("folder");
    appendToPath(path, name);
    m_work.countMade(1, path.size(), folder.position());
    std::size_t const object =
        m_work.draft.model.add(container, "queryItemFolder", {"folder", path}, folder.position());
    m_work.draft.model.set(object, "name", name);
    SourceTree::Value const includes = folder.find("includes");
    folder.ignore("includes");
    if (includes != SourceTree::None && trimmed(tree.textOf(includes)) == "*") {
        if (m_placed.insert(m_thing).second) {
            for (std::size_t const part : m_model.things[m_thing].parts) {
                m_folderOf.emplace(part, object);
            }
        }
        m_work.account.mapped("member of a folder");
    } else if (includes != SourceTree::None) {
        for (auto each = tree.first(includes); each != SourceTree::None; each = tree.next(each)) {
            SourceTree::Value const joinPath = tree.find(each, "join_path");
            if (tree.kind(each) != SourceTree::Kind::Map) {
                place(trimmed(tree.textOf(each)), object, tree.positionOf(each));
            } else if (joinPath != SourceTree::None) {
                placeAllOf(std::string(tree.textOf(joinPath)), object, tree.positionOf(each));
            } else {
                readFolder(tree, each, object, path);
            }
        }
    }
    folder.leaveOutRest(unmappedCubeKeys(), name);
}

void CubeObjects::place(std::string const& member, std::size_t folder, DocumentPosition at) {
    std::size_t const part = m_model.things[m_thing].find(member);
    bool const isFirst = part != CubePart::None && m_folderOf.emplace(part, folder).second;
    if (isFirst) {
        m_work.account.mapped("member of a folder");
    } else {
        m_work.account.leftOut("member of a folder",
                               part == CubePart::None ? cubeReasons::UnknownMember
                                                      : cubeReasons::OtherFolder,
                               {member, at});
    }
}

/// What a view has of a cube that is joined.
void CubeObjects::placeAllOf(std::string const& joinPath, std::size_t folder, DocumentPosition at) {
    std::size_t const dot = joinPath.rfind('.');
    std::size_t const cube =
        m_model.findThing(trimmed(dot == std::string::npos ? joinPath : joinPath.substr(dot + 1)));
    if (cube == CubePart::None) {
        m_work.account.leftOut("member of a folder", cubeReasons::UnknownCube, {joinPath, at});
        return;
    }
    m_work.account.mapped("member of a folder");
    if (!m_placed.insert(cube).second) {
        return;
    }
    for (std::size_t const part : m_model.things[m_thing].parts) {
        std::size_t const origin = m_model.parts[part].standsFor;
        if (origin != CubePart::None && m_model.parts[origin].owner == cube) {
            m_folderOf.emplace(part, folder);
        }
    }
}

void CubeObjects::makePart(std::size_t number) {
    CubePart& part = m_model.parts[number];
    auto const folder = m_folderOf.find(number);
    std::size_t const container =
        folder == m_folderOf.end() ? m_model.things[part.owner].object : folder->second;
    part.object = m_work.draft.model.add(container, classOf(part).className,
                                         {classOf(part).kind, pathTo(part)}, part.position);
    setProperties(part.object, part);
}

void CubeObjects::makeLevels(std::size_t hierarchy) {
    CubePart const& part = m_model.parts[hierarchy];
    for (std::string const& level : part.levels) {
        // A dimension of the same cube, or of another one: "users.city".
        std::size_t const dot = level.rfind('.');
        std::size_t const owner =
            dot == std::string::npos ? part.owner : m_model.findThing(level.substr(0, dot));
        std::size_t const dimension =
            owner == CubePart::None ? CubePart::None
                                    : m_model.things[owner].find(
                                          dot == std::string::npos ? level : level.substr(dot + 1));
        if (dimension == CubePart::None) {
            m_work.account.leftOut("level", cubeReasons::UnknownMember, {level, part.position});
            continue;
        }
        m_work.account.mapped("level");
        std::string path = pathTo(part);
        appendToPath(path, level);
        std::size_t const object =
            m_work.draft.model.add(part.object, "level", {"level", path}, part.position);
        m_work.draft.model.set(object, "name", level);
        m_work.draft.model.set(object, "expression",
                               pathOf(m_model.spaceName) + '.' + pathTo(m_model.parts[dimension]));
        m_model.levels.push_back({hierarchy, dimension, object});
    }
}

void CubeObjects::makeJoins() {
    for (CubePart& part : m_model.parts) {
        if (part.kind != CubePartKind::Join) {
            continue;
        }
        m_work.enterFile(m_model.files[part.file].name);
        std::size_t const other = m_model.findThing(part.name);
        CubeThing const& owner = m_model.things[part.owner];
        if (other == CubePart::None) {
            m_work.account.leftOut("joined cube", cubeReasons::UnknownCube,
                                   {owner.name + '.' + part.name, part.position});
            continue;
        }
        m_work.account.mapped("joined cube");
        ModelDraft& draft = m_work.draft.model;
        m_work.countMade(1,
                         2 * (owner.name.size() + part.name.size()) + 2 * m_model.spaceName.size(),
                         part.position);
        part.object =
            draft.add(m_model.space, "relationship", {"join", pathTo(part)}, part.position);
        draft.set(part.object, "name", owner.name + " \xE2\x86\x92 " + part.name);
        std::u16string said = foldedCase(part.relationship);
        std::erase(said, u'_');
        auto const row =
            std::find_if(std::begin(cardinalities), std::end(cardinalities),
                         [&](CardinalityRow const& each) { return each.said == said; });
        bool const isKnown = row != std::end(cardinalities);
        draft.set(part.object, "left", pathOf(m_model.spaceName, owner.name));
        draft.set(part.object, "leftCardinality", isKnown ? row->left : "");
        draft.set(part.object, "right", pathOf(m_model.spaceName, part.name));
        draft.set(part.object, "rightCardinality", isKnown ? row->right : "");
        for (auto const& [property, value] : part.properties) {
            if (property != "name") {
                draft.set(part.object, property, value);
            }
        }
    }
}

} // namespace vex
