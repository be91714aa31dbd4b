#pragma once

#include "host/store/image/Model.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vex {

/// An image is a model as it lies in memory, in a file: made once from a model document, then
/// mapped by any number of processes that share its memory. Nothing is read from it but what
/// is asked for, once it was looked through.

struct ImageLimits {
    std::size_t bytes = std::size_t{1} << 30U; // of the file
    char const* raisedBy = "";                 // the option that does; "" when there is none
    std::size_t depth = 512;                   // of objects and properties in each other
};

/// The images that this program writes and reads, such as "1-le". Others are refused.
std::string imageFormatName();

/// True for the beginning of an image of whatever format; eight bytes are enough.
bool isImage(std::string_view beginning);

/// The same for a file. False too for what is no file, or cannot be read.
bool isImageFile(std::string const& file);

/// Opens an image. Every byte counts in its checksum, and each number in it is looked at, so
/// that no question can lead out of it. Raises `KRLDocumentException` which says why it is
/// refused, `KRLLimitException` when the process has no handles left for its objects,
/// `std::bad_alloc`. The file must not be written to while the model is there; replace it, as
/// `writeImage` does. Any thread.
std::shared_ptr<Model const> openImage(std::string const& file, ImageLimits const& limits = {});

/// The same for an image in memory, which is copied; `name` stands for the file in messages.
std::shared_ptr<Model const> openImageBytes(std::string_view image, std::string const& name,
                                            ImageLimits const& limits = {});

/// Writes a model as an image: beside the place first, then put there, so that nobody ever
/// opens half of one. Raises `KRLDocumentException` when it cannot be written; the place then
/// holds what it held. Two images of one document differ in their hash seeds only when two
/// processes read it.
void writeImage(Model const& model, std::string const& file);

/// The same as bytes in memory.
std::string imageBytesOf(Model const& model);

} // namespace vex
