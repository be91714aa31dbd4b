#include "bench/BareParse.h"

#include "KRLIDOM_Platform.h"

#include <memory>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace bench {

void parseBare(std::string const& file) {
    KRLIDOM_Initialize();
    std::unique_ptr<xercesc::SAX2XMLReader> const reader(
        xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xercesc::XMLUni::fgXercesSchema, false);
    reader->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
    xercesc::DefaultHandler handler;
    reader->setContentHandler(&handler);
    reader->setErrorHandler(&handler);
    std::u16string const name(file.begin(), file.end()); // a name of ours: ASCII
    reader->parse(xercesc::LocalFileInputSource(name.c_str()));
}

} // namespace bench
