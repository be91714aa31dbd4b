#include "host/import/ossie/OssieKeys.h"

namespace vex {

namespace {

constexpr char const* ontology = "concepts are above the data; a model holds what they map to";

// Without a kind: of all things.
constexpr UnmappedKey table[] = {
    {"document", "name", ontology},
    {"document", "description", ontology},
    {"document", "requires", ontology, "rule"},
    {"document", "ontology", ontology, "concept"},
    {"ontology mapping", "concept_mappings", ontology, "concept mapping"},
    {"ontology mapping", "name", ontology},
    {"ontology mapping", "description", ontology},
    {"ontology mapping", "ontology", ontology},
};

} // namespace

std::span<UnmappedKey const> unmappedOssieKeys() {
    return table;
}

} // namespace vex
