#pragma once

#include "host/import/cube/CubeModel.h"

#include <cstddef>
#include <vector>

namespace vex {

class ImportWork;

/// What else is hidden when members are: what names a hidden one in its SQL, and so on. A
/// member of a view is hidden when the SQL of what it stands for names, directly or through
/// others, what a hidden member of the same view stands for: of a view its own policies tell
/// alone. What a template makes of SQL nobody knows, so it may name anything.
class CubeSpread {
public:
    CubeSpread(CubeModel const& model, ImportWork& work);

    /// Hides more parts, by their numbers. The steps are spent from the limit of views.
    void spread(std::vector<bool>& isHidden) const;

private:
    void readCubes();
    void readView(CubeThing const& view);
    void follow(std::vector<std::string> const& name, std::size_t part);

    CubeModel const& m_model;
    ImportWork& m_work;
    std::vector<std::vector<std::size_t>> m_reads; // of each part: those that it names
    std::vector<std::vector<std::size_t>> m_readers;
    std::vector<bool> m_isOpaque;
};

} // namespace vex
