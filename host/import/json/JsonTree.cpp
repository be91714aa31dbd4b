#include "host/import/json/JsonTree.h"

#include "host/import/draft/ImportWork.h"
#include "host/import/draft/PlainText.h"

#include <iterator>
#include <string>

#include <nlohmann/json.hpp>

namespace vex {

namespace {

/// Counts lines and characters on the way.
struct ReadingPlace {
    DocumentPosition at{1, 1};     // of the character to be read next
    DocumentPosition before{1, 1}; // of the one read last
    std::size_t offset = 0;

    void pass(char unit) {
        ++offset;
        before = at;
        if (unit == '\n') {
            at = {at.line + 1, 1};
        } else if ((static_cast<unsigned char>(unit) & 0xC0U) != 0x80U) {
            ++at.column; // not for the further bytes of a character
        }
    }
};

class CountedByte {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    CountedByte(char const* at, ReadingPlace* place) : m_at(at), m_place(place) {}
    reference operator*() const { return *m_at; }
    CountedByte& operator++() {
        m_place->pass(*m_at++);
        return *this;
    }
    CountedByte operator++(int) {
        CountedByte const before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(CountedByte a, CountedByte b) { return a.m_at == b.m_at; }

private:
    char const* m_at;
    ReadingPlace* m_place;
};

class TreeBuilder final : public nlohmann::json_sax<nlohmann::json> {
public:
    TreeBuilder(std::string_view json, ReadingPlace const& place, ImportWork& work)
        : m_json(json), m_place(place), m_work(work) {}

    bool null() override { return scalar(SourceTree::Kind::Nothing, ""); }
    bool boolean(bool value) override {
        return scalar(SourceTree::Kind::Scalar, value ? "true" : "false");
    }
    bool number_integer(number_integer_t value) override {
        return scalar(SourceTree::Kind::Scalar, std::to_string(value));
    }
    bool number_unsigned(number_unsigned_t value) override {
        return scalar(SourceTree::Kind::Scalar, std::to_string(value));
    }
    bool number_float(number_float_t /*value*/, string_t const& text) override {
        return scalar(SourceTree::Kind::Scalar, text);
    }
    bool string(string_t& text) override {
        take();
        tree.add(SourceTree::Kind::Text, text, startOfText());
        return true;
    }
    bool binary(binary_t& /*bytes*/) override { return false; } // JSON has none
    bool start_object(std::size_t /*size*/) override { return open(SourceTree::Kind::Map); }
    bool start_array(std::size_t /*size*/) override { return open(SourceTree::Kind::List); }
    bool end_array() override {
        tree.close();
        return true;
    }
    bool end_object() override {
        SourceTree::Value const second = tree.close();
        if (second != SourceTree::None) {
            m_work.refuse("the key " + quotedText(tree.keyOf(second)) +
                              " stands twice in one object; remove one of the two",
                          tree.positionOf(second));
        }
        return true;
    }
    bool key(string_t& text) override {
        tree.key(text);
        m_key = startOfText();
        return true;
    }
    bool parse_error(std::size_t /*position*/, std::string const& /*token*/,
                     nlohmann::json::exception const& problem) override {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: what is wrong"
        std::string text = problem.what();
        std::size_t const behindPlace = text.find(": ");
        text.erase(0, behindPlace == std::string::npos ? 0 : behindPlace + 2);
        m_work.refuse("this is not JSON, correct it here: " + text, m_place.before);
    }

    SourceTree tree;

private:
    /// Where a number begins nobody tells, so it stands where its key does.
    bool scalar(SourceTree::Kind kind, std::string_view text) {
        take();
        tree.add(kind, text, tree.isInMap() ? m_key : m_place.before);
        return true;
    }

    bool open(SourceTree::Kind kind) {
        take();
        if (tree.depth() >= m_work.request.limits.sourceDepth) {
            m_work.refuse("values are nested more than " +
                              std::to_string(m_work.request.limits.sourceDepth) +
                              " deep; flatten the source here",
                          m_place.before);
        }
        tree.open(kind, m_place.before);
        return true;
    }

    void take() {
        if (tree.size() >= m_work.request.limits.sourceValues) {
            m_work.refuse("the source has more than " +
                              std::to_string(m_work.request.limits.sourceValues) +
                              " values; split it",
                          m_place.before);
        }
    }

    /// Where the text that was just read begins: the parser tells no more than where it ends.
    /// No quote stands in it without a backslash before.
    DocumentPosition startOfText() const {
        std::size_t start = m_place.offset - 1; // its closing quote
        std::size_t characters = 0;
        for (;;) {
            --start;
            if ((static_cast<unsigned char>(m_json[start]) & 0xC0U) != 0x80U) {
                ++characters;
            }
            if (m_json[start] != '"') {
                continue;
            }
            std::size_t backslashes = 0;
            while (start > backslashes && m_json[start - 1 - backslashes] == '\\') {
                ++backslashes;
            }
            if (backslashes % 2 == 0) {
                return {m_place.before.line, m_place.before.column - characters};
            }
        }
    }

    std::string_view m_json;
    ReadingPlace const& m_place;
    DocumentPosition m_key{}; // of the one that came last
    ImportWork& m_work;
};

} // namespace

SourceTree readJsonTree(std::string_view json, ImportWork& work) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (json.starts_with(byteOrderMark)) {
        json.remove_prefix(byteOrderMark.size());
    }
    ReadingPlace place;
    TreeBuilder builder(json, place, work);
    nlohmann::json::sax_parse(CountedByte(json.data(), &place),
                              CountedByte(json.data() + json.size(), &place), &builder);
    return std::move(builder.tree);
}

} // namespace vex
