#pragma once

#include "host/import/cube/CubeModel.h"
#include "host/import/draft/SourceEntries.h"

#include <cstddef>
#include <string_view>

namespace vex {

/// Reads what stands in cubes: members, hierarchies and joins, with those that a cube inherits.
/// Makes parts of them; objects are made later, when folders are known.
class CubeMembers {
public:
    CubeMembers(CubeModel& model, ImportWork& work) : m_model(model), m_work(work) {}

    /// Of one thing: `entries` are its own, or those of what it extends.
    void read(std::size_t thing, SourceEntries& entries, bool isInherited);

    /// The number of a new part of its owner; what it takes is counted, since cubes and views
    /// may multiply what others have. Refuses a second part of one name.
    std::size_t add(CubePart part);

private:
    void readMember(std::size_t thing, SourceEntries& member, CubePartKind kind, bool isInherited);
    void copyType(SourceEntries& member, CubePart& part);
    void copySql(SourceEntries& member, CubePart& part);
    std::string casesOf(SourceEntries& member, CubePart& part);
    std::string filtersOf(SourceEntries& measure, CubePart& part);
    std::string placesOf(SourceEntries& dimension, CubePart& part);

    CubeModel& m_model;
    ImportWork& m_work;
};

/// What any thing of a cube may say, for the properties of the object that stands for it.
/// @{

/// A text of the key, which the property is called after unless another name is given.
void copyCubeText(SourceEntries& thing, CubePart& into, std::string_view key,
                  std::string_view property = {});

/// `meta` as properties "meta.KEY".
void copyCubeMeta(SourceEntries& thing, CubePart& into, ImportWork& work);

/// Refuses a thing whose key holds a template, which nothing could be made of.
void refuseCubeTemplate(SourceEntries const& thing, std::string_view key, ImportWork& work);

/// False for what nobody may ask for. What is no truth value is taken for that, with a note.
bool isPublicInCubes(SourceEntries& thing, ImportWork& work);
/// @}

} // namespace vex
