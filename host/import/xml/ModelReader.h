#pragma once

#include "host/import/xml/ModelLoader.h"
#include "host/store/build/Diagnostic.h"
#include "host/store/build/StoreBuilder.h"

#include <deque>
#include <string>
#include <vector>

#include <xercesc/sax2/DefaultHandler.hpp>

namespace vex {

/// Fills a store from the events of a parser, and reports what a model document
/// may not hold. Reading goes on past an error in the content.
class ModelReader final : public xercesc::DefaultHandler {
public:
    /// Raised to end a reading that cannot go on; the reason was reported.
    struct Stop {};

    ModelReader(std::string const& file, std::size_t size, LoadOptions const& options,
                Diagnostics& found);

    /// The store of a document that was read without an error.
    std::unique_ptr<StoreData const> finish() &&;

    void setDocumentLocator(xercesc::Locator const* locator) override { m_locator = locator; }
    void startDTD(XMLCh const* name, XMLCh const* publicId, XMLCh const* systemId) override;
    void startElement(XMLCh const* uri, XMLCh const* localName, XMLCh const* name,
                      xercesc::Attributes const& attributes) override;
    void endElement(XMLCh const* uri, XMLCh const* localName, XMLCh const* name) override;
    void characters(XMLCh const* text, XMLSize_t length) override;
    void warning(xercesc::SAXParseException const&) override {}
    void error(xercesc::SAXParseException const& problem) override { fatalError(problem); }
    void fatalError(xercesc::SAXParseException const& problem) override;

private:
    /// What an open element is. Nothing of a skipped one, which was reported, is
    /// kept.
    enum class Place { Element, Property, Locales, Locale, Skipped };
    struct Open {
        Place place;
        bool hasProperties; // of a property: some of its own were met
        std::size_t text;   // where its own text begins in m_text
        ShapeEntry entry;   // of a property
    };

    void report(char const* rule, std::string text);
    [[noreturn]] void stop(char const* rule, std::string text);
    DocumentPosition position() const;

    Atom nameOf(std::u16string_view name);
    Place placeOf(Atom name);
    void open(Place place, Atom name, xercesc::Attributes const& attributes);
    void openElement(Atom name, xercesc::Attributes const& attributes);
    void openProperties(Open& property);
    std::uint32_t closeProperties(Open const& property);
    /// `NoAtom` for the empty name.
    Atom propertyName(std::u16string_view name);
    ShapeEntry readProperty(xercesc::Attributes const& attributes);
    /// The locale of that name; one that is unknown is reported and nameless.
    I18NLocale readLocale(std::u16string_view name);
    std::u16string_view takeText(Open const& element);

    std::string const& m_file;
    ModelLimits const m_limits;
    bool const m_keepPositions;
    Diagnostics& m_found;
    xercesc::Locator const* m_locator = nullptr;

    StoreBuilder m_builder;
    std::vector<Open> m_open;
    std::u16string m_text; // own text of the open elements, the innermost one's last

    struct KnownName {
        bool isMarkup = false; // an element or attribute has it
        bool isLocale = false; // it was read as the name of `locale`
        I18NLocale locale{};
    };
    std::vector<KnownName> m_names; // by atom
    std::size_t m_markupNames = 0;

    I18NLocale m_defaultLocale;
    std::vector<I18NLocale> m_locales;
    std::vector<I18NLocale> m_usedLocales;

    struct ReservedNames {
        Atom model, property, locales, locale, id, role, cls, name, defaultLocale;
    };
    ReservedNames m_reserved;
};

} // namespace vex
