#pragma once

#include "host/import/cube/CubeModel.h"
#include "host/import/draft/SourceEntries.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace vex {

/// Makes the objects of the draft for cubes and views whose parts were read.
class CubeObjects {
public:
    CubeObjects(CubeModel& model, ImportWork& work) : m_model(model), m_work(work) {}

    /// Of one thing, with its folders, members and hierarchies. `entries` are its own.
    void make(std::size_t thing, SourceEntries& entries);

    /// Relationships, once all things have objects.
    void makeJoins();

private:
    void readFolders(SourceTree const& tree, std::vector<SourceTree::Value> const& folders,
                     std::size_t container, std::string const& path);
    void readFolder(SourceTree const& tree, SourceTree::Value value, std::size_t container,
                    std::string path);
    void place(std::string const& member, std::size_t folder, DocumentPosition at);
    void placeAllOf(std::string const& cube, std::size_t folder, DocumentPosition at);
    void makePart(std::size_t part);
    void makeLevels(std::size_t hierarchy);
    void setProperties(std::size_t object, CubePart const& part);
    std::string pathTo(CubePart const& part) const;

    CubeModel& m_model;
    ImportWork& m_work;
    std::size_t m_thing = 0;                       // whose objects are made
    std::map<std::size_t, std::size_t> m_folderOf; // by part
    // Of these all parts have their folders: cubes, and the thing itself.
    std::set<std::size_t> m_placed;
};

} // namespace vex
