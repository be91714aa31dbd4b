#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vex {

/// Writes an XML document in one form: two blanks for each of ten levels, an element without
/// content closed at once, text on the line of its element. Texts are UTF-8 that XML can hold.
class XmlText {
public:
    XmlText();

    void open(std::string_view tag);
    /// Of the element opened last, before anything stands in it.
    void attribute(std::string_view name, std::string_view value);
    /// What stands in the element opened last, before elements inside.
    void text(std::string_view text);
    void close();

    /// An element that holds a text.
    void element(std::string_view tag, std::string_view text);

    std::string take() && { return std::move(m_written); }

private:
    void endStartTag();
    void indent();
    void write(std::string_view text, bool inAttribute);

    std::string m_written;
    std::vector<std::string> m_open;
    bool m_inStartTag = false;
    bool m_hasText = false;
};

} // namespace vex
