#include "host/insight/RequestedParts.h"

#include "resources.h"

#include <algorithm>
#include <array>

namespace vex {

namespace {

constexpr char16_t wildcard = u'*';
/// Says where to start too, in another spelling.
constexpr char const* startPathOption = "start_atPath";

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

std::vector<I18NString> startsOf(MetadataRequest const& request) {
    std::vector<I18NString> starts{request.start, request.reference};
    auto const path = request.otherOptions.find(startPathOption);
    if (path != request.otherOptions.end()) {
        starts.push_back(path->second);
    }
    std::erase_if(starts, [](I18NString const& start) { return start.empty(); });
    return starts;
}

RequestedProperties propertiesOf(MetadataRequest const& request, I18NString const& cls) {
    RequestedProperties properties;
    for (I18NString const& prefix : prefixesOf(cls, "@")) {
        for (I18NString const& entry : request.properties) {
            I18NString rest;
            if (takeRest(entry, prefix, rest)) {
                properties.all = properties.all || rest[0] == wildcard;
                properties.names.insert(rest);
            }
        }
    }
    return properties;
}

std::size_t timesThrough(MetadataRequest const& request, I18NString const& cls,
                         I18NString const& collection, bool literally) {
    std::size_t times = 0;
    bool all = false;
    for (I18NString const& prefix : prefixesOf(cls, "")) {
        for (I18NString const& entry : request.collections) {
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
