// The least that a process with the same answer must do.
//
//   vex_floor record RESPONSE.xml RECORD      keeps an answer as ready strings
//   vex_floor answer MODEL.xml RECORD OUT.xml  parses the model and keeps
//                                              nothing, builds that answer,
//                                              writes it

#include "KRLIDOM_Platform.h"
#include "bench/BareParse.h"
#include "bench/RecordedDocument.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileFormatTarget.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace {

int recordAnswer(char const* responseFile, char const* recordFile) {
    KRLIDOM_Initialize();
    xercesc::XercesDOMParser parser;
    parser.setIncludeIgnorableWhitespace(false);
    parser.parse(responseFile);
    std::u16string const recorded = bench::record(parser.getDocument()->getDocumentElement());
    std::ofstream out(recordFile, std::ios::binary);
    out.write(reinterpret_cast<char const*>(recorded.data()),
              static_cast<std::streamsize>(recorded.size() * sizeof(char16_t)));
    out.close();
    return out ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// The strings of a record as they lie in its file; empty when it has none.
std::u16string_view mapRecord(char const* file) {
    int const descriptor = ::open(file, O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0 || status.st_size == 0) {
        return {};
    }
    auto const size = static_cast<std::size_t>(status.st_size);
    void* const start = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    ::close(descriptor);
    return start == MAP_FAILED
               ? std::u16string_view()
               : std::u16string_view(static_cast<char16_t const*>(start), size / sizeof(char16_t));
}

int answer(char const* modelFile, char const* recordFile, char const* outFile) {
    bench::parseBare(modelFile);
    std::u16string_view const recorded = mapRecord(recordFile);
    if (recorded.empty()) {
        std::perror(recordFile);
        return EXIT_FAILURE;
    }
    xercesc::DOMDocument* const document =
        bench::buildBare(recorded, xercesc::XMLPlatformUtils::fgMemoryManager);
    {
        xercesc::LocalFileFormatTarget target(outFile);
        bench::serialiseBare(document, target);
    }
    document->release();
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** words) {
    std::string_view const command = count > 1 ? words[1] : "";
    if (command == "record" && count == 4) {
        return recordAnswer(words[2], words[3]);
    }
    if (command == "answer" && count == 5) {
        return answer(words[2], words[3], words[4]);
    }
    std::fputs("usage: vex_floor record RESPONSE RECORD | vex_floor answer MODEL RECORD OUT\n",
               stderr);
    return 2;
}
