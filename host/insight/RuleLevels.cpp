#include "host/insight/RuleLevels.h"

#include "KRLException.h"
#include "host/insight/DiagnosticRules.h"
#include "host/insight/NearestWord.h"

#include <algorithm>
#include <vector>

#include <yaml.h>

namespace vex {

namespace {

struct LevelRow {
    std::string_view word;
    std::optional<Severity> severity;
};
constexpr LevelRow levels[] = {
    {"off", std::nullopt},
    {"note", Severity::Note},
    {"warning", Severity::Warning},
    {"error", Severity::Error},
};

/// A text of the file and where it begins.
struct Word {
    std::string text;
    unsigned long line;
    unsigned long column;
};

/// Reads a file that is one mapping of words to words, event by event: nothing in
/// it nests, so nothing grows.
class MappingReader {
public:
    MappingReader(std::string_view text, std::string const& name) : m_name(name) {
        if (yaml_parser_initialize(&m_parser) == 0) {
            throw std::bad_alloc();
        }
        yaml_parser_set_input_string(&m_parser, reinterpret_cast<unsigned char const*>(text.data()),
                                     text.size());
    }
    ~MappingReader() { yaml_parser_delete(&m_parser); }
    MappingReader(MappingReader const&) = delete;
    MappingReader& operator=(MappingReader const&) = delete;

    /// Calls `take` with each key and its value.
    template <class Take> void read(Take const& take) {
        next(); // the stream begins
        if (next() == YAML_STREAM_END_EVENT) {
            return; // comments at most
        }
        if (next() == YAML_SCALAR_EVENT && word().text.empty()) {
            return;
        }
        expect(YAML_MAPPING_START_EVENT);
        while (next() != YAML_MAPPING_END_EVENT) {
            Word const key = word();
            next();
            take(key, word());
        }
        next(); // the document ends
        if (next() != YAML_STREAM_END_EVENT) {
            refuse("a second document begins here; write all rules into one");
        }
    }

    [[noreturn]] void refuse(Word const& at, std::string const& problem) const {
        throw KRLDocumentException(m_name, at.line, at.column, problem);
    }

private:
    struct Event {
        yaml_event_t event{};
        ~Event() { yaml_event_delete(&event); }
    };

    yaml_event_type_t next() {
        yaml_event_delete(&m_event.event);
        if (yaml_parser_parse(&m_parser, &m_event.event) == 0) {
            if (m_parser.error == YAML_MEMORY_ERROR) {
                throw std::bad_alloc();
            }
            throw KRLDocumentException(
                m_name, m_parser.problem_mark.line + 1, m_parser.problem_mark.column + 1,
                std::string("this is not YAML: ") +
                    (m_parser.problem == nullptr ? "it cannot be read" : m_parser.problem));
        }
        return m_event.event.type;
    }

    void expect(yaml_event_type_t type) const {
        if (m_event.event.type != type) {
            refuse("write a line for each rule, such as \"untranslated-name: off\"");
        }
    }

    Word word() const {
        expect(YAML_SCALAR_EVENT);
        auto const& scalar = m_event.event.data.scalar;
        return {std::string(reinterpret_cast<char const*>(scalar.value), scalar.length),
                m_event.event.start_mark.line + 1, m_event.event.start_mark.column + 1};
    }

    [[noreturn]] void refuse(std::string const& problem) const {
        refuse({"", m_event.event.start_mark.line + 1, m_event.event.start_mark.column + 1},
               problem);
    }

    std::string const& m_name;
    yaml_parser_t m_parser{};
    Event m_event;
};

DiagnosticRule const& ruleOf(Word const& word, MappingReader const& reader) {
    auto const rule =
        std::find_if(std::begin(diagnosticRules), std::end(diagnosticRules),
                     [&](DiagnosticRule const& each) { return each.name == word.text; });
    if (rule == std::end(diagnosticRules)) {
        std::vector<std::string_view> names;
        for (DiagnosticRule const& each : diagnosticRules) {
            names.push_back(each.name);
        }
        std::string const question = didYouMean(nearestWord(word.text, names));
        reader.refuse(word, "there is no rule \"" + word.text + '"' +
                                (question.empty() ? "; \"vexma validate --list-rules\" lists them"
                                                  : question));
    }
    if (rule->severity == Severity::Error) {
        reader.refuse(word, "what breaks the rule \"" + word.text +
                                "\" keeps a file from being read, so it stays an error; remove "
                                "the line");
    }
    return *rule;
}

std::optional<Severity> levelOf(Word const& word, MappingReader const& reader) {
    auto const level = std::find_if(std::begin(levels), std::end(levels),
                                    [&](LevelRow const& row) { return row.word == word.text; });
    if (level == std::end(levels)) {
        std::vector<std::string_view> words;
        for (LevelRow const& row : levels) {
            words.push_back(row.word);
        }
        std::string const question = didYouMean(nearestWord(word.text, words));
        reader.refuse(word,
                      "there is no level \"" + word.text + '"' +
                          (question.empty() ? "; write off, note, warning or error" : question));
    }
    return level->severity;
}

} // namespace

RuleLevels RuleLevels::read(std::string_view text, std::string name) {
    RuleLevels made;
    made.m_file = std::move(name);
    MappingReader reader(text, made.m_file);
    reader.read([&](Word const& key, Word const& value) {
        std::string const rule(ruleOf(key, reader).name);
        if (!made.m_levels.emplace(rule, levelOf(value, reader)).second) {
            reader.refuse(key, "the rule \"" + rule +
                                   "\" stands here for the second time; "
                                   "remove one of the two lines");
        }
    });
    return made;
}

std::size_t RuleLevels::apply(Diagnostics& found) const {
    std::size_t const before = found.size();
    std::erase_if(found, [&](Diagnostic& each) {
        auto const level = m_levels.find(each.rule);
        if (level == m_levels.end()) {
            return false;
        }
        each.severity = level->second.value_or(each.severity);
        return !level->second.has_value();
    });
    return before - found.size();
}

} // namespace vex
