#include "host/insight/RuleLevels.h"

#include "KRLException.h"
#include "host/import/yaml/YamlEvents.h"
#include "host/insight/DiagnosticRules.h"
#include "host/insight/NearestWord.h"

#include <algorithm>
#include <vector>

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
    MappingReader(std::string_view text, std::string const& name)
        : m_events(text, name, {.content = "all rules"}) {}

    /// Calls `take` with each key and its value.
    template <class Take> void read(Take const& take) {
        using Kind = YamlEvent::Kind;
        YamlEvent const& event = m_events.next();
        if (event.kind == Kind::End || event.isNothing()) {
            m_events.next(); // comments at most; what is behind them is refused
            return;
        }
        expect(Kind::MappingStart);
        while (m_events.next().kind != Kind::MappingEnd) {
            Word const key = word();
            m_events.next();
            take(key, word());
        }
        m_events.next(); // a second document is refused
    }

    [[noreturn]] void refuse(Word const& at, std::string const& problem) const {
        m_events.refuse({at.line, at.column}, problem);
    }

private:
    void expect(YamlEvent::Kind kind) const {
        if (m_events.current().kind != kind) {
            m_events.refuse(m_events.current().place,
                            "write a line for each rule, such as \"untranslated-name: off\"");
        }
    }

    Word word() const {
        expect(YamlEvent::Kind::Scalar);
        YamlEvent const& scalar = m_events.current();
        return {scalar.text, scalar.place.line, scalar.place.column};
    }

    YamlEvents m_events;
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
