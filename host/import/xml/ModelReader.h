#pragma once

#include "host/import/xml/ModelLoader.h"
#include "host/import/xml/SaxDocument.h"
#include "host/store/build/ModelWriter.h"

#include <string>
#include <vector>

namespace vex {

/// Writes a model from the events of a parser, and reports what a model document
/// may not hold. Reading goes on past an error in the content; where it cannot,
/// `SourceReport::Stop` is raised.
class ModelReader final : public SaxHandler, private ModelSource {
public:
    ModelReader(std::string const& file, std::size_t size, LoadOptions const& options,
                Diagnostics& found);

    /// The model of a document that was read to its end; null when an error was
    /// reported.
    std::shared_ptr<Model const> finish() && { return std::move(m_writer).finish(); }

    [[noreturn]] void refuse(char const* rule, std::string text) override {
        m_report.stop(rule, std::move(text));
    }
    std::string adviceOnAttributes() const override { return "write some as property elements"; }
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
    /// What an element of the document is. Nothing of a skipped one, which was
    /// reported, is kept.
    enum class Kind { Object, Property, Locales, Locale, Skipped };
    struct Open {
        Kind kind;
        std::size_t text; // where its own text begins in m_text
    };

    SourcePosition position() const override;
    SourceTerms terms() const override;

    Kind open(ModelWriter::Name name, xercesc::Attributes const& attributes);
    Kind openInObject(ModelWriter::Name name, xercesc::Attributes const& attributes);
    void openObject(ModelWriter::Name name, xercesc::Attributes const& attributes);
    void openProperty(xercesc::Attributes const& attributes);
    std::u16string_view takeText(Open const& element);

    xercesc::Locator const* m_locator = nullptr;

    SourceReport m_report;
    ModelWriter m_writer;
    std::vector<Open> m_open;
    std::u16string m_text; // own text of the open elements, the innermost one's last

    struct ReservedNames {
        ModelWriter::Name model, property, locales, locale, id, role, cls, defaultLocale;
    };
    ReservedNames m_reserved;
};

} // namespace vex
