#include "host/import/odata/CsdlDocument.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlAnnotations.h"
#include "host/import/odata/CsdlElement.h"
#include "host/import/odata/CsdlTables.h"
#include "host/import/odata/CsdlTypes.h"

#include <set>
#include <vector>

namespace vex {

namespace {

bool isEdmx(ElementTree const& tree, ElementTree::Element element, std::string_view name) {
    return tree.nameOf(element) == name && tree.spaceOf(element) == edmxSpace;
}

class DocumentReader {
public:
    DocumentReader(ElementTree const& tree, ImportWork& work)
        : m_tree(tree), m_work(work), m_annotations(tree, m_document.names, work),
          m_types(m_document.model, m_document.names, m_annotations, work) {}

    CsdlDocument read() && {
        CsdlElement edmx(m_tree, ElementTree::Root, m_work);
        checkVersion(edmx);
        std::vector<ElementTree::Element> const inside = edmx.inside();
        std::vector<ElementTree::Element> schemas;
        for (ElementTree::Element const each : inside) { // names hold before they are declared
            if (isEdmx(m_tree, each, "Reference")) {
                readReference(each);
            } else if (isEdmx(m_tree, each, "DataServices")) {
                addSchemas(each, schemas);
            } else {
                edmx.leaveOut(each, "");
            }
        }
        if (schemas.empty()) {
            edmx.refuse("the document has no schema; it should hold Edmx, DataServices and "
                        "Schema inside each other");
        }
        edmx.leaveOutRest("");
        for (std::size_t number = 0; number < schemas.size(); ++number) {
            readSchema(schemas[number], number);
        }
        m_types.findBases();
        m_annotations.readTargets(m_targets, m_document.model, m_omitted);
        return std::move(m_document);
    }

private:
    CsdlModel& model() { return m_document.model; }

    void checkVersion(CsdlElement& edmx) {
        if (!isEdmx(m_tree, ElementTree::Root, "Edmx")) {
            edmx.refuse("this is no service description of OData version 4: the document "
                        "element is not Edmx in the namespace " +
                        std::string(edmxSpace) + "; ask the service for its $metadata in XML");
        }
        std::string_view const version = edmx.required("Version");
        if (!version.starts_with("4.")) {
            edmx.refuse("the document is of version " + quotedName(version) +
                        "; only versions 4.0 and 4.01 can be imported");
        }
    }

    void addAlias(CsdlElement& element, std::string_view space) {
        auto const alias = element.attribute("Alias");
        if (alias && !m_document.names.addAlias(*alias, space)) {
            element.refuse("the alias " + quotedName(*alias) +
                           " stands for another namespace already; rename one of the two");
        }
    }

    void readReference(ElementTree::Element element) {
        CsdlElement reference(m_tree, element, m_work);
        std::string_view const uri = m_tree.find(element, "Uri").value_or("");
        reference.tellLeftOut(csdlReasons::OtherDocument, std::string(uri));
        for (ElementTree::Element const each : reference.inside()) {
            if (!isEdmx(m_tree, each, "Include")) {
                continue; // left out with the reference
            }
            CsdlElement include(m_tree, each, m_work);
            std::string const space = include.name("Namespace");
            include.tellMapped();
            m_document.names.include(space);
            addAlias(include, space);
            include.leaveOutRest(space);
        }
    }

    void addSchemas(ElementTree::Element element, std::vector<ElementTree::Element>& schemas) {
        CsdlElement services(m_tree, element, m_work);
        for (ElementTree::Element const each : services.inside()) {
            if (!isCsdl(m_tree, each, "Schema")) {
                services.leaveOut(each, "");
                continue;
            }
            CsdlElement schema(m_tree, each, m_work);
            std::string name = schema.name("Namespace");
            schema.tellMapped();
            if (!m_spaces.insert(name).second) {
                schema.refuse("two schemas have the namespace " + quotedName(name) +
                              "; rename one of the two");
            }
            addAlias(schema, name);
            schema.leaveOutRest(name);
            model().schemas.push_back({.name = std::move(name), .position = schema.position()});
            schemas.push_back(each);
        }
        services.leaveOutRest("");
    }

    void readSchema(ElementTree::Element element, std::size_t number) {
        CsdlElement schema(m_tree, element, m_work);
        std::string const& name = model().schemas[number].name;
        for (ElementTree::Element const each : schema.inside()) {
            if (m_types.read(m_tree, each, number)) {
                continue;
            }
            if (isCsdl(m_tree, each, "EntityContainer")) {
                readContainer(each, number);
            } else if (isCsdl(m_tree, each, "Annotations")) {
                m_targets.push_back(each);
            } else if (isCsdl(m_tree, each, "Annotation")) {
                m_annotations.read(each, model().schemas[number].said, name);
            } else {
                schema.leaveOut(each, name);
                if (auto const omitted = m_tree.find(each, "Name")) {
                    m_omitted.insert(name + '.' + std::string(*omitted));
                }
            }
        }
    }

    void readContainer(ElementTree::Element element, std::size_t schema) {
        CsdlElement read(m_tree, element, m_work);
        CsdlContainer container{.schema = schema, .name = read.name()};
        container.position = read.position();
        read.tellMapped();
        std::string const qualified = model().schemas[schema].name + '.' + container.name;
        if (!m_containers.insert(qualified).second) {
            read.refuse("two containers are called " + quotedName(qualified) +
                        "; rename one of the two");
        }
        std::size_t const number = model().containers.size();
        std::set<std::string> names;
        for (ElementTree::Element const each : read.inside()) {
            if (isCsdl(m_tree, each, "EntitySet") || isCsdl(m_tree, each, "Singleton")) {
                readSet(each, number);
                if (!names.insert(model().sets.back().name).second) {
                    m_work.refuse("the container has two sets " +
                                      quotedName(model().sets.back().name) +
                                      "; rename one of the two",
                                  m_tree.positionOf(each));
                }
            } else if (isCsdl(m_tree, each, "Annotation")) {
                m_annotations.read(each, container.said, container.name);
            } else {
                read.leaveOut(each, container.name);
                if (auto const omitted = m_tree.find(each, "Name")) {
                    m_omitted.insert(qualified + '/' + std::string(*omitted));
                }
            }
        }
        read.leaveOutRest(container.name);
        model().containers.push_back(std::move(container));
    }

    // What becomes of it is told when its type was found.
    void readSet(ElementTree::Element element, std::size_t container) {
        CsdlElement read(m_tree, element, m_work);
        CsdlSet set{.container = container, .name = read.name(), .type = {}};
        set.isSingleton = read.kind() == "Singleton";
        set.type =
            m_document.names.qualified(read.required(set.isSingleton ? "Type" : "EntityType"));
        set.position = read.position();
        read.say(set.said);
        for (ElementTree::Element const each : read.inside()) {
            if (isCsdl(m_tree, each, "NavigationPropertyBinding")) {
                CsdlElement binding(m_tree, each, m_work);
                set.bindings.push_back({std::string(binding.required("Path")),
                                        std::string(binding.required("Target")),
                                        binding.position()});
                binding.leaveOutRest(set.name);
            } else if (isCsdl(m_tree, each, "Annotation")) {
                m_annotations.read(each, set.said, set.name);
            } else {
                read.leaveOut(each, set.name);
            }
        }
        read.leaveOutRest(set.name);
        model().sets.push_back(std::move(set));
    }

    ElementTree const& m_tree;
    ImportWork& m_work;
    CsdlDocument m_document;
    CsdlAnnotations m_annotations;
    CsdlTypes m_types;
    std::set<std::string> m_spaces;     // of schemas
    std::set<std::string> m_containers; // qualified
    std::set<std::string, std::less<>> m_omitted;
    std::vector<ElementTree::Element> m_targets; // elements Annotations
};

} // namespace

CsdlDocument readCsdl(ElementTree const& tree, ImportWork& work) {
    return DocumentReader(tree, work).read();
}

} // namespace vex
