#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

namespace vex {

/// The namespaces that a service description knows: its own schemas', and what it includes
/// of other documents. Names may be written with an alias for the namespace.
class CsdlNames {
public:
    /// False when the name stands for another namespace already.
    bool addAlias(std::string_view alias, std::string_view space);
    void include(std::string_view space) { m_included.emplace(space); }

    /// With the namespace in the place of an alias: "Core.Description" is
    /// "Org.OData.Core.V1.Description".
    std::string qualified(std::string_view name) const;
    /// The same for a target of annotations, "Self.Product/Name".
    std::string qualifiedPath(std::string_view path) const;
    /// True when the name is of a document that this one includes.
    bool isOfOther(std::string_view qualified) const;

private:
    std::map<std::string, std::string, std::less<>> m_spaceOfAlias;
    std::set<std::string, std::less<>> m_included;
};

/// A type as it is written: "Collection(Edm.String)".
struct CsdlTypeText {
    std::string_view name;
    bool isCollection;
};
CsdlTypeText csdlTypeText(std::string_view written);

/// A primitive type and the datatype of models for its values.
struct CsdlDatatype {
    std::string_view primitive;
    char const* name;
    bool isSame; // else it says less than the type
};
/// Null for what is no primitive type that a datatype stands for.
CsdlDatatype const* findDatatype(std::string_view qualified);

} // namespace vex
