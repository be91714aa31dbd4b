#pragma once

#include "host/service/MetadataRequest.h"

#include <cstddef>
#include <set>
#include <vector>

namespace vex {

/// The paths and references that a request may start at; none when it starts at
/// the root namespace.
std::vector<I18NString> startsOf(MetadataRequest const& request);

/// The properties that a request names for a class; `all` when it names them
/// all.
struct RequestedProperties {
    std::set<I18NString> names;
    bool all = false;
};
RequestedProperties propertiesOf(MetadataRequest const& request, I18NString const& cls);

/// How often an answer goes through one collection of a class. The word for all
/// collections counts unless `literally`.
std::size_t timesThrough(MetadataRequest const& request, I18NString const& cls,
                         I18NString const& collection, bool literally);

} // namespace vex
