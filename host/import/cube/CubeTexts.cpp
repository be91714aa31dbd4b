#include "host/import/cube/CubeKeys.h"
#include "host/import/cube/CubeMembers.h"
#include "host/import/draft/PlainText.h"
#include "host/import/yamltree/YamlTree.h"

#include <array>
#include <set>

namespace vex {

namespace {

/// Properties of a map that may hold maps: "meta.a.b".
class MetaReader {
public:
    MetaReader(SourceTree const& tree, std::string kind, CubePart& into, ImportWork& work)
        : m_tree(tree), m_kind(std::move(kind)), m_into(into), m_work(work) {}

    void read(SourceTree::Value value, std::string const& property) {
        if (m_tree.kind(value) == SourceTree::Kind::Map) {
            for (auto each = m_tree.first(value); each != SourceTree::None;
                 each = m_tree.next(each)) {
                read(each, property + '.' + std::string(m_tree.keyOf(each)));
            }
            return;
        }
        std::string text(m_tree.textOf(value));
        bool isText = true;
        for (auto each = m_tree.first(value); each != SourceTree::None; each = m_tree.next(each)) {
            isText = isText && m_tree.first(each) == SourceTree::None;
            text.append(text.empty() ? "" : "\n").append(m_tree.textOf(each));
        }
        char const* const problem = !isText || text.empty()            ? cubeReasons::NoText
                                    : !m_taken.insert(property).second ? cubeReasons::SecondKey
                                                                       : nullptr;
        if (problem != nullptr) {
            m_work.account.leftOut(m_kind, problem, {property, m_tree.positionOf(value)});
            return;
        }
        m_work.account.mapped(m_kind);
        m_work.countMade(1, property.size() + text.size(), m_tree.positionOf(value));
        m_into.add(property, text);
    }

private:
    SourceTree const& m_tree;
    std::string const m_kind;
    CubePart& m_into;
    ImportWork& m_work;
    std::set<std::string> m_taken;
};

} // namespace

void copyCubeText(SourceEntries& thing, CubePart& into, std::string_view key,
                  std::string_view property) {
    if (auto const text = thing.text(key)) {
        into.add(property.empty() ? key : property, *text);
    }
}

void copyCubeMeta(SourceEntries& thing, CubePart& into, ImportWork& work) {
    constexpr char const* key = "meta";
    if (SourceTree::Value const value = thing.find(key); value != SourceTree::None) {
        thing.ignore(key);
        MetaReader(thing.tree(), std::string(thing.kind()) + '.' + key, into, work)
            .read(value, key);
    }
}

void refuseCubeTemplate(SourceEntries const& thing, std::string_view key, ImportWork& work) {
    SourceTree::Value const value = thing.find(key);
    if (value != SourceTree::None && isTemplate(thing.tree(), value)) {
        work.refuse("\"" + std::string(key) + "\" of a " + std::string(thing.kind()) +
                        " is a template; templates are not run: import what they make",
                    thing.tree().positionOf(value));
    }
}

bool isPublicInCubes(SourceEntries& thing, ImportWork& work) {
    constexpr std::array<char const*, 3> keys{"public", "shown", "visible"}; // the newest first
    bool isPublic = true;
    for (char const* const key : keys) {
        if (!thing.has(key)) {
            continue;
        }
        std::u16string const said = foldedCase(thing.text(key).value_or(""));
        isPublic = isPublic && said == u"true";
        if (said != u"true" && said != u"false") {
            work.account.note("a " + std::string(thing.kind()) + " says \"" + key +
                                  "\" with something else than true or false; no role sees it",
                              thing.position());
        }
    }
    return isPublic;
}

} // namespace vex
