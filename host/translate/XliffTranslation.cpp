#include "host/translate/XliffTranslation.h"

#include "I18NString.h"
#include "KRLException.h"
#include "host/import/xml/ElementTree.h"
#include "host/import/xml/XmlText.h"
#include "host/translate/TranslationMarks.h"

#include <algorithm>
#include <set>
#include <utility>

namespace vex {

namespace {

constexpr std::string_view xliffSpace = "urn:oasis:names:tc:xliff:document:2.0";
constexpr std::string_view categoryOfMark = "mark";
constexpr std::string_view categoryOfNote = "object";

/// "de-AT" for "de_AT", as XML writes languages.
std::string languageTag(I18NLocale locale) {
    std::string tag = locale.getName().toUtf8();
    std::replace(tag.begin(), tag.end(), '_', '-');
    return tag;
}

class XliffWriter {
public:
    explicit XliffWriter(TranslationFile const& file) : m_file(file) {}

    std::string write() && {
        m_text.open("xliff");
        m_text.attribute("xmlns", xliffSpace);
        m_text.attribute("version", "2.0");
        m_text.attribute("srcLang", languageTag(m_file.sourceLocale));
        if (m_file.targetLocale) {
            m_text.attribute("trgLang", languageTag(*m_file.targetLocale));
        }
        m_text.open("file");
        m_text.attribute("id", "model");
        if (!m_file.original.empty()) {
            m_text.attribute("original", m_file.original);
        }
        m_text.attribute("canResegment", "no");
        std::string const* object = nullptr;
        for (TranslationUnit const& unit : m_file.units) {
            if (object == nullptr || *object != unit.object) {
                if (object != nullptr) {
                    m_text.close();
                }
                m_text.open("group");
                m_text.attribute("id", "g" + std::to_string(++m_groups));
                m_text.attribute("name", unit.object);
                object = &unit.object;
            }
            write(unit);
        }
        if (object != nullptr) {
            m_text.close();
        } else {
            writeNothing();
        }
        m_text.close();
        m_text.close();
        return std::move(m_text).take();
    }

private:
    void write(TranslationUnit const& unit) {
        m_text.open("unit");
        m_text.attribute("id", "u" + std::to_string(++m_units));
        m_text.attribute("name", unit.property);
        bool const isMarked = unit.mark != TranslationMark::None;
        if (isMarked || !unit.note.empty()) {
            m_text.open("notes");
            if (isMarked) {
                note(categoryOfMark, translationMarkName(unit.mark));
            }
            if (!unit.note.empty()) {
                note(categoryOfNote, unit.note);
            }
            m_text.close();
        }
        m_text.open("segment");
        bool const isDone = !unit.target.empty() && !isMarked;
        m_text.attribute("state", isDone ? "translated" : "initial");
        text("source", unit.source);
        if (!unit.target.empty()) {
            text("target", unit.target);
        }
        m_text.close();
        m_text.close();
    }

    void note(std::string_view category, std::string_view text) {
        m_text.open("note");
        m_text.attribute("category", category);
        m_text.text(text);
        m_text.close();
    }

    void text(char const* tag, std::string const& text) {
        m_text.open(tag);
        m_text.attribute("xml:space", "preserve");
        m_text.text(text);
        m_text.close();
    }

    // A file of the format is never empty.
    void writeNothing() {
        m_text.open("unit");
        m_text.attribute("id", "u0");
        m_text.attribute("translate", "no");
        m_text.open("segment");
        m_text.element("source", "");
        m_text.close();
        m_text.close();
    }

    TranslationFile const& m_file;
    XmlText m_text;
    std::size_t m_groups = 0;
    std::size_t m_units = 0;
};

class XliffReader {
public:
    XliffReader(std::string_view text, std::string const& name) : m_name(name) {
        MemorySource source(text);
        m_tree = readElementTree(source, name);
    }

    TranslationFile read() && {
        readRoot();
        struct Open {
            ElementTree::Element next;
            std::string object;
        };
        std::vector<Open> open{{m_tree.first(ElementTree::Root), ""}};
        while (!open.empty()) {
            ElementTree::Element const each = open.back().next;
            if (each == ElementTree::None) {
                open.pop_back();
                continue;
            }
            open.back().next = m_tree.next(each);
            if (is(each, "unit")) {
                readUnit(each, open.back().object);
            } else if (is(each, "group") || is(each, "file")) {
                auto const name = m_tree.find(each, "name");
                open.push_back({m_tree.first(each), std::string(name.value_or(""))});
            }
        }
        return std::move(m_file);
    }

private:
    bool is(ElementTree::Element element, std::string_view name) const {
        return m_tree.nameOf(element) == name && m_tree.spaceOf(element) == xliffSpace;
    }

    [[noreturn]] void fail(std::string const& text, ElementTree::Element at) const {
        DocumentPosition const position = m_tree.positionOf(at);
        throw KRLDocumentException(m_name, position.line, position.column, text);
    }

    void readRoot() {
        std::string_view const version = m_tree.find(ElementTree::Root, "version").value_or("");
        if (!is(ElementTree::Root, "xliff") || !version.starts_with("2.")) {
            fail("this is no XLIFF of version 2; export the translations as XLIFF 2.0, namespace " +
                     std::string(xliffSpace),
                 ElementTree::Root);
        }
        if (auto const source = localeIn("srcLang")) {
            m_file.sourceLocale = *source;
        }
        m_file.targetLocale = localeIn("trgLang");
        auto const file = m_tree.first(ElementTree::Root);
        if (file != ElementTree::None) {
            m_file.original = m_tree.find(file, "original").value_or("");
        }
    }

    std::optional<I18NLocale> localeIn(char const* attribute) const {
        auto const written = m_tree.find(ElementTree::Root, attribute);
        if (!written) {
            return std::nullopt;
        }
        I18NString const name = I18NString::fromUtf8(*written);
        if (!I18NLocale::isKnown(name)) {
            fail(std::string(attribute) + " is \"" + std::string(*written) +
                     "\", which is no known language; write one like de or de-AT",
                 ElementTree::Root);
        }
        return I18NLocale(name);
    }

    void readUnit(ElementTree::Element element, std::string const& object) {
        if (m_tree.find(element, "translate") == "no") {
            return; // nothing is asked of who translates
        }
        auto const property = m_tree.find(element, "name");
        if (object.empty() || !property || property->empty()) {
            fail("the unit is not in a group whose name is the id of an object, or has no name "
                 "that is a property; export the texts again and keep both",
                 element);
        }
        TranslationUnit unit{.object = object, .property = std::string(*property), .source = {}};
        unit.position = m_tree.positionOf(element);
        bool isWhole = true;
        bool isRevised = false;
        for (auto each = m_tree.first(element); each != ElementTree::None;
             each = m_tree.next(each)) {
            if (is(each, "segment") || is(each, "ignorable")) {
                isWhole = readSegment(each, unit) && isWhole;
                isRevised =
                    isRevised || m_tree.find(each, "state").value_or("initial") != "initial";
            } else if (is(each, "notes")) {
                readNotes(each, unit);
            }
        }
        if (!isWhole && !unit.target.empty()) {
            fail("a part of the unit is not translated; translate every segment of it, or none",
                 element);
        }
        if (isRevised && unit.mark == TranslationMark::Changed) {
            unit.mark = TranslationMark::None; // somebody has seen to it
        }
        if (!m_known.emplace(unit.object, unit.property).second) {
            fail("the " + unit.property + " of \"" + unit.object +
                     "\" stands in a unit before; remove one of the two",
                 element);
        }
        m_file.units.push_back(std::move(unit));
    }

    /// False for a segment without a target.
    bool readSegment(ElementTree::Element segment, TranslationUnit& unit) {
        bool const isBetween = is(segment, "ignorable");
        std::string source;
        std::optional<std::string> target;
        for (auto each = m_tree.first(segment); each != ElementTree::None;
             each = m_tree.next(each)) {
            if (is(each, "source")) {
                source = plainText(each);
            } else if (is(each, "target")) {
                target = plainText(each);
            }
        }
        unit.source += source;
        unit.target += target.value_or(isBetween ? source : "");
        return isBetween || (target && !target->empty());
    }

    std::string plainText(ElementTree::Element text) const {
        auto const inlined = m_tree.first(text);
        if (inlined != ElementTree::None) {
            fail("the " + std::string(m_tree.nameOf(text)) + " holds the inline element \"" +
                     std::string(m_tree.writtenNameOf(inlined)) +
                     "\"; texts of a model are plain, so write it as text",
                 inlined);
        }
        return m_tree.textOf(text);
    }

    void readNotes(ElementTree::Element notes, TranslationUnit& unit) {
        for (auto each = m_tree.first(notes); each != ElementTree::None; each = m_tree.next(each)) {
            auto const category = m_tree.find(each, "category");
            if (category == categoryOfMark) {
                unit.mark = findTranslationMark(m_tree.textOf(each)).value_or(unit.mark);
            } else if (category == categoryOfNote) {
                unit.note = m_tree.textOf(each);
            }
        }
    }

    std::string const& m_name;
    ElementTree m_tree;
    TranslationFile m_file;
    std::set<std::pair<std::string, std::string>> m_known;
};

} // namespace

std::string writeXliff(TranslationFile const& file) {
    return XliffWriter(file).write();
}

TranslationFile readXliff(std::string_view text, std::string const& name) {
    return XliffReader(text, name).read();
}

} // namespace vex
