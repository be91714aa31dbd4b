#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/import/xml/SaxDocument.h"
#include "host/store/build/FindingLimit.h"

#include <set>

namespace vex {

/// Builds a catalogue from parser events and reports every breach of its
/// grammar where it stands. Reading goes on past an error; only text that is
/// not well-formed, a document type or a limit of the XML library ends it.
class CatalogueReader final : public SaxHandler {
public:
    CatalogueReader(Catalogue& catalogue, std::string name, std::string folder, Diagnostics& found);

    [[noreturn]] void refuse(char const* rule, std::string text) override;
    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }
    void startDTD(XMLCh const* name, XMLCh const* publicId, XMLCh const* systemId) override;
    void startElement(XMLCh const* uri, XMLCh const* localName, XMLCh const* tag,
                      xercesc::Attributes const& attributes) override;
    void endElement(XMLCh const* uri, XMLCh const* localName, XMLCh const* tag) override;
    /// Adds how many problems were left out, where some were; comes last.
    void tellRest() const { m_limit.tellRest(m_found); }

    void characters(XMLCh const* text, XMLSize_t length) override;
    void fatalError(xercesc::SAXParseException const& problem) override;

private:
    /// Where the reader stands; each is an element of the grammar but the first.
    enum class Place { Document, Catalogue, Model, Package, Property, Grant, User, Role };
    struct Attribute;
    struct Rule;
    static Rule const Rules[];

    Rule const* findRule(std::u16string_view tag) const;
    void checkAttributes(Rule const& rule, xercesc::Attributes const& attributes);
    void checkWritable(std::u16string_view text);
    void enter(Rule const& rule, xercesc::Attributes const& attributes);
    void enterGrant(xercesc::Attributes const& attributes);
    void enterModel(xercesc::Attributes const& attributes);
    void enterPackage(xercesc::Attributes const& attributes);
    void enterProperty(xercesc::Attributes const& attributes);
    void enterUser(xercesc::Attributes const& attributes);
    void leaveProperty();
    void leaveRole();
    void report(char const* rule, std::string text);

    Catalogue& m_catalogue;
    std::string m_name;
    std::string m_folder;
    Diagnostics& m_found;
    FindingLimit m_limit;
    xercesc::Locator const* m_locator = nullptr;

    std::vector<Rule const*> m_open;
    std::size_t m_skipped = 0; // elements open inside one that is not known
    std::set<I18NString> m_modelPaths;
    std::set<I18NString> m_userNames;

    I18NString m_propertyName;
    I18NLocale m_propertyLocale;
    I18NString m_text;
};

} // namespace vex
