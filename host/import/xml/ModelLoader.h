#pragma once

#include "host/import/xml/FileText.h"
#include "host/store/build/ModelWriter.h"
#include "host/store/image/Model.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vex {

/// What a model document may hold. What a model limits holds for its elements,
/// those that are skipped too; the names are those of elements and attributes.
struct DocumentLimits : ModelLimits {
    std::size_t attributesPerElement = 200;
};

struct LoadOptions {
    DocumentLimits limits;
    /// Of a file: what is in memory already is taken whole.
    InputLimit input = modelLimit;
    /// Called now and then while the document is read.
    std::function<void(std::size_t bytesDone, std::size_t bytesTotal)> progress;
    /// Remembers where each element stands, for messages about the model.
    bool keepPositions = false;
    /// What is added to the model that was read; null for nothing. It stays where it is.
    ModelAddition* addition = nullptr;
};

/// Reads a model document, or opens an image of a model. Raises `KRLDocumentException` for the
/// first error in it, or when the file cannot be read, `KRLLimitException` when it holds more than
/// a model can number, `std::bad_alloc`. Nothing is loaded then. An image has positions when it was
/// made with them, and no part of it is read twice.
std::shared_ptr<Model const> loadModel(std::string const& path, LoadOptions const& options = {});

/// The same for a document in memory; `name` stands for the file in messages.
std::shared_ptr<Model const> loadModelText(std::string_view xml, std::string const& name,
                                           LoadOptions const& options = {});

/// Reads on past an error where it can and appends every error to `found`; null
/// when there was one.
std::shared_ptr<Model const> loadModel(std::string const& path, LoadOptions const& options,
                                       Diagnostics& found);
std::shared_ptr<Model const> loadModelText(std::string_view xml, std::string const& name,
                                           LoadOptions const& options, Diagnostics& found);

} // namespace vex
