#include "host/import/odata/OdataSubjects.h"

#include "host/import/odata/CsdlElement.h"
#include "host/import/odata/CsdlTables.h"
#include "host/import/odata/OdataLabels.h"

#include <algorithm>
#include <set>

namespace vex {

namespace {

constexpr std::size_t mostInherited = 400'000'000; // bytes or so
constexpr std::size_t bytesOfObject = 300;
constexpr std::size_t bytesOfStep = 100;
constexpr std::string_view typeOfEnumerations = "Edm.String"; // answers hold names of members

/// The first of the wanted names that is free.
std::string freeName(std::set<std::string>& taken, std::vector<std::string> const& wanted) {
    for (std::string const& each : wanted) {
        if (taken.insert(each).second) {
            return each;
        }
    }
    for (std::size_t number = 2;; ++number) {
        std::string name = wanted.back() + ' ' + std::to_string(number);
        if (taken.insert(name).second) {
            return name;
        }
    }
}

} // namespace

void OdataSubjects::spend(std::size_t bytes, DocumentPosition at) {
    m_spent += bytes;
    if (m_spent > mostInherited) {
        m_work.refuse("what types inherit makes the model too large; import a service with fewer "
                      "types that derive from each other",
                      at);
    }
}

std::vector<CsdlType const*> OdataSubjects::lineOf(CsdlType const& type) {
    std::vector<CsdlType const*> line;
    for (CsdlType const* each = &type;; each = &m_model.types[each->baseType]) {
        spend(bytesOfStep, type.position);
        line.push_back(each);
        if (each->baseType == CsdlType::None) {
            std::reverse(line.begin(), line.end());
            return line;
        }
    }
}

std::vector<OdataSubjects::Space> OdataSubjects::findSpaces() {
    std::set<std::string> taken;
    std::vector<Space> spaces;
    for (CsdlSchema const& schema : m_model.schemas) {
        taken.insert(schema.name);
    }
    for (CsdlContainer const& container : m_model.containers) {
        std::string const& schema = m_model.schemas[container.schema].name;
        Space space{.name = freeName(taken, {container.name, schema + '.' + container.name}),
                    .path = {},
                    .said = &container.said,
                    .position = container.position};
        appendToPath(space.path, schema);
        appendToPath(space.path, container.name);
        spaces.push_back(std::move(space));
    }
    for (CsdlSchema const& schema : m_model.schemas) {
        Space space{
            .name = schema.name, .path = {}, .said = &schema.said, .position = schema.position};
        appendToPath(space.path, schema.name);
        spaces.push_back(std::move(space));
    }
    return spaces;
}

void OdataSubjects::findSets(std::vector<Space>& spaces) {
    std::vector<bool> isHeld(m_model.types.size());
    for (std::size_t number = 0; number < m_model.sets.size(); ++number) {
        CsdlSet const& set = m_model.sets[number];
        char const* const kind = set.isSingleton ? "Singleton" : "EntitySet";
        std::size_t const type = m_model.findType(set.type);
        if (type != CsdlType::None && m_model.types[type].kind == CsdlType::Kind::Entity) {
            m_work.account.mapped(kind);
            isHeld[type] = true;
            spaces[set.container].subjects.push_back(m_subjects.size());
            m_subjects.push_back({.type = type, .set = number});
        } else if (type == CsdlType::None && m_document.names.isOfOther(set.type)) {
            m_work.account.leftOut(kind, csdlReasons::OtherType, {set.name, set.position});
        } else {
            m_work.refuse("the set " + quotedName(set.name) + " is of the type " +
                              quotedName(set.type) +
                              ", and the document has no entity type of that name; correct it",
                          set.position);
        }
    }
    for (std::size_t number = 0; number < m_model.types.size(); ++number) {
        CsdlType const& type = m_model.types[number];
        Space& space = spaces[m_model.containers.size() + type.schema];
        if (type.kind == CsdlType::Kind::Enumeration) {
            space.enumerations.push_back(number);
        } else if (type.kind != CsdlType::Kind::Definition && !isHeld[number]) {
            space.subjects.push_back(m_subjects.size());
            m_subjects.push_back({.type = number});
        }
    }
}

void OdataSubjects::make() {
    std::vector<Space> spaces = findSpaces();
    findSets(spaces);
    std::set<std::string> taken;
    for (Space const& space : spaces) {
        taken.insert(space.name);
    }
    std::string const& name = m_work.request.name;
    std::size_t const service = draft().add(ModelDraft::Root, "namespace", {"service"});
    draft().set(service, "name", freeName(taken, {name, name + " service"}));
    for (Space const& space : spaces) {
        if (!space.subjects.empty() || !space.enumerations.empty() || !space.said->values.empty()) {
            makeSpace(space, service);
        }
    }
}

void OdataSubjects::makeSpace(Space const& space, std::size_t service) {
    std::size_t const object =
        draft().add(service, "namespace", {"namespace", space.path}, space.position);
    draft().set(object, "name", space.name);
    sayAll(object, *space.said);
    OdataLabels labels;
    for (std::size_t const number : space.subjects) {
        OdataSubject const& subject = m_subjects[number];
        CsdlType const& type = m_model.types[subject.type];
        if (subject.set == OdataSubject::None) {
            labels.add(type.name, type.said);
        } else {
            labels.add(m_model.sets[subject.set].name, m_model.sets[subject.set].said);
        }
    }
    for (std::size_t const number : space.enumerations) {
        labels.add(m_model.types[number].name, {});
    }
    std::vector<std::string> const names = std::move(labels).take();
    for (std::size_t place = 0; place < space.subjects.size(); ++place) {
        OdataSubject& subject = m_subjects[space.subjects[place]];
        subject.space = object;
        subject.path = space.path;
        subject.name = names[place];
        makeSubject(subject, space.name);
    }
    for (std::size_t const number : space.enumerations) {
        makeEnumeration(m_model.types[number], object);
    }
}

void OdataSubjects::makeSubject(OdataSubject& subject, std::string const& space) {
    CsdlType const& type = m_model.types[subject.type];
    bool const isSet = subject.set != OdataSubject::None;
    CsdlSet const* const set = isSet ? &m_model.sets[subject.set] : nullptr;
    std::string const& ownName = isSet ? set->name : type.name;
    DocumentPosition const position = isSet ? set->position : type.position;
    appendToPath(subject.path, ownName);
    appendToPath(subject.reference, space);
    appendToPath(subject.reference, subject.name);
    spend(bytesOfObject, position);
    subject.object = draft().add(subject.space, "querySubject",
                                 {isSet ? "set" : "type", subject.path}, position);
    draft().set(subject.object, "name", subject.name);
    if (subject.name != ownName) {
        draft().set(subject.object, "sourceName", ownName);
    }
    if (isSet) {
        draft().set(subject.object, "entityType", m_model.qualifiedName(type));
        draft().set(subject.object, "isSingleton", set->isSingleton ? "true" : "");
        sayAll(subject.object, set->said);
        sayAll(subject.object, type.said, &set->said);
    } else {
        draft().set(subject.object, "isComplex",
                    type.kind == CsdlType::Kind::Complex ? "true" : "");
        sayAll(subject.object, type.said);
    }
    makeItems(subject);
}

void OdataSubjects::makeItems(OdataSubject& subject) {
    CsdlType const& type = m_model.types[subject.type];
    std::vector<CsdlProperty const*> properties;
    std::map<std::string_view, std::size_t> places;
    std::map<std::string_view, std::size_t> placesOfNavigations;
    std::set<std::string_view> identifying;
    // What a type says again, more exactly, it says in the place of what it inherits.
    auto const put = [&](auto const& part, auto& list, auto& known) {
        spend(bytesOfStep, part.position);
        auto const [place, isNew] = known.emplace(part.name, list.size());
        if (isNew) {
            list.push_back(&part);
        } else {
            list[place->second] = &part;
        }
    };
    for (CsdlType const* const each : lineOf(type)) {
        identifying.insert(each->keys.begin(), each->keys.end());
        for (CsdlProperty const& property : each->properties) {
            put(property, properties, places);
        }
        for (CsdlNavigation const& navigation : each->navigations) {
            put(navigation, subject.navigations, placesOfNavigations);
            for (CsdlConstraint const& constraint : navigation.constraints) {
                spend(bytesOfStep, constraint.position);
                identifying.insert(constraint.property);
            }
        }
    }
    OdataLabels labels;
    for (CsdlProperty const* const property : properties) {
        labels.add(property->name, property->said);
    }
    std::vector<std::string> names = std::move(labels).take();
    for (std::size_t place = 0; place < properties.size(); ++place) {
        CsdlProperty const& property = *properties[place];
        subject.items.emplace(property.name, std::move(names[place]));
        makeItem(subject, property, identifying.contains(property.name));
    }
}

void OdataSubjects::makeItem(OdataSubject& subject, CsdlProperty const& property, bool identifies) {
    std::size_t const declared = m_model.findType(property.type);
    auto const isOfKind = [&](CsdlType::Kind kind) {
        return declared != CsdlType::None && m_model.types[declared].kind == kind;
    };
    bool const isDefined = isOfKind(CsdlType::Kind::Definition);
    bool const isEnumeration = isOfKind(CsdlType::Kind::Enumeration);
    CsdlType const* const definition = isDefined ? &m_model.types[declared] : nullptr;
    std::string path = subject.path;
    appendToPath(path, property.name);
    std::string const& name = subject.items[property.name];
    std::size_t const item =
        draft().add(subject.object, "queryItem", {"property", path}, property.position);
    spend(bytesOfObject + path.size() + name.size(), property.position);
    draft().set(item, "name", name);
    if (name != property.name) {
        draft().set(item, "sourceName", property.name);
    }
    CsdlDatatype const* const datatype =
        isEnumeration ? findDatatype(typeOfEnumerations)
                      : findDatatype(isDefined ? definition->base : property.type);
    draft().set(item, "datatype", datatype == nullptr ? "" : datatype->name);
    if (datatype == nullptr || !datatype->isSame || declared != CsdlType::None) {
        draft().set(item, "sourceType", property.type);
    }
    std::string const* const usage = property.said.find("usage");
    draft().set(item, "usage",
                identifies         ? "identifier"
                : usage == nullptr ? "attribute"
                                   : std::string_view(*usage));
    draft().set(item, "isCollection", property.isCollection ? "true" : "");
    sayAll(item, property.said);
    if (isDefined) {
        sayAll(item, definition->said, &property.said);
    }
}

void OdataSubjects::makeEnumeration(CsdlType const& type, std::size_t space) {
    std::string path;
    appendToPath(path, m_model.schemas[type.schema].name);
    appendToPath(path, type.name);
    std::size_t const object = draft().add(space, "enumeration", {"type", path}, type.position);
    draft().set(object, "name", type.name);
    sayAll(object, type.said);
    for (CsdlMember const& member : type.members) {
        std::string ofMember = path;
        appendToPath(ofMember, member.name);
        std::size_t const inside =
            draft().add(object, "enumerationMember", {"member", ofMember}, member.position);
        draft().set(inside, "name", member.name);
        sayAll(inside, member.said);
    }
}

void OdataSubjects::sayAll(std::size_t object, CsdlSaid const& said, CsdlSaid const* less) {
    for (auto const& [property, value] : said.values) {
        bool const isUsage = property == "usage"; // keys count, too
        if (!isUsage && (less == nullptr || less->find(property) == nullptr)) {
            spend(property.size() + value.size(), draft()[object].position);
            draft().set(object, property, value);
        }
    }
}

} // namespace vex
