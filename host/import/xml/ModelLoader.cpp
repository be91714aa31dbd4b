#include "host/import/xml/ModelLoader.h"

#include "KRLException.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelReader.h"
#include "host/import/xml/SaxDocument.h"
#include "host/store/image/ImageFile.h"

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

Diagnostic unreadable(std::string const& file, KRLDocumentException const& problem) {
    return {Severity::Error,   "unreadable",        file,
            problem.GetLine(), problem.GetColumn(), problem.GetProblem()};
}

ImageLimits imageLimitsOf(LoadOptions const& options) {
    return {.bytes = options.input.bytes,
            .raisedBy = options.input.option,
            .depth = options.limits.depth};
}

/// An image holds a model as it is: what is to be added is added to its document.
template <class Open>
std::shared_ptr<Model const> modelOfImage(Open const& open, std::string const& name,
                                          LoadOptions const& options, Diagnostics& found) {
    std::shared_ptr<Model const> model;
    try {
        model = open(imageLimitsOf(options));
    } catch (KRLDocumentException const& problem) {
        found.push_back(unreadable(name, problem));
        return nullptr;
    }
    if (options.addition == nullptr) {
        return model;
    }
    std::string const document = modelDocumentOf(*model);
    model.reset();
    LoadOptions ofDocument = options;
    ofDocument.keepPositions = false; // nobody has that document
    ofDocument.progress = nullptr;
    return loadModelText(document, name, ofDocument, found);
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
    if (isImageFile(path)) {
        return modelOfImage([&](ImageLimits const& limits) { return openImage(path, limits); },
                            path, options, found);
    }
    try {
        FileSource file(path, options.input);
        return readModel(file, file.size(), path, options, found);
    } catch (KRLDocumentException const& problem) {
        found.push_back(unreadable(path, problem));
        return nullptr;
    }
}

std::shared_ptr<Model const> loadModelText(std::string_view xml, std::string const& name,
                                           LoadOptions const& options, Diagnostics& found) {
    if (isImage(xml)) {
        return modelOfImage(
            [&](ImageLimits const& limits) { return openImageBytes(xml, name, limits); }, name,
            options, found);
    }
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
