#include "tests/naive/GeneratorSupport.h"

#include <numeric>

namespace naive {

namespace {

void collectBelow(Handle element, Handles& all) {
    for (const auto& child : element->children) {
        all.push_back(child.get());
        collectBelow(child.get(), all);
    }
}

} // namespace

std::size_t Random::weighted(const std::vector<int>& weights) {
    int left = between(1, std::accumulate(weights.begin(), weights.end(), 0));
    std::size_t index = 0;
    while (left > weights[index]) {
        left -= weights[index];
        ++index;
    }
    return index;
}

std::string attribute(const std::string& name, const std::string& value) {
    return " " + name + "=\"" + escapedAttribute(fromUtf8(value)) + "\"";
}

Text quotedPath(const Texts& names) {
    Text path;
    for (const Text& name : names) {
        path += path.empty() ? u"[" : u".[";
        for (const char16_t unit : name) {
            path += unit;
            if (unit == u']') {
                path += unit;
            }
        }
        path += u"]";
    }
    return path;
}

Handles allObjects(const PlainModel& model) {
    Handles all;
    collectBelow(model.root(), all);
    return all;
}

} // namespace naive
