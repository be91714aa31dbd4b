#pragma once

#include "host/protocol/JsonText.h"

#include <ostream>
#include <string_view>
#include <vector>

namespace vex {

/// Writes indented JSON while what it tells is gone through: a list may be as long as it
/// likes, no more of the text is held than the value at hand.
class JsonStream {
public:
    /// The stream stays where it is.
    explicit JsonStream(std::ostream& out) : m_out(out) {}

    /// @{
    /// Begins an object: the whole text, or an entry of a list; or one that is a member.
    void beginObject();
    void beginObject(std::string_view name);
    /// @}
    /// Begins a list that is a member.
    void beginList(std::string_view name);
    /// Ends what was begun last.
    void end();

    /// @{
    /// A member; an entry of a list.
    void member(std::string_view name, Json const& value);
    void entry(Json const& value);
    /// @}

private:
    struct Level {
        char closing;
        bool isEmpty = true;
    };

    void begin(char opening, char closing);
    void beginEntry();
    void beginMember(std::string_view name);
    void newLine();
    void write(Json const& value);

    std::ostream& m_out;
    std::vector<Level> m_levels; // that are open
};

} // namespace vex
