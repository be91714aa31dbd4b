#include "host/import/odata/CsdlTypes.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlTables.h"

#include <optional>
#include <set>

namespace vex {

namespace {

struct TypeKind {
    std::string_view element;
    CsdlType::Kind kind;
};
constexpr TypeKind typeKinds[] = {
    {"EntityType", CsdlType::Kind::Entity},
    {"ComplexType", CsdlType::Kind::Complex},
    {"EnumType", CsdlType::Kind::Enumeration},
    {"TypeDefinition", CsdlType::Kind::Definition},
};

std::optional<CsdlType::Kind> kindOf(ElementTree const& tree, ElementTree::Element element) {
    for (TypeKind const& each : typeKinds) {
        if (isCsdl(tree, element, each.element)) {
            return each.kind;
        }
    }
    return std::nullopt;
}

bool isStructured(CsdlType const& type) {
    return type.kind == CsdlType::Kind::Entity || type.kind == CsdlType::Kind::Complex;
}

} // namespace

bool CsdlTypes::read(ElementTree const& tree, ElementTree::Element element, std::size_t schema) {
    auto const kind = kindOf(tree, element);
    if (!kind) {
        return false;
    }
    CsdlElement typed(tree, element, m_work);
    CsdlType type{.kind = *kind, .schema = schema, .name = typed.name()};
    type.position = typed.position();
    readBase(typed, type);
    typed.tellMapped();
    typed.say(type.said);
    for (ElementTree::Element const each : typed.inside()) {
        readInside(tree, each, typed, type);
    }
    typed.leaveOutRest(type.name);
    checkNames(type);
    if (!m_model.typeOfName.emplace(m_model.qualifiedName(type), m_model.types.size()).second) {
        typed.refuse("the schema has two types " + quotedName(type.name) +
                     "; rename one of the two");
    }
    m_model.types.push_back(std::move(type));
    return true;
}

void CsdlTypes::readBase(CsdlElement& element, CsdlType& type) {
    if (isStructured(type)) {
        if (auto const base = element.attribute("BaseType")) {
            type.base = m_names.qualified(*base);
            type.said.say("baseType", type.base);
        }
    } else if (type.kind == CsdlType::Kind::Definition) {
        type.base = m_names.qualified(element.required("UnderlyingType"));
    }
}

void CsdlTypes::readInside(ElementTree const& tree, ElementTree::Element element,
                           CsdlElement& around, CsdlType& type) {
    if (isCsdl(tree, element, "Annotation")) {
        m_annotations.read(element, type.said, type.name);
    } else if (isStructured(type) && isCsdl(tree, element, "Property")) {
        readProperty(tree, element, type);
    } else if (isStructured(type) && isCsdl(tree, element, "NavigationProperty")) {
        readNavigation(tree, element, type);
    } else if (type.kind == CsdlType::Kind::Entity && isCsdl(tree, element, "Key")) {
        readKey(tree, element, type);
    } else if (type.kind == CsdlType::Kind::Enumeration && isCsdl(tree, element, "Member")) {
        readMember(tree, element, type);
    } else {
        around.leaveOut(element, type.name);
    }
}

void CsdlTypes::annotate(CsdlElement const& around, ElementTree::Element inside, CsdlSaid& said,
                         std::string_view name) {
    if (isCsdl(around.tree(), inside, "Annotation")) {
        m_annotations.read(inside, said, name);
    } else {
        around.leaveOut(inside, name);
    }
}

void CsdlTypes::readKey(ElementTree const& tree, ElementTree::Element element, CsdlType& type) {
    CsdlElement key(tree, element, m_work);
    key.tellMapped();
    for (ElementTree::Element const each : key.inside()) {
        if (!isCsdl(tree, each, "PropertyRef")) {
            key.leaveOut(each, type.name);
            continue;
        }
        CsdlElement reference(tree, each, m_work);
        std::string const name = reference.name();
        if (name.find('/') == std::string::npos) {
            reference.tellMapped();
            type.keys.push_back(name);
        } else {
            reference.tellLeftOut("it is a part of a complex property, which is one item", name);
        }
        reference.leaveOutRest(type.name);
    }
    key.leaveOutRest(type.name);
}

void CsdlTypes::readProperty(ElementTree const& tree, ElementTree::Element element,
                             CsdlType& type) {
    CsdlElement read(tree, element, m_work);
    CsdlProperty property{.name = read.name(), .type = {}};
    auto const written = csdlTypeText(read.required("Type"));
    property.type = m_names.qualified(written.name);
    property.isCollection = written.isCollection;
    property.position = read.position();
    if (!read.isTrue("Nullable", true)) {
        property.said.say("nullable", "false");
    }
    read.tellMapped();
    read.say(property.said);
    for (ElementTree::Element const each : read.inside()) {
        annotate(read, each, property.said, property.name);
    }
    read.leaveOutRest(property.name);
    type.properties.push_back(std::move(property));
}

// What becomes of it is told when its end was found.
void CsdlTypes::readNavigation(ElementTree const& tree, ElementTree::Element element,
                               CsdlType& type) {
    CsdlElement read(tree, element, m_work);
    CsdlNavigation navigation{.name = read.name(), .type = {}};
    auto const written = csdlTypeText(read.required("Type"));
    navigation.type = m_names.qualified(written.name);
    navigation.isCollection = written.isCollection;
    navigation.position = read.position();
    navigation.isNullable = read.isTrue("Nullable", true);
    navigation.partner = read.attribute("Partner").value_or("");
    read.say(navigation.said);
    for (ElementTree::Element const each : read.inside()) {
        if (isCsdl(tree, each, "ReferentialConstraint")) {
            readConstraint(tree, each, navigation);
        } else {
            annotate(read, each, navigation.said, navigation.name);
        }
    }
    read.leaveOutRest(navigation.name);
    type.navigations.push_back(std::move(navigation));
}

void CsdlTypes::readConstraint(ElementTree const& tree, ElementTree::Element element,
                               CsdlNavigation& navigation) {
    CsdlElement read(tree, element, m_work);
    CsdlConstraint constraint{.property = std::string(read.required("Property")),
                              .referenced = std::string(read.required("ReferencedProperty"))};
    bool const isOfComplex = constraint.property.find('/') != std::string::npos ||
                             constraint.referenced.find('/') != std::string::npos;
    if (isOfComplex) {
        read.tellLeftOut("it joins a part of a complex property, which is one item",
                         navigation.name);
    } else { // told with the navigation
        constraint.position = read.position();
        navigation.constraints.push_back(std::move(constraint));
    }
    for (ElementTree::Element const each : read.inside()) {
        read.leaveOut(each, navigation.name);
    }
    read.leaveOutRest(navigation.name);
}

void CsdlTypes::readMember(ElementTree const& tree, ElementTree::Element element, CsdlType& type) {
    CsdlElement read(tree, element, m_work);
    CsdlMember member{.name = read.name()};
    member.position = read.position();
    read.tellMapped();
    read.say(member.said);
    for (ElementTree::Element const each : read.inside()) {
        annotate(read, each, member.said, member.name);
    }
    read.leaveOutRest(member.name);
    type.members.push_back(std::move(member));
}

void CsdlTypes::checkNames(CsdlType const& type) {
    std::set<std::string_view> names;
    auto const check = [&](auto const& parts) {
        for (auto const& part : parts) {
            if (!names.insert(part.name).second) {
                m_work.refuse("the type " + quotedName(type.name) + " has two parts " +
                                  quotedName(part.name) + "; rename one of the two",
                              part.position);
            }
        }
    };
    check(type.properties);
    check(type.navigations);
    check(type.members);
}

void CsdlTypes::findBases() {
    for (CsdlType& type : m_model.types) {
        if (!isStructured(type) || type.base.empty()) {
            continue;
        }
        type.baseType = m_model.findType(type.base);
        if (type.baseType != CsdlType::None) {
            if (m_model.types[type.baseType].kind != type.kind) {
                m_work.refuse("the type " + quotedName(type.name) + " derives from " +
                                  quotedName(type.base) + ", which is of another kind; correct one",
                              type.position);
            }
        } else if (m_names.isOfOther(type.base)) {
            m_work.account.note("the type \"" + type.name + "\" derives from \"" + type.base +
                                    "\" of another document; what it inherits there is missing",
                                type.position);
        } else {
            m_work.refuse("the type " + quotedName(type.name) + " derives from " +
                              quotedName(type.base) +
                              ", which the document lacks; add it, or include its namespace",
                          type.position);
        }
    }
    checkCircles();
}

void CsdlTypes::checkCircles() {
    std::vector<std::size_t> metFrom(m_model.types.size(), CsdlType::None);
    for (std::size_t start = 0; start < m_model.types.size(); ++start) {
        for (std::size_t each = start; each != CsdlType::None && metFrom[each] == CsdlType::None;
             each = m_model.types[each].baseType) {
            metFrom[each] = start;
            std::size_t const base = m_model.types[each].baseType;
            if (base != CsdlType::None && metFrom[base] == start) {
                m_work.refuse("the type " + quotedName(m_model.types[base].name) +
                                  " derives from itself; correct its base type",
                              m_model.types[base].position);
            }
        }
    }
}

} // namespace vex
