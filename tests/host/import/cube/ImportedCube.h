#pragma once

#include "host/import/cube/CubeImport.h"
#include "tests/host/import/ImportedSource.h"

#include <string>
#include <utility>
#include <vector>

/// A project of cubes, imported from texts; a single one is the file "m.yml".
class ImportedCube : public ImportedSource {
public:
    explicit ImportedCube(std::string const& yaml, vex::ImportLimits const& limits = {})
        : ImportedCube({{"m.yml", yaml}}, limits) {}

    explicit ImportedCube(std::vector<std::pair<std::string, std::string>> const& files,
                          vex::ImportLimits const& limits = {}) {
        import({.source = "m.yml", .name = "m", .limits = limits},
               [&](vex::ImportWork& work) { vex::importCubeTexts(files, work);
    });
}

/// A cube "c" with these lines, each indented as in a cube.
static ImportedCube
of(std::string const& lines) {
    return ImportedCube("cubes:\n- name: c\n" + lines);
}
}
;
