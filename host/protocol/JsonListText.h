#pragma once

#include "host/protocol/JsonText.h"

#include <string>
#include <string_view>

namespace vex {

/// Writes an indented JSON text whose last member is a long list: its entries are written one
/// at a time and are never held together.
class JsonListText {
public:
    /// In `whole` that member, `name`, is an empty list, and stands `depth` levels deep.
    JsonListText(Json const& whole, std::string_view name, std::size_t depth);

    void add(Json const& entry);
    /// The text; comes last.
    std::string finish() &&;

private:
    std::size_t m_depth;
    std::string m_text;
    std::string m_rest; // behind the list
    bool m_isEmpty = true;
};

} // namespace vex
