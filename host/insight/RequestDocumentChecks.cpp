#include "host/insight/RequestDocumentChecks.h"

#include "host/insight/ModelFindings.h"
#include "host/insight/NearestWord.h"
#include "resources.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>

namespace vex {

namespace {

constexpr std::size_t mostFindings = 50; // no more are read at once

constexpr char const* metadataTag = "Metadata";
constexpr char const* functionsTag = "Functions";

std::vector<I18NString> const& readTags() {
    static std::vector<I18NString> const tags{metadataTag, functionsTag, "Property", "Constraint"};
    return tags;
}

std::vector<I18NString> const& readOptions() {
    static std::vector<I18NString> const options{
        "Depth",        "start_at",
        "start_atPath", "start_atRef",
        "function",     "authoringLocale",
        "xml:lang",     resources::getString(resources::SecurityView)};
    return options;
}

bool contains(std::vector<I18NString> const& list, I18NString const& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// What says something about the document itself.
bool belongsToXml(I18NString const& attribute) {
    std::u16string_view const name = attribute.view();
    return name == u"xmlns" || name.starts_with(u"xmlns:") || name.starts_with(u"xsi:") ||
           name.starts_with(u"xml:");
}

class RequestDocumentCheck {
public:
    RequestDocumentCheck(DocumentOutline const& outline, std::string const& file)
        : m_outline(outline), m_file(file), m_holdsRead(outline.size(), false) {
        for (std::size_t at = outline.size(); at-- > 0;) {
            OutlinedElement const element = outline[at];
            if (element.container != OutlinedElement::None &&
                (m_holdsRead[at] || contains(readTags(), element.tag))) {
                m_holdsRead[element.container] = true;
            }
        }
    }

    Diagnostics run() {
        for (std::size_t at = 0; at < m_outline.size(); ++at) {
            if (m_found.size() >= mostFindings) {
                warn(m_outline[at], "what follows was not looked at; correct this first");
                break;
            }
            OutlinedElement const element = m_outline[at];
            if (!contains(readTags(), element.tag)) {
                checkUnread(element, m_holdsRead[at]);
            } else if (element.attributes.empty() && element.tag != metadataTag) {
                warn(element, called(element) + " has no attribute, so it says nothing");
            } else if (element.tag == metadataTag) {
                checkOptions(element);
            }
            if (!element.text.empty()) {
                warn(element, "nothing reads the text " + shown(element.text) + " in " +
                                  called(element) + "; write it as an attribute");
            }
        }
        return std::move(m_found);
    }

private:
    static std::string shown(I18NString const& text) {
        constexpr int longest = 40;
        return text.length() <= longest ? inQuotes(text)
                                        : inQuotes(text.substring(0, longest) + "...");
    }

    static std::string called(OutlinedElement const& element) {
        return "the element " + shown(element.tag);
    }

    void warn(OutlinedElement const& at, std::string text) {
        m_found.push_back(
            {Severity::Warning, "", m_file, at.position.line, at.position.column, std::move(text)});
    }

    /// Around what is read an element may stand that says nothing itself.
    void checkUnread(OutlinedElement const& element, bool holdsRead) {
        I18NString const* const nearest = nearestWord(element.tag, readTags());
        if (nearest != nullptr || !holdsRead || !element.attributes.empty()) {
            warn(element, "nothing reads " + called(element) +
                              didYouMean(nearest == nullptr ? "" : nearest->toUtf8()));
        }
    }

    void checkOptions(OutlinedElement const& element) {
        for (auto const& [name, value] : element.attributes) {
            if (!contains(readOptions(), name)) {
                checkUnknown(element, name);
                continue;
            }
            if (name == "Depth" && !value.empty() && !isWholeNumber(value)) {
                warn(element, "the Depth " + shown(value) +
                                  " is no whole number; it is read as far "
                                  "as it is one, and as 0, everything, "
                                  "where it is none");
            }
            auto const [first, isFirst] = m_options.try_emplace(name, value);
            if (!isFirst && first->second != value) {
                warn(element, "the attribute " + shown(name) +
                                  " stands here for the second time, "
                                  "as " +
                                  shown(value) + "; the first counts, " + shown(first->second));
            }
        }
    }

    void checkUnknown(OutlinedElement const& element, I18NString const& name) {
        if (belongsToXml(name)) {
            return;
        }
        I18NString const* const nearest = nearestWord(name, readOptions());
        warn(element, "nothing reads the attribute " + shown(name) + " of " + called(element) +
                          didYouMean(nearest == nullptr ? "" : nearest->toUtf8()));
    }

    static bool isWholeNumber(I18NString const& text) {
        std::string const digits = text.toUtf8();
        char* end = nullptr;
        errno = 0;
        static_cast<void>(std::strtol(digits.c_str(), &end, 10));
        return *end == '\0' && errno == 0;
    }

    DocumentOutline const& m_outline;
    std::string const& m_file;
    std::vector<bool> m_holdsRead;              // for each element, whether something in it is read
    std::map<I18NString, I18NString> m_options; // seen so far, with what counts
    Diagnostics m_found;
};

} // namespace

Diagnostics checkRequestDocument(DocumentOutline const& outline, std::string const& file) {
    return RequestDocumentCheck(outline, file).run();
}

} // namespace vex
