#include "host/import/tabular/UnmappedKeys.h"

namespace vex {

namespace {

constexpr char const* engine = "it tells the engine how to work, not what the model means";
constexpr char const* notes = "notes of tools for themselves";
constexpr char const* source = tabularReasons::DataSource;
constexpr char const* display = "it tells how to draw values, beyond their format";
constexpr char const* perspective =
    "a perspective is a choice for comfort, no security; views are for security";
constexpr char const* sorting = "nothing in a model says how values are sorted";

// Without a kind: of all things.
constexpr UnmappedKey table[] = {
    {"", "annotations", notes, "annotation"},
    {"", "extendedProperties", notes, "extended property"},
    {"", "changedProperties", notes},
    {"", "modifiedTime", engine},
    {"", "structureModifiedTime", engine},
    {"", "refreshedTime", engine},
    {"", "state", engine},
    {"", "errorMessage", engine},
    {"", "sourceLineageTag", source},
    {"database", "compatibilityLevel", engine},
    {"database", "compatibilityMode", engine},
    {"database", "id", engine},
    {"database", "description", "the description of the model inside it counts"},
    {"model", "perspectives", perspective, "perspective"},
    {"model", "dataSources", source, "data source"},
    {"model", "expressions", source, "shared expression"},
    {"model", "queryGroups", source, "query group"},
    {"model", "bindingInfoCollection", source, "binding"},
    {"model", "sourceQueryCulture", source},
    {"model", "defaultMode", engine},
    {"model", "defaultDataView", engine},
    {"model", "directLakeBehavior", engine},
    {"model", "collation", engine},
    {"model", "storageLocation", engine},
    {"model", "dataAccessOptions", engine},
    {"model", "forceUniqueNames", engine},
    {"model", "disableAutoExists", engine},
    {"model", "maxParallelismPerQuery", engine},
    {"model", "maxParallelismPerRefresh", engine},
    {"model", "discourageReportMeasures", display},
    {"model", "defaultMeasure", display},
    {"table", "isPrivate", display},
    {"table", "showAsVariationsOnly", display},
    {"table", "alternateSourcePrecedence", engine},
    {"table", "excludeFromModelRefresh", engine},
    {"table", "excludeFromAutomaticAggregations", engine},
    {"table", "systemManaged", engine},
    {"table", "refreshPolicy", engine},
    {"table", "defaultDetailRowsDefinition", "it is a query for details, no object"},
    {"table", "sets", "nothing in a model stands for a set", "set"},
    {"column", "sourceColumn", source},
    {"column", "sourceProviderType", source},
    {"column", "columnOriginTable", source},
    {"column", "columnOriginColumn", source},
    {"column", "sortByColumn", sorting},
    {"column", "isUnique", engine},
    {"column", "isNullable", engine},
    {"column", "keepUniqueRows", engine},
    {"column", "encodingHint", engine},
    {"column", "isAvailableInMdx", engine},
    {"column", "isDataTypeInferred", engine},
    {"column", "isNameInferred", engine},
    {"column", "evaluationBehavior", engine},
    {"column", "alignment", display},
    {"column", "displayOrdinal", display},
    {"column", "tableDetailPosition", display},
    {"column", "isDefaultLabel", display},
    {"column", "isDefaultImage", display},
    {"column", "variations", "a second way to a hierarchy would not be secured", "variation"},
    {"column", "alternateOf", engine},
    {"column", "relatedColumnDetails", engine},
    {"column", "attributeHierarchy", engine},
    {"measure", "kpi", "nothing in a model stands for a target and its state"},
    {"measure", "formatStringDefinition", display},
    {"measure", "detailRowsDefinition", "it is a query for details, no object"},
    {"measure", "isSimpleMeasure", engine},
    {"hierarchy", "hideMembers", display},
    {"relationship", "name", "it is named after what it joins"},
    {"relationship", "type", engine},
    {"relationship", "crossFilteringBehavior", engine},
    {"relationship", "securityFilteringBehavior", engine},
    {"relationship", "joinOnDateBehavior", engine},
    {"relationship", "relyOnReferentialIntegrity", engine},
    {"culture", "linguisticMetadata", "words for questions in natural language"},
    {"culture", "contentType", "words for questions in natural language"},
    {"member", "identityProvider", "a catalogue knows its users by their names"},
    {"member", "memberId", "a catalogue knows its users by their names"},
    {"translated model", "perspectives", perspective, "translated perspective"},
    {"function", "description", "functions are no objects of a model"},
    {"function", "isHidden", "functions are no objects of a model"},
    {"function", "lineageTag", "functions are no objects of a model"},
};

} // namespace

std::span<UnmappedKey const> unmappedTabularKeys() {
    return table;
}

} // namespace vex
