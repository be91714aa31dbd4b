#include "host/service/SuggestionCandidates.h"

#include <algorithm>

namespace vex {

namespace {

constexpr std::size_t mostKept = 64;

bool areAll(std::vector<bool> const& verdicts, std::size_t count) {
    return verdicts.size() == count &&
           std::find(verdicts.begin(), verdicts.end(), false) == verdicts.end();
}

} // namespace

void SuggestionCandidates::add(SuggestionCandidate const& found) {
    m_found.push_back(found);
    if (m_found.size() == 2 * mostKept) {
        keepNearest();
    }
}

void SuggestionCandidates::keepNearest() {
    std::stable_sort(m_found.begin(), m_found.end(),
                     [](SuggestionCandidate const& a, SuggestionCandidate const& b) {
                         return a.distance < b.distance;
                     });
    m_found.resize(std::min(m_found.size(), mostKept));
}

std::vector<SuggestionCandidate> SuggestionCandidates::takeNamed(MayBeNamed const& mayBeNamed) {
    keepNearest();
    if (!mayBeNamed || m_found.empty()) {
        return std::move(m_found);
    }
    Vex_Handle_Collection objects;
    for (SuggestionCandidate const& each : m_found) {
        objects.push_back(each.object);
    }
    std::vector<bool> const verdicts = mayBeNamed(objects);
    std::vector<SuggestionCandidate> named;
    for (std::size_t index = 0; index < m_found.size() && index < verdicts.size(); ++index) {
        if (verdicts[index]) {
            named.push_back(m_found[index]);
        }
    }
    return named;
}

bool SuggestionCandidates::mayNameAll(SuggestedText const& text, MayBeNamed const& mayBeNamed) {
    if (!mayBeNamed || text.text.empty() || text.named.size() <= 1) {
        return true; // the element itself was asked about
    }
    Vex_Handle_Collection others;
    for (std::size_t index = 0; index + 1 < text.named.size(); ++index) {
        others.push_back(text.named[index]);
    }
    return areAll(mayBeNamed(others), others.size());
}

} // namespace vex
