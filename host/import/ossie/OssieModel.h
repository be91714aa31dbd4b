#pragma once

#include "host/import/draft/SourceEntries.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vex {

struct OssieField {
    std::string name;
    std::size_t object;
    bool isKey = false;    // in a key of its dataset, or joined by a relationship
    bool isNumber = false; // of a type that is summed, and no dimension
};

struct OssieDataset {
    std::string name;
    std::size_t object;
    std::vector<OssieField> fields{};
    /// Fields by what a key or relationship may call them: their name, else the column that
    /// they are; in letters that compare.
    std::map<std::u16string, std::size_t> fieldOfColumn{};

    /// Null without one.
    OssieField* find(std::string const& column);
};

/// A semantic model whose things are read one after the other.
struct OssieModel {
    std::string name;
    std::size_t space; // its namespace in the draft
    std::vector<OssieDataset> datasets{};
    std::map<std::u16string, std::size_t> datasetOfName{};

    /// Null without one.
    OssieDataset* find(std::string const& dataset);

    /// "[Model].[dataset]", and of a thing in it.
    std::string pathTo(std::string_view name) const;
    std::string pathTo(std::string_view name, std::string_view inside) const;
};

/// Reads a semantic model into a namespace of the draft.
void readOssieModel(SourceTree const& tree, SourceTree::Value value, ImportWork& work);

/// Reads the relationships between datasets, once these were read.
void readOssieRelationships(SourceEntries& entries, OssieModel& model, ImportWork& work);

} // namespace vex
