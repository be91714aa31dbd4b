#pragma once

#include <string>
#include <string_view>

namespace vex {

/// A file that is written beside its place and put there when it is whole, so that nobody ever
/// reads half of one; gone again unless it was put there. What fails raises
/// `KRLDocumentException` with the name of the place.
class FileBeside {
public:
    explicit FileBeside(std::string place);
    FileBeside(FileBeside&& other) noexcept;
    FileBeside& operator=(FileBeside&&) = delete;
    ~FileBeside();

    void write(std::string_view bytes);
    /// Ends the writing: all of it is on the disk then.
    void finish();
    void putInPlace();

private:
    [[noreturn]] void refuse(int reason) const;

    std::string m_place;
    std::string m_beside; // "" when there is none
    int m_descriptor = -1;
};

} // namespace vex
