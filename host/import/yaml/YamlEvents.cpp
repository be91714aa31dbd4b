#include "host/import/yaml/YamlEvents.h"

#include "KRLException.h"

#include <new>

#include <yaml.h>

namespace vex {

struct YamlEvents::Parser {
    yaml_parser_t parser{};
    yaml_event_t event{};

    explicit Parser(std::string_view text) {
        if (yaml_parser_initialize(&parser) == 0) {
            throw std::bad_alloc();
        }
        yaml_parser_set_input_string(&parser, reinterpret_cast<unsigned char const*>(text.data()),
                                     text.size());
    }
    Parser(Parser const&) = delete;
    Parser& operator=(Parser const&) = delete;
    ~Parser() {
        yaml_event_delete(&event);
        yaml_parser_delete(&parser);
    }

    YamlPlace place() const { return {event.start_mark.line + 1, event.start_mark.column + 1}; }
};

YamlEvents::YamlEvents(std::string_view text, std::string const& name, YamlOptions options)
    : m_name(name), m_options(options), m_parser(std::make_unique<Parser>(text)) {}

YamlEvents::~YamlEvents() = default;

void YamlEvents::refuse(YamlPlace const& at, std::string const& problem) const {
    throw KRLDocumentException(m_name, at.line, at.column, problem);
}

void YamlEvents::enter() {
    if (++m_depth > m_options.depth) {
        refuse(m_event.place,
               "this is nested more than " + std::to_string(m_options.depth) + " deep");
    }
}

void YamlEvents::setAnchor(unsigned char const* anchor) {
    if (anchor != nullptr) {
        m_event.anchor = reinterpret_cast<char const*>(anchor);
    }
}

YamlEvent const& YamlEvents::next() {
    m_event.text.clear();
    m_event.anchor.clear();
    m_event.isPlain = false;
    m_event.hasTag = false;
    m_event.kind = YamlEvent::Kind::End;
    bool isDocument = false;
    while (!m_isEnded) {
        yaml_event_t& event = m_parser->event;
        yaml_event_delete(&event);
        if (yaml_parser_parse(&m_parser->parser, &event) == 0) {
            yaml_parser_t const& parser = m_parser->parser;
            if (parser.error == YAML_MEMORY_ERROR) {
                throw std::bad_alloc();
            }
            refuse({parser.problem_mark.line + 1, parser.problem_mark.column + 1},
                   std::string("this is not YAML: ") +
                       (parser.problem == nullptr ? "it cannot be read" : parser.problem));
        }
        m_event.place = m_parser->place();
        switch (event.type) {
        case YAML_NO_EVENT:
        case YAML_STREAM_START_EVENT:
            break;
        case YAML_DOCUMENT_END_EVENT:
            isDocument = true;
            break;
        case YAML_DOCUMENT_START_EVENT:
            if (isDocument) {
                refuse(m_event.place, "a second document begins here; write " +
                                          std::string(m_options.content) + " into one");
            }
            break;
        case YAML_STREAM_END_EVENT:
            m_isEnded = true;
            break;
        case YAML_ALIAS_EVENT:
            m_event.kind = YamlEvent::Kind::Alias;
            m_event.text = reinterpret_cast<char const*>(event.data.alias.anchor);
            return m_event;
        case YAML_SCALAR_EVENT: {
            auto const& scalar = event.data.scalar;
            m_event.kind = YamlEvent::Kind::Scalar;
            m_event.text.assign(reinterpret_cast<char const*>(scalar.value), scalar.length);
            m_event.isPlain = scalar.style == YAML_PLAIN_SCALAR_STYLE;
            m_event.hasTag = scalar.tag != nullptr;
            setAnchor(scalar.anchor);
            return m_event;
        }
        case YAML_SEQUENCE_START_EVENT:
        case YAML_MAPPING_START_EVENT:
            m_event.kind = event.type == YAML_MAPPING_START_EVENT ? YamlEvent::Kind::MappingStart
                                                                  : YamlEvent::Kind::SequenceStart;
            m_event.hasTag =
                (event.type == YAML_MAPPING_START_EVENT ? event.data.mapping_start.tag
                                                        : event.data.sequence_start.tag) != nullptr;
            setAnchor(event.type == YAML_MAPPING_START_EVENT ? event.data.mapping_start.anchor
                                                             : event.data.sequence_start.anchor);
            enter();
            return m_event;
        case YAML_SEQUENCE_END_EVENT:
        case YAML_MAPPING_END_EVENT:
            m_event.kind = event.type == YAML_MAPPING_END_EVENT ? YamlEvent::Kind::MappingEnd
                                                                : YamlEvent::Kind::SequenceEnd;
            --m_depth;
            return m_event;
        }
    }
    return m_event;
}

void YamlEvents::skip() {
    std::size_t depth = 0;
    for (;; next()) {
        switch (m_event.kind) {
        case YamlEvent::Kind::MappingStart:
        case YamlEvent::Kind::SequenceStart:
            ++depth;
            break;
        case YamlEvent::Kind::MappingEnd:
        case YamlEvent::Kind::SequenceEnd:
            --depth;
            break;
        case YamlEvent::Kind::Scalar:
        case YamlEvent::Kind::Alias:
            break;
        case YamlEvent::Kind::End:
            return;
        }
        if (depth == 0) {
            next();
            return;
        }
    }
}

} // namespace vex
