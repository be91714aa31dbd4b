#include "host/insight/RequestedParts.h"

#include "KRLIDOM_Attr.h"
#include "KRLIDOM_Element.h"
#include "KRLIDOM_NamedNodeMap.h"
#include "resources.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace vex {

namespace {

constexpr short elementNode = 1;
constexpr char16_t wildcard = u'*';
/// Where a request says where to start.
constexpr char const* startOptions[] = {"start_at", "start_atPath", "start_atRef"};

/// What an entry for the start object, for every class and for one begins with.
std::array<I18NString, 3> prefixesOf(I18NString const& cls, char const* end) {
    return {I18NString("./") + end, I18NString("*/") + end, cls + "/" + end};
}

/// The rest of an entry behind a prefix; null when it begins otherwise.
bool takeRest(I18NString const& entry, I18NString const& prefix, I18NString& rest) {
    if (entry.find(prefix) != 0) {
        return false;
    }
    rest = entry.substring(prefix.length());
    return true;
}

} // namespace

RequestedParts::RequestedParts(KRLIDOM_Document const& request) {
    Read(request.getDocumentElement());
}

void RequestedParts::Read(KRLIDOM_Node const& element) {
    KRLIDOM_NamedNodeMap const attributes = element.getAttributes();
    for (std::size_t index = 0; index < attributes.getLength(); ++index) {
        KRLIDOM_Attr const attribute = attributes.item(index);
        take(element.getNodeName(), attribute.getName(), attribute.getValue());
    }
    for (KRLIDOM_Node child = element.getFirstChild(); !child.isNull();
         child = child.getNextSibling()) {
        if (child.getNodeType() == elementNode) {
            Read(child);
        }
    }
}

void RequestedParts::take(I18NString const& tag, I18NString const& name, I18NString const& value) {
    if (tag == "Metadata" || tag == "Functions") {
        if (tag == "Functions") {
            m_options.try_emplace("function", "1");
        }
        m_options.try_emplace(name, value);
    } else if (tag == "Property") {
        (value.find(u'@') < 0 ? m_collections : m_properties).push_back(value);
        m_settings += value.find("/@") == 0 ? 1U : 0U;
    }
}

long RequestedParts::depth() const {
    auto const depth = m_options.find("Depth");
    return depth == m_options.end() ? 0 : std::strtol(depth->second.c_str(), nullptr, 10);
}

std::vector<I18NString> RequestedParts::starts() const {
    std::vector<I18NString> starts;
    for (char const* const option : startOptions) {
        auto const start = m_options.find(option);
        if (start != m_options.end() && !start->second.empty()) {
            starts.push_back(start->second);
        }
    }
    return starts;
}

RequestedParts::Properties RequestedParts::propertiesOf(I18NString const& cls) const {
    Properties properties;
    for (I18NString const& prefix : prefixesOf(cls, "@")) {
        for (I18NString const& entry : m_properties) {
            I18NString rest;
            if (takeRest(entry, prefix, rest)) {
                properties.all = properties.all || rest[0] == wildcard;
                properties.names.insert(rest);
            }
        }
    }
    return properties;
}

std::size_t RequestedParts::timesThrough(I18NString const& cls, I18NString const& collection,
                                         bool literally) const {
    std::size_t times = 0;
    bool all = false;
    for (I18NString const& prefix : prefixesOf(cls, "")) {
        for (I18NString const& entry : m_collections) {
            I18NString rest;
            if (takeRest(entry, prefix, rest)) {
                times += rest == collection ? 1U : 0U;
                all = all || rest[0] == wildcard;
            }
        }
    }
    bool const isAlways = collection == resources::getString(resources::Shortcut) ||
                          collection == resources::getString(resources::Namespace);
    times += isAlways ? 1U : 0U; // whatever the request says
    return all && !literally ? std::max<std::size_t>(times, 1) : times;
}

} // namespace vex
