#pragma once

#include <sstream>
#include <string>

/// What `writeJson` writes of these.
template <class... Values> std::string jsonOf(Values const&... values) {
    std::ostringstream out;
    writeJson(out, values...);
    return out.str();
}

/// What `writeSarif` writes of these.
template <class... Values> std::string sarifLogOf(Values const&... values) {
    std::ostringstream out;
    writeSarif(out, values...);
    return out.str();
}
