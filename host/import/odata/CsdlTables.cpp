#include "host/import/odata/CsdlTables.h"

namespace vex {

namespace {

constexpr char const* engine = "it tells a service how to work, not what the data means";
constexpr char const* vocabulary = "a term is a word of a vocabulary, no object of a model";

constexpr CsdlAttribute attributes[] = {
    {"Property", "MaxLength", "maxLength"},
    {"Property", "Precision", "precision"},
    {"Property", "Scale", "scale"},
    {"Property", "Unicode", "unicode"},
    {"Property", "SRID", "srid"},
    {"Property", "DefaultValue", "defaultValue"},
    {"TypeDefinition", "MaxLength", "maxLength"},
    {"TypeDefinition", "Precision", "precision"},
    {"TypeDefinition", "Scale", "scale"},
    {"TypeDefinition", "Unicode", "unicode"},
    {"TypeDefinition", "SRID", "srid"},
    {"EntityType", "Abstract", "isAbstract"},
    {"EntityType", "OpenType", "isOpen"},
    {"EntityType", "HasStream", "hasStream"},
    {"ComplexType", "Abstract", "isAbstract"},
    {"ComplexType", "OpenType", "isOpen"},
    {"EnumType", "UnderlyingType", "underlyingType"},
    {"EnumType", "IsFlags", "isFlags"},
    {"Member", "Value", "value"},
    {"NavigationProperty", "ContainsTarget", "containsTarget"},
    {"EntitySet", "IncludeInServiceDocument", "isInServiceDocument"},
    {"EntityContainer", "Extends", nullptr,
     "the sets of the container that it extends stand there"},
    {"PropertyRef", "Alias", nullptr, "a key is known by its property"},
};

constexpr CsdlOmission omissions[] = {
    {"Action", csdlReasons::Operation},
    {"Function", csdlReasons::Operation},
    {"ActionImport", csdlReasons::Operation},
    {"FunctionImport", csdlReasons::Operation},
    {"Term", vocabulary},
    {"OnDelete", engine},
};

// Vocabularies by the names that they are published under.
constexpr std::string_view core = "Org.OData.Core.V1";
constexpr std::string_view capabilities = "Org.OData.Capabilities.V1";
constexpr std::string_view measures = "Org.OData.Measures.V1";
constexpr std::string_view common = "com.sap.vocabularies.Common.v1";
constexpr std::string_view analytics = "com.sap.vocabularies.Analytics.v1";
constexpr std::string_view ui = "com.sap.vocabularies.UI.v1";

constexpr CsdlTerm terms[] = {
    {core, "Description", "", "description"},
    {core, "LongDescription", "", "screenTip"},
    {common, "QuickInfo", "", "screenTip"},
    {common, "Label", "", "label"},
    {core, "Permissions", "", "permissions"},
    {core, "Computed", "", "isComputed", "true"},
    {core, "ComputedDefaultValue", "", "hasComputedDefault", "true"},
    {core, "Immutable", "", "isImmutable", "true"},
    {core, "IsLanguageDependent", "", "isLanguageDependent", "true"},
    {core, "IsURL", "", "isUrl", "true"},
    {core, "MediaType", "", "mediaType"},
    {measures, "ISOCurrency", "", "currency"},
    {measures, "Unit", "", "unit"},
    {analytics, "Measure", "", "usage", "true", "fact"},
    {ui, "Hidden", "", "isHidden", "true"},
    {capabilities, "TopSupported", "", "topSupported", "true"},
    {capabilities, "SkipSupported", "", "skipSupported", "true"},
    {capabilities, "ReadRestrictions", "Readable", "readable"},
    {capabilities, "InsertRestrictions", "Insertable", "insertable"},
    {capabilities, "UpdateRestrictions", "Updatable", "updatable"},
    {capabilities, "DeleteRestrictions", "Deletable", "deletable"},
    {capabilities, "SearchRestrictions", "Searchable", "searchable"},
    {capabilities, "FilterRestrictions", "Filterable", "filterable"},
    {capabilities, "SortRestrictions", "Sortable", "sortable"},
    {capabilities, "CountRestrictions", "Countable", "countable"},
    {capabilities, "ExpandRestrictions", "Expandable", "expandable"},
    {capabilities, "SelectSupport", "Supported", "selectSupported"},
    {capabilities, "ChangeTracking", "Supported", "changeTracking"},
};

} // namespace

std::span<CsdlAttribute const> csdlAttributes() {
    return attributes;
}

std::span<CsdlOmission const> csdlOmissions() {
    return omissions;
}

std::span<CsdlTerm const> csdlTerms() {
    return terms;
}

} // namespace vex
