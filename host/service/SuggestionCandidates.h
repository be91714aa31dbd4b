#pragma once

#include "VexObject.h"
#include "host/service/NameSuggestion.h"
#include "host/service/SuggestedText.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vex {

/// An element that a text may have meant.
struct SuggestionCandidate {
    VEX_HANDLE object;
    VEX_HANDLE start;         // of the path to be written; null for a reference
    bool isFoundById = false; // then its id may stand for it where the names may not
    std::size_t distance = 0; // 0 when it is what the text says, however that is written
};

/// What was found, from which the nearest that may be named are chosen. Keeps few, and no
/// texts: those are made for what is chosen.
class SuggestionCandidates {
public:
    void add(SuggestionCandidate const& found);

    /// The nearest, three at most, as `write` writes them. What is not an element that may
    /// be named, or would name one beside it that may not be, is passed over.
    template <class Write>
    std::vector<Suggestion> choose(MayBeNamed const& mayBeNamed, Write const& write);

private:
    void keepNearest();
    /// Those that may be named, the nearest first.
    std::vector<SuggestionCandidate> takeNamed(MayBeNamed const& mayBeNamed);
    static bool mayNameAll(SuggestedText const& text, MayBeNamed const& mayBeNamed);

    std::vector<SuggestionCandidate> m_found; // those found first before those alike
};

template <class Write>
std::vector<Suggestion> SuggestionCandidates::choose(MayBeNamed const& mayBeNamed,
                                                     Write const& write) {
    constexpr std::size_t shown = 3;
    std::vector<Suggestion> chosen;
    std::size_t furthest = 0;
    for (SuggestionCandidate const& each : takeNamed(mayBeNamed)) {
        if (chosen.size() == shown || (!chosen.empty() && each.distance > furthest)) {
            break;
        }
        bool const isKnown =
            std::any_of(chosen.begin(), chosen.end(), [&](Suggestion const& suggestion) {
                return suggestion.object == each.object; // each is suggested once
            });
        if (isKnown) {
            continue;
        }
        SuggestedText text = write(each);
        if (!mayNameAll(text, mayBeNamed)) {
            text.text = {};
        }
        if (text.text.empty() && each.isFoundById) {
            VexObject(each.object).GetId(text.text);
        }
        if (text.text.empty()) {
            continue;
        }
        if (chosen.empty()) { // beside what is meant, a slip of the hand is unlikely
            furthest = each.distance == 0 ? 0 : each.distance + 1;
        }
        chosen.push_back({each.object, text.text});
    }
    return chosen;
}

} // namespace vex
