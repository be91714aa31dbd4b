#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vex {

/// Where something begins in a text, from 1.
struct YamlPlace {
    unsigned long line = 0;
    unsigned long column = 0;
};

/// What a YAML document consists of, in its order.
struct YamlEvent {
    enum class Kind { MappingStart, MappingEnd, SequenceStart, SequenceEnd, Scalar, Alias, End };

    Kind kind = Kind::End;
    YamlPlace place{};
    std::string text{};   // of a scalar, UTF-8; the name of an alias
    bool isPlain = false; // a scalar without quotes
    bool hasTag = false;  // such as !!int: somebody says what the value is
    std::string anchor{}; // by which aliases name the value that begins here; may be empty

    /// A value that was left out, or "~".
    bool isNothing() const {
        return kind == Kind::Scalar && isPlain && (text.empty() || text == "~" || text == "null");
    }
};

struct YamlOptions {
    std::size_t depth = 64;                 // of mappings and sequences inside each other
    std::string_view content = "all of it"; // what a file holds, for messages
};

/// Reads one YAML document. An alias is given as it stands, never as what it stands
/// for: a few lines would be many. Raises `KRLDocumentException` with the place of what it cannot
/// read, `std::bad_alloc`.
class YamlEvents {
public:
    /// Both texts stay where they are; `name` stands for the file in messages.
    YamlEvents(std::string_view text, std::string const& name, YamlOptions options = {});
    ~YamlEvents();
    YamlEvents(YamlEvents const&) = delete;
    YamlEvents& operator=(YamlEvents const&) = delete;

    /// The next event; after the last one, and of a text that holds no document,
    /// always `End`.
    YamlEvent const& next();
    /// The event that `next` gave.
    YamlEvent const& current() const { return m_event; }

    /// Ends a scalar, a sequence or a mapping that begins with the current event:
    /// the next one is what follows it.
    void skip();

    /// Raises `KRLDocumentException` with that place.
    [[noreturn]] void refuse(YamlPlace const& at, std::string const& problem) const;

private:
    struct Parser;

    void setAnchor(unsigned char const* anchor);
    void enter();

    std::string const& m_name;
    YamlOptions const m_options;
    std::unique_ptr<Parser> m_parser;
    YamlEvent m_event;
    std::size_t m_depth = 0;
    bool m_isEnded = false;
};

} // namespace vex
