#include "host/import/cube/CubeKeys.h"

namespace vex {

namespace {

constexpr char const* engine = "it tells the engine how to work, not what the model means";
constexpr char const* source = "it says where the data comes from";
constexpr char const* display = "it tells how to draw values, beyond their format";
constexpr char const* sorting = "nothing in a model says how values are sorted";
constexpr char const* details = "it is a way to details, no object";
constexpr char const* timing = "nothing in a model stands for windows and shifts of time";

// Without a kind: of all things.
constexpr UnmappedKey table[] = {
    {"cube", "sql", source},
    {"cube", "sql_table", source},
    {"cube", "sql_alias", source},
    {"cube", "data_source", source},
    {"cube", "refresh_key", engine},
    {"cube", "rewrite_queries", engine},
    {"cube", "calendar", engine},
    {"cube", "pre_aggregations", engine, "pre-aggregation"},
    {"cube", "context_members", engine},
    {"view", "includes", "an older form: name the members in cubes", "older include"},
    {"view", "excludes", "an older form: name the members in cubes", "older exclude"},
    {"view", "refresh_key", engine},
    {"included cube", "split", display},
    {"dimension", "sub_query", engine},
    {"dimension", "propagate_filters_to_sub_query", engine},
    {"dimension", "suggest_filter_values", engine},
    {"dimension", "multi_stage", engine},
    {"dimension", "add_group_by", engine},
    {"dimension", "time_shift", timing},
    {"dimension", "granularities", timing, "granularity"},
    {"dimension", "field_type", display},
    {"dimension", "links", display},
    {"dimension", "key", engine},
    {"dimension", "order", sorting},
    {"dimension", "mask", cubeReasons::Masking},
    {"dimension", "aliases", "nothing in a model stands for a second name"},
    {"measure", "aliases", "nothing in a model stands for a second name"},
    {"measure", "rolling_window", timing},
    {"measure", "time_shift", timing},
    {"measure", "cumulative", timing},
    {"measure", "drill_members", details},
    {"measure", "drill_member_references", details},
    {"measure", "drill_filters", details},
    {"measure", "multi_stage", engine},
    {"measure", "group_by", engine},
    {"measure", "reduce_by", engine},
    {"measure", "add_group_by", engine},
    {"measure", "order_by", sorting},
    {"measure", "mask", cubeReasons::Masking},
    {"access policy", "row_level", cubeReasons::RowFilter},
    {"access policy", "member_masking", cubeReasons::Masking},
    {"access policy", "conditions", "it has none"},
    {"access policy", "description", "a view of a role has the role's name alone"},
    {"folder", "title", "a folder has its name"},
};

} // namespace

std::span<UnmappedKey const> unmappedCubeKeys() {
    return table;
}

} // namespace vex
