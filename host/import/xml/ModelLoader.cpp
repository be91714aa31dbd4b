#include "host/import/xml/ModelLoader.h"

#include "KRLException.h"
#include "host/import/xml/ModelReader.h"
#include "host/import/xml/SaxDocument.h"

#include <algorithm>

namespace vex {

namespace {

std::shared_ptr<Model const> readModel(ByteSource& source, std::size_t size,
                                       std::string const& name, LoadOptions const& options,
                                       Diagnostics& found) {
    Diagnostics errors;
    ModelReader reader(name, size, options, errors);
    std::function<void(std::size_t)> bytesRead;
    if (options.progress != nullptr) {
        bytesRead = [&options, size](std::size_t done) { options.progress(done, size); };
    }
    try {
        readSax(source, reader, options.limits.attributesPerElement, bytesRead);
    } catch (SourceReport::Stop const&) {
        // What ended the reading stands among the errors.
    }
    found.insert(found.end(), errors.begin(), errors.end());
    return std::move(reader).finish();
}

std::shared_ptr<Model const> orRaise(std::shared_ptr<Model const> model,
                                     Diagnostics const& errors) {
    if (model == nullptr) {
        Diagnostic const& first =
            *std::find_if(errors.begin(), errors.end(),
                          [](Diagnostic const& each) { return each.severity == Severity::Error; });
        throw KRLDocumentException(first.file, first.line, first.column, first.text);
    }
    return model;
}

} // namespace

std::shared_ptr<Model const> loadModel(std::string const& path, LoadOptions const& options,
                                       Diagnostics& found) {
    try {
        FileSource file(path, options.input);
        return readModel(file, file.size(), path, options, found);
    } catch (KRLDocumentException const& problem) {
        found.push_back({Severity::Error, "unreadable", path, problem.GetLine(),
                         problem.GetColumn(), problem.GetProblem()});
        return nullptr;
    }
}

std::shared_ptr<Model const> loadModelText(std::string_view xml, std::string const& name,
                                           LoadOptions const& options, Diagnostics& found) {
    MemorySource text(xml);
    return readModel(text, xml.size(), name, options, found);
}

std::shared_ptr<Model const> loadModel(std::string const& path, LoadOptions const& options) {
    Diagnostics errors;
    return orRaise(loadModel(path, options, errors), errors);
}

std::shared_ptr<Model const> loadModelText(std::string_view xml, std::string const& name,
                                           LoadOptions const& options) {
    Diagnostics errors;
    return orRaise(loadModelText(xml, name, options, errors), errors);
}

} // namespace vex
