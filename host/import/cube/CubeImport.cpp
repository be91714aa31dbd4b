#include "host/import/cube/CubeImport.h"

#include "host/import/cube/CubeFiles.h"
#include "host/import/cube/CubeKeys.h"
#include "host/import/cube/CubeMembers.h"
#include "host/import/cube/CubeObjects.h"
#include "host/import/cube/CubePolicies.h"
#include "host/import/cube/CubeRoles.h"
#include "host/import/cube/CubeViews.h"
#include "host/import/draft/PlainText.h"
#include "host/import/yamltree/YamlTree.h"

#include <algorithm>
#include <deque>

namespace vex {

namespace {

constexpr std::size_t longestChain = 100; // of what extends what

std::size_t valuesIn(SourceTree const& tree, SourceTree::Value value) {
    std::size_t count = 1;
    for (auto each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        count += valuesIn(tree, each);
    }
    return count;
}

class ProjectReader {
public:
    explicit ProjectReader(ImportWork& work)
        : m_work(work), m_members(m_model, work), m_policies(m_model, work) {}

    void read(std::vector<std::pair<std::string, std::string>> const& files) {
        YamlUse use;
        for (auto const& [name, text] : files) {
            m_work.enterFile(name);
            m_model.files.push_back({name, readYamlTree(text, m_work, use)});
        }
        addSpace();
        for (std::size_t file = 0; file < m_model.files.size(); ++file) {
            readFile(file);
        }
        for (std::size_t thing = 0; thing < m_model.things.size(); ++thing) {
            followExtends(thing);
        }
        for (bool const isView : {false, true}) {
            for (std::size_t thing = 0; thing < m_model.things.size(); ++thing) {
                if (m_model.things[thing].isView == isView) {
                    readThing(thing);
                }
            }
        }
        CubeObjects objects(m_model, m_work);
        for (std::size_t thing = 0; thing < m_model.things.size(); ++thing) {
            enter(thing);
            objects.make(thing, m_entries[thing]);
        }
        objects.makeJoins();
        for (std::size_t thing = 0; thing < m_model.things.size(); ++thing) {
            enter(thing);
            readPolicies(thing);
            m_entries[thing].leaveOutRest(unmappedCubeKeys(), m_model.things[thing].name);
        }
        m_work.enterFile("");
        if (m_model.things.empty()) {
            m_work.refuse("the source has no cubes and no views; give a file or folder of a "
                          "project with some");
        }
        makeCubeRoles(m_model, m_policies, m_work);
    }

private:
    void enter(std::size_t thing) {
        m_work.enterFile(m_model.files[m_model.things[thing].chain.front().first].name);
    }

    void addSpace() {
        m_work.enterFile("");
        ModelDraft& draft = m_work.draft.model;
        draft.setDefaultLocale(I18NLocale(I18NString::fromUtf8(m_work.request.language)));
        m_model.spaceName = m_work.request.name;
        m_model.space = draft.add(ModelDraft::Root, "namespace", {"model", "model"});
        draft.set(m_model.space, "name", m_model.spaceName);
    }

    void readFile(std::size_t number) {
        m_work.enterFile(m_model.files[number].name);
        SourceTree const& tree = m_model.files[number].tree;
        if (tree.isEmpty() || tree.kind(0) == SourceTree::Kind::Nothing) {
            m_work.account.leftOut("file", "it holds nothing", {m_model.files[number].name});
            return;
        }
        m_work.account.mapped("file");
        SourceEntries file(tree, 0, "file", m_work);
        refuseCubeTemplate(file, "cubes", m_work);
        refuseCubeTemplate(file, "views", m_work);
        for (SourceTree::Value const each : file.list("cubes")) {
            addThing(number, each, false);
        }
        for (SourceTree::Value const each : file.list("views")) {
            addThing(number, each, true);
        }
        file.leaveOutRest(unmappedCubeKeys(), m_model.files[number].name);
    }

    void addThing(std::size_t file, SourceTree::Value value, bool isView) {
        SourceTree const& tree = m_model.files[file].tree;
        m_entries.emplace_back(tree, value, isView ? "view" : "cube", m_work);
        SourceEntries& entries = m_entries.back();
        refuseCubeTemplate(entries, "name", m_work);
        CubeThing thing{.name = entries.name(), .isView = isView};
        m_work.account.mapped(entries.kind());
        thing.chain.emplace_back(file, value);
        if (!m_model.thingOfName.emplace(thing.name, m_model.things.size()).second) {
            m_work.refuse("there is a second cube or view " + quotedText(thing.name) +
                              "; rename one of the two",
                          entries.position());
        }
        m_model.things.push_back(std::move(thing));
    }

    /// What the thing extends, what that extends, and so on.
    void followExtends(std::size_t number) {
        enter(number);
        CubeThing& thing = m_model.things[number];
        m_entries[number].text("extends");
        for (;;) {
            auto const [file, value] = thing.chain.back();
            SourceTree const& tree = m_model.files[file].tree;
            SourceTree::Value const said = tree.find(value, "extends");
            if (said == SourceTree::None) {
                return;
            }
            std::string name(tree.textOf(said));
            std::erase_if(name, [](char unit) { return unit == '{' || unit == '}'; });
            std::size_t const other = m_model.findThing(trimmed(name));
            if (other == CubePart::None) {
                thing.isComplete = false;
                m_work.account.note(quotedText(thing.name) + " extends " + quotedText(name) +
                                        ", which the source lacks: what it inherits is missing",
                                    tree.positionOf(said));
                return;
            }
            if (thing.chain.size() >= longestChain) {
                m_work.refuse(quotedText(thing.name) + " extends itself, or more than " +
                                  std::to_string(longestChain) + " others one after the other",
                              m_entries[number].position());
            }
            thing.chain.push_back(m_model.things[other].chain.front());
        }
    }

    void readThing(std::size_t number) {
        enter(number);
        auto const chain = m_model.things[number].chain;
        bool saysPublic = false;
        for (std::size_t place = 0; place < chain.size(); ++place) {
            auto const [file, value] = chain[place];
            if (place > 0) {
                m_work.countMade(valuesIn(m_model.files[file].tree, value), 0,
                                 m_entries[number].position());
            }
            SourceEntries inherited(m_model.files[file].tree, value, m_entries[number].kind(),
                                    m_work);
            inherited.tellNothing();
            SourceEntries& entries = place == 0 ? m_entries[number] : inherited;
            bool const says =
                entries.has("public") || entries.has("shown") || entries.has("visible");
            if (says && !saysPublic) {
                m_model.things[number].isPublic = isPublicInCubes(entries, m_work);
                saysPublic = true;
            }
            m_members.read(number, entries, place > 0);
            readCubesOfView(number, entries, place > 0, m_model, m_members, m_work);
        }
    }

    /// Its own, else those of the next thing that it extends. What may inherit policies that
    /// nobody has is open to nobody.
    void readPolicies(std::size_t number) {
        auto const& chain = m_model.things[number].chain;
        for (std::size_t place = 0; place < chain.size(); ++place) {
            auto const [file, value] = chain[place];
            SourceEntries inherited(m_model.files[file].tree, value, m_entries[number].kind(),
                                    m_work);
            inherited.tellNothing();
            if (m_policies.read(number, place == 0 ? m_entries[number] : inherited)) {
                return;
            }
        }
        bool const mayInheritMore = m_model.files[chain.back().first].tree.find(
                                        chain.back().second, "extends") != SourceTree::None;
        if (mayInheritMore) {
            m_work.account.note("nobody is granted anything in " +
                                    quotedText(m_model.things[number].name) +
                                    ": its policies may stand in what it extends",
                                m_entries[number].position());
            m_policies.close();
        } else {
            m_policies.open(number);
        }
    }

    ImportWork& m_work;
    CubeModel m_model;
    CubeMembers m_members;
    CubePolicies m_policies;
    std::deque<SourceEntries> m_entries; // of things, by their numbers
};

} // namespace

void importCube(ImportWork& work) {
    importCubeTexts(readCubeFiles(work), work);
}

void importCubeTexts(std::vector<std::pair<std::string, std::string>> const& files,
                     ImportWork& work) {
    ProjectReader(work).read(files);
}

} // namespace vex
