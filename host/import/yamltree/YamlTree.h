#pragma once

#include "host/import/draft/SourceTree.h"

#include <cstddef>
#include <string_view>

namespace vex {

class ImportWork;

/// Reads YAML: a document of mappings, sequences and texts. What an alias or a merge key
/// ("<<") stands for is there as if it were written, and counts against the limits as such. A
/// key that is a mapping or a sequence itself, such as an unquoted "{{ name }}" has, is the text
/// that it looks like. Refuses through the work what is no YAML, what has a key twice in one
/// mapping, and what is past the limits of depth, values and bytes; each where it stands.
SourceTree readYamlTree(std::string_view yaml, ImportWork& work);

/// What the texts of one source have used of its limits.
struct YamlUse {
    std::size_t values = 0;
    std::size_t bytes = 0;
};

/// The same for one of several texts, which share the limits.
SourceTree readYamlTree(std::string_view yaml, ImportWork& work, YamlUse& use);

/// True for what a template was to be replaced in before: a text with "{{" or "{%" in it, or
/// the mapping that an unquoted one is.
bool isTemplate(SourceTree const& tree, SourceTree::Value value);

/// True when the value or anything in it is a template.
bool holdsTemplate(SourceTree const& tree, SourceTree::Value value);

} // namespace vex
