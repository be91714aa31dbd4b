#include "host/import/yamltree/YamlTree.h"

#include "KRLException.h"
#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"
#include "host/import/yaml/YamlEvents.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vex {

namespace {

using Value = SourceTree::Value;
using Kind = SourceTree::Kind;

DocumentPosition positionOf(YamlPlace const& place) {
    return {place.line, place.column};
}

/// Truth values and numbers, as far as anybody asks: both are taken as the text that they are.
bool isScalar(std::string const& text) {
    constexpr std::array<std::string_view, 6> truths{"true",  "True",  "TRUE",
                                                     "false", "False", "FALSE"};
    return std::find(truths.begin(), truths.end(), text) != truths.end() ||
           text.find_first_not_of("0123456789+-.eE_") == std::string::npos;
}

class TreeReader {
public:
    TreeReader(std::string_view yaml, ImportWork& work, YamlUse& use)
        : m_work(work), m_use(use), m_name(work.request.sourceName()),
          m_events(yaml, m_name, {.depth = work.request.limits.sourceDepth}) {}

    SourceTree read() {
        for (;;) {
            YamlEvent const& event = m_events.next();
            switch (event.kind) {
            case YamlEvent::Kind::End:
                return std::move(m_tree);
            case YamlEvent::Kind::MappingEnd:
            case YamlEvent::Kind::SequenceEnd:
                close();
                break;
            default:
                readBeginning(event);
            }
        }
    }

private:
    /// A list or map that was not closed yet.
    struct Open {
        Value value;
        std::string anchor;
        bool expectsKey;
        bool mergesNext = false;
        std::vector<Value> merged{}; // maps whose entries it has, too
    };
    struct Anchor {
        Value value;
        bool isOpen;
    };

    bool isInMap() const { return !m_open.empty() && m_tree.isInMap(); }

    void readBeginning(YamlEvent const& event) {
        if (isInMap() && m_open.back().expectsKey) {
            readKey(event);
            m_open.back().expectsKey = false;
            return;
        }
        if (isInMap() && m_open.back().mergesNext) {
            readMerged();
            m_open.back().mergesNext = false;
        } else {
            readValue(event);
        }
        // A list or map that was opened is in the way: it expects its own key first.
        if (!m_open.empty() && event.kind != YamlEvent::Kind::MappingStart &&
            event.kind != YamlEvent::Kind::SequenceStart) {
            m_open.back().expectsKey = m_tree.isInMap();
        }
    }

    void readValue(YamlEvent const& event) {
        DocumentPosition const at = positionOf(event.place);
        switch (event.kind) {
        case YamlEvent::Kind::Scalar: {
            take(event.text.size(), at);
            Kind const kind = event.isNothing()                       ? Kind::Nothing
                              : event.isPlain && isScalar(event.text) ? Kind::Scalar
                                                                      : Kind::Text;
            auto const value = static_cast<Value>(m_tree.size());
            m_tree.add(kind, kind == Kind::Nothing ? "" : event.text, at);
            name(event.anchor, value, false);
            break;
        }
        case YamlEvent::Kind::Alias: {
            Value const named = find(event);
            copy(named, at, at);
            break;
        }
        default: {
            take(0, at);
            bool const isMap = event.kind == YamlEvent::Kind::MappingStart;
            auto const value = static_cast<Value>(m_tree.size());
            m_tree.open(isMap ? Kind::Map : Kind::List, at);
            name(event.anchor, value, true);
            m_open.push_back({value, event.anchor, isMap});
        }
        }
    }

    void readKey(YamlEvent const& event) {
        DocumentPosition const at = positionOf(event.place);
        if (event.kind == YamlEvent::Kind::Alias) {
            m_work.refuse("an alias stands here for a key; write the key itself", at);
        }
        if (event.kind == YamlEvent::Kind::Scalar) {
            m_open.back().mergesNext = event.isPlain && event.text == "<<";
            if (!event.anchor.empty()) {
                m_work.refuse("a key has an anchor here; give it to a value", at);
            }
            takeKey(event.text, at);
            return;
        }
        takeKey(textOfKey(), at);
    }

    void takeKey(std::string const& key, DocumentPosition at) {
        takeBytes(key.size(), at);
        m_tree.key(key);
    }

    /// The text of a list or map that is a key, in one line.
    std::string textOfKey() {
        std::string text;
        std::vector<char> closing;
        bool isFirst = true;
        do {
            YamlEvent const& event =
                closing.empty() ? m_events.current() : m_events.next(); // the first was read
            switch (event.kind) {
            case YamlEvent::Kind::MappingStart:
            case YamlEvent::Kind::SequenceStart: {
                bool const isMap = event.kind == YamlEvent::Kind::MappingStart;
                text += isMap ? '{' : '[';
                closing.push_back(isMap ? '}' : ']');
                isFirst = true;
                break;
            }
            case YamlEvent::Kind::MappingEnd:
            case YamlEvent::Kind::SequenceEnd:
                text += closing.back();
                closing.pop_back();
                isFirst = false;
                break;
            default:
                if (!event.isNothing()) {
                    text.append(isFirst ? "" : " ").append(event.text);
                    isFirst = false;
                }
            }
        } while (!closing.empty());
        return text;
    }

    /// The value of a merge key: an alias, or a list of them.
    void readMerged() {
        bool const isList = m_events.current().kind == YamlEvent::Kind::SequenceStart;
        do {
            YamlEvent const& event = isList ? m_events.next() : m_events.current();
            if (isList && event.kind == YamlEvent::Kind::SequenceEnd) {
                m_open.back().expectsKey = true;
                return;
            }
            if (event.kind != YamlEvent::Kind::Alias) {
                m_work.refuse("\"<<\" takes an alias, or a list of aliases; write one here",
                              positionOf(event.place));
            }
            Value const named = find(event);
            if (m_tree.kind(named) != Kind::Map) {
                m_work.refuse("\"<<\" takes aliases of mappings; " + quotedText(event.text) +
                                  " is none",
                              positionOf(event.place));
            }
            m_open.back().merged.push_back(named);
        } while (isList);
    }

    void close() {
        merge();
        Open const closed = std::move(m_open.back());
        m_open.pop_back();
        Value const second = m_tree.close();
        if (second != SourceTree::None) {
            m_work.refuse("the key " + quotedText(m_tree.keyOf(second)) +
                              " stands twice in one mapping; remove one of the two",
                          m_tree.positionOf(second));
        }
        if (auto const named = m_anchors.find(closed.anchor);
            named != m_anchors.end() && named->second.value == closed.value) {
            named->second.isOpen = false;
        }
        if (!m_open.empty()) {
            m_open.back().expectsKey = m_tree.isInMap();
        }
    }

    /// What the map says itself counts, then what is merged first.
    void merge() {
        Open const& open = m_open.back();
        if (open.merged.empty()) {
            return;
        }
        std::set<std::string> keys;
        for (Value each = m_tree.first(open.value); each != SourceTree::None;
             each = m_tree.next(each)) {
            keys.emplace(m_tree.keyOf(each));
        }
        for (Value const map : open.merged) {
            for (Value each = m_tree.first(map); each != SourceTree::None;
                 each = m_tree.next(each)) {
                std::string const key(m_tree.keyOf(each));
                if (keys.insert(key).second) {
                    DocumentPosition const merged = m_tree.positionOf(open.value);
                    takeKey(key, merged);
                    copy(each, m_tree.positionOf(each), merged);
                }
            }
        }
    }

    void name(std::string const& anchor, Value value, bool isOpen) {
        if (!anchor.empty()) {
            m_anchors[anchor] = {value, isOpen};
        }
    }

    Value find(YamlEvent const& alias) {
        auto const named = m_anchors.find(alias.text);
        if (named == m_anchors.end()) {
            m_work.refuse("nothing before has the anchor " + quotedText(alias.text) +
                              "; correct the alias",
                          positionOf(alias.place));
        }
        if (named->second.isOpen) {
            m_work.refuse("the alias " + quotedText(alias.text) +
                              " stands in what it stands for; write it out",
                          positionOf(alias.place));
        }
        return named->second.value;
    }

    /// A value once more, as if it were written where the alias stands. What is in it keeps its
    /// own place.
    void copy(Value original, DocumentPosition at, DocumentPosition alias) {
        Kind const kind = m_tree.kind(original);
        std::string const text(m_tree.textOf(original));
        take(text.size(), alias);
        if (kind != Kind::List && kind != Kind::Map) {
            m_tree.add(kind, text, at);
            return;
        }
        if (m_tree.depth() >= m_work.request.limits.sourceDepth) {
            m_work.refuse("with what its aliases stand for this is nested more than " +
                              std::to_string(m_work.request.limits.sourceDepth) + " deep",
                          alias);
        }
        m_tree.open(kind, at);
        for (Value each = m_tree.first(original); each != SourceTree::None;
             each = m_tree.next(each)) {
            if (kind == Kind::Map) {
                takeKey(std::string(m_tree.keyOf(each)), alias);
            }
            copy(each, m_tree.positionOf(each), alias);
        }
        m_tree.close();
    }

    void take(std::size_t bytes, DocumentPosition at) {
        if (++m_use.values > m_work.request.limits.sourceValues) {
            m_work.refuse("the source has more than " +
                              std::to_string(m_work.request.limits.sourceValues) +
                              " values, what aliases stand for counted; split it",
                          at);
        }
        takeBytes(bytes, at);
    }

    void takeBytes(std::size_t bytes, DocumentPosition at) {
        m_use.bytes += bytes;
        if (m_use.bytes > m_work.request.limits.sourceBytes) {
            m_work.refuse("the source has more than " +
                              std::to_string(m_work.request.limits.sourceBytes) +
                              " bytes, what aliases stand for counted; split it",
                          at);
        }
    }

    ImportWork& m_work;
    YamlUse& m_use;
    std::string const m_name;
    YamlEvents m_events;
    SourceTree m_tree;
    std::vector<Open> m_open;
    std::map<std::string, Anchor> m_anchors;
};

constexpr char const* adviceOnTemplates =
    "; the text has templates, which are not run: import what they make";

bool isTemplateText(std::string_view text) {
    return text.find("{{") != std::string_view::npos || text.find("{%") != std::string_view::npos;
}

} // namespace

SourceTree readYamlTree(std::string_view yaml, ImportWork& work) {
    YamlUse use;
    return readYamlTree(yaml, work, use);
}

SourceTree readYamlTree(std::string_view yaml, ImportWork& work, YamlUse& use) {
    try {
        return TreeReader(yaml, work, use).read();
    } catch (KRLDocumentException const& problem) {
        work.refuse(problem.GetProblem() + (isTemplateText(yaml) ? adviceOnTemplates : ""),
                    {problem.GetLine(), problem.GetColumn()});
    }
}

bool isTemplate(SourceTree const& tree, Value value) {
    if (tree.kind(value) == Kind::Map) {
        Value const first = tree.first(value);
        return first != SourceTree::None && tree.keyOf(first).starts_with('{');
    }
    return isTemplateText(tree.textOf(value));
}

bool holdsTemplate(SourceTree const& tree, Value value) {
    if (isTemplate(tree, value)) {
        return true;
    }
    for (Value each = tree.first(value); each != SourceTree::None; each = tree.next(each)) {
        if (isTemplateText(tree.keyOf(each)) || holdsTemplate(tree, each)) {
            return true;
        }
    }
    return false;
}

} // namespace vex
