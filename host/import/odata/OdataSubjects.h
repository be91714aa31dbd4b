#pragma once

#include "host/import/draft/ImportWork.h"
#include "host/import/odata/CsdlDocument.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// A query subject of the draft: an entity set, a singleton, or a type that none of them
/// holds, with what its type inherits.
struct OdataSubject {
    static constexpr std::size_t None = DraftObject::None;

    std::size_t type;
    std::size_t set = None;
    std::size_t object = None;
    std::size_t space = None; // the namespace around it, in the draft
    std::string path{};       // of its key
    std::string name{};
    std::string reference{};
    std::vector<CsdlNavigation const*> navigations{};
    std::map<std::string_view, std::string> items{}; // names by those of the properties
};

/// The query subjects of a service description.
class OdataSubjects {
public:
    OdataSubjects(CsdlDocument const& document, ImportWork& work)
        : m_document(document), m_model(document.model), m_work(work) {}

    /// Makes them, with their items and enumerations, and the namespaces around them.
    void make();

    std::vector<OdataSubject> const& all() const { return m_subjects; }

    /// What inherited parts may take, in bytes or so: each type inherits by itself, so they
    /// grow by types times properties. Refuses past the limit.
    void spend(std::size_t bytes, DocumentPosition at);

private:
    struct Space {
        std::string name;
        std::string path;
        CsdlSaid const* said;
        DocumentPosition position;
        std::vector<std::size_t> subjects{};
        std::vector<std::size_t> enumerations{};
    };

    ModelDraft& draft() { return m_work.draft.model; }

    std::vector<Space> findSpaces();
    void findSets(std::vector<Space>& spaces);
    void makeSpace(Space const& space, std::size_t service);
    void makeSubject(OdataSubject& subject, std::string const& space);
    void makeItems(OdataSubject& subject);
    void makeItem(OdataSubject& subject, CsdlProperty const& property, bool identifies);
    void makeEnumeration(CsdlType const& type, std::size_t space);
    void sayAll(std::size_t object, CsdlSaid const& said, CsdlSaid const* less = nullptr);
    std::vector<CsdlType const*> lineOf(CsdlType const& type);

    CsdlDocument const& m_document;
    CsdlModel const& m_model;
    ImportWork& m_work;
    std::vector<OdataSubject> m_subjects;
    std::size_t m_spent = 0;
};

} // namespace vex
