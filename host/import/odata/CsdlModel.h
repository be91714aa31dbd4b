#pragma once

#include "host/import/draft/ModelDraft.h"
#include "host/store/image/DocumentPosition.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vex {

/// What a service description says of something, as properties of an object; each once.
struct CsdlSaid {
    struct Value {
        std::string property;
        std::string value;
    };
    std::vector<Value> values{};

    std::string const* find(std::string_view property) const;
    /// False, and nothing is changed, when it is said already.
    bool say(std::string_view property, std::string value);
};

struct CsdlProperty {
    std::string name;
    std::string type; // qualified
    bool isCollection = false;
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlConstraint {
    std::string property;
    std::string referenced;
    DocumentPosition position{};
};

struct CsdlNavigation {
    std::string name;
    std::string type; // qualified
    bool isCollection = false;
    bool isNullable = true;
    std::string partner{};
    std::vector<CsdlConstraint> constraints{};
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlMember {
    std::string name;
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlType {
    enum class Kind { Entity, Complex, Enumeration, Definition };
    static constexpr std::size_t None = DraftObject::None;

    Kind kind;
    std::size_t schema;
    std::string name;
    std::string base{}; // qualified; of a definition what it stands for
    std::size_t baseType = None;
    std::vector<std::string> keys{};
    std::vector<CsdlProperty> properties{};
    std::vector<CsdlNavigation> navigations{};
    std::vector<CsdlMember> members{};
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlBinding {
    std::string path;
    std::string target;
    DocumentPosition position{};
};

/// An entity set or a singleton.
struct CsdlSet {
    std::size_t container;
    std::string name;
    std::string type; // qualified
    bool isSingleton = false;
    std::vector<CsdlBinding> bindings{};
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlContainer {
    std::size_t schema;
    std::string name;
    CsdlSaid said{};
    DocumentPosition position{};
};

struct CsdlSchema {
    std::string name;
    CsdlSaid said{};
    DocumentPosition position{};
};

/// A service description as it is told, in the order of the document.
struct CsdlModel {
    std::vector<CsdlSchema> schemas;
    std::vector<CsdlType> types;
    std::vector<CsdlContainer> containers;
    std::vector<CsdlSet> sets;
    std::map<std::string, std::size_t, std::less<>> typeOfName; // qualified

    /// `None` for a type that does not stand in the document.
    std::size_t findType(std::string_view qualified) const;
    std::string qualifiedName(CsdlType const& type) const;
};

} // namespace vex
