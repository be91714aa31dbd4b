#include "tests/naive/GeneratorSupport.h"

#include <numeric>

namespace naive {

namespace {

void collectBelow(Handle element, Handles& all) {
    for (auto const& child : element->children) {
        all.push_back(child.get());
        collectBelow(child.get(), all);
    }
}

} // namespace

std::size_t Random::weighted(std::vector<int> const& weights) {
    int left = between(1, std::accumulate(weights.begin(), weights.end(), 0));
    std::size_t index = 0;
    while (left > weights[index]) {
        left -= weights[index];
        ++index;
    }
    return index;
}

std::string attribute(std::string const& name, std::string const& value) {
    return " " + name + "=\"" + escapedAttribute(fromUtf8(value)) + "\"";
}

Text quotedPath(Texts const& names) {
    Text path;
    for (Text const& name : names) {
        path += path.empty() ? u"[" : u".[";
        for (char16_t const unit : name) {
            path += unit;
            if (unit == u']') {
                path += unit;
            }
        }
        path += u"]";
    }
    return path;
}

Handles allObjects(PlainModel const& model) {
    Handles all;
    collectBelow(model.root(), all);
    return all;
}

} // namespace naive
