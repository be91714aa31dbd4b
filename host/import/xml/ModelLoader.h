#pragma once

#include "host/store/build/Diagnostic.h"
#include "host/store/image/Model.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vex {

/// What a model document may hold.
struct ModelLimits {
    std::size_t depth = 512; // elements inside each other; the root counts
    std::size_t attributesPerElement = 200;
    std::size_t nameLength = 1'000;     // of an element or attribute, UTF-16 code units
    std::size_t distinctNames = 10'000; // of elements and attributes
};

struct LoadOptions {
    ModelLimits limits;
    /// Called now and then while the document is read.
    std::function<void(std::size_t bytesDone, std::size_t bytesTotal)> progress;
    /// Remembers where each element stands, for messages about the model.
    bool keepPositions = false;
};

/// Reads a model document. Raises `KRLDocumentException` for the first error in
/// it, or when the file cannot be read, `KRLLimitException` when it holds more
/// than a model can number, `std::bad_alloc`. Nothing is loaded then.
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
