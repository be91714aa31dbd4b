#include "host/service/NameSuggestion.h"

#include "KRLException.h"
#include "VexObject.h"
#include "host/service/EditDistance.h"
#include "host/service/NamesOnTheWay.h"
#include "host/service/ObjectName.h"
#include "host/service/SuggestionCandidates.h"
#include "host/store/image/Budget.h"

#include <algorithm>
#include <optional>

namespace vex {

namespace {

constexpr int longestText = 256;           // what is longer was not typed
constexpr std::size_t mostSteps = 200'000; // a few milliseconds

/// How far a slip of the hand may lead.
std::size_t allowance(std::size_t length) {
    constexpr std::size_t charactersForEach = 4;
    return std::max<std::size_t>(length < charactersForEach ? 1 : 2, length / charactersForEach);
}

/// How far a text is from what was asked for; nothing when it is too far.
std::optional<std::size_t> distanceBetween(I18NString const& asked, I18NString const& text) {
    std::size_t const allowed = allowance(static_cast<std::size_t>(asked.length()));
    std::size_t const distance = editDistance(asked.view(), text.view(), allowed);
    return text.empty() || distance > allowed ? std::nullopt : std::optional(distance);
}

/// Goes through the elements whose own names are near the last one asked for, or that all
/// the names lead to: a text that is near has such a name. `take` gets each, and whether
/// they do.
template <class Take>
void forEachNear(Model const& model, NamesOnTheWay const& names, I18NLocale const& locale,
                 Take const& take) {
    std::size_t const allowed = allowance(names.last().size());
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        bool const isMeant = names.leadTo(element);
        if (isMeant ||
            editDistance(nameIn(locale, element).view(), names.last(), allowed) <= allowed) {
            take(element, isMeant);
        }
    }
}

/// Goes through the elements whose ids are near the text. `take` gets the element and how
/// far its id is.
template <class Take>
void forEachNearId(Model const& model, I18NString const& text, Take const& take) {
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        Budget::charge();
        VEX_HANDLE const element = model.getElement(index);
        I18NString id;
        if (!VexObject(element).GetId(id)) {
            continue;
        }
        if (auto const distance = distanceBetween(text, id)) {
            take(element, *distance);
        }
    }
}

/// The namespace that the names begin with; else the outermost.
VEX_HANDLE mostLike(NamesOnTheWay const& names, std::vector<VEX_HANDLE> const& starts) {
    auto const like = std::find_if(starts.begin(), starts.end(),
                                   [&](VEX_HANDLE start) { return names.beginAt(start); });
    return like != starts.end() ? *like : starts.empty() ? VEX_HANDLE() : starts.back();
}

/// Searches, as far as the work for a suggestion may go. False when another limit of the
/// call ended it.
template <class Search> bool searchAWhile(Search const& search) {
    Budget const work({.steps = mostSteps});
    try {
        search();
        return true;
    } catch (KRLLimitException const& /*stopped*/) {
        return work.isSpent();
    }
}

/// What `make` gives; nothing when a limit of the call ends it.
template <class Make> std::vector<Suggestion> orNothing(Make const& make) {
    try {
        return make();
    } catch (KRLLimitException const& /*stopped*/) {
        return {};
    }
}

/// Those of them that a text may have meant as ids or references.
void searchObjects(Model const& model, I18NString const& text, SuggestionCandidates& candidates) {
    NamesOnTheWay const names(model, text);
    forEachNear(model, names, model.defaultLocale(), [&](VEX_HANDLE element, bool isMeant) {
        I18NString reference = referenceTo(model, element).text;
        bool const isFoundById = reference.empty();
        if (isFoundById) {
            VexObject(element).GetId(reference);
        }
        auto const distance = distanceBetween(text, reference);
        if ((isMeant && !reference.empty()) || distance) {
            candidates.add({element, {}, isFoundById, isMeant ? 0 : *distance});
        }
    });
    forEachNearId(model, text, [&](VEX_HANDLE element, std::size_t distance) {
        candidates.add({element, {}, true, distance});
    });
}

/// Those of them that a text may have meant as paths.
void searchPaths(Model const& model, I18NString const& text, I18NLocale const& locale,
                 SuggestionCandidates& candidates) {
    NamesOnTheWay const names(model, text, locale);
    forEachNear(model, names, locale, [&](VEX_HANDLE element, bool isMeant) {
        std::vector<VEX_HANDLE> const starts = pathStartsOf(element);
        if (isMeant && !starts.empty()) {
            candidates.add({element, mostLike(names, starts)});
            return;
        }
        for (VEX_HANDLE const start : starts) {
            if (auto const distance = distanceBetween(text, pathTo(element, start, locale).text)) {
                candidates.add({element, start, false, *distance});
            }
        }
    });
    forEachNearId(model, text, [&](VEX_HANDLE element, std::size_t distance) {
        std::vector<VEX_HANDLE> const starts = pathStartsOf(element);
        candidates.add({element, starts.empty() ? VEX_HANDLE() : starts.back(), true, distance});
    });
}

} // namespace

std::vector<Suggestion> suggestObjects(Model const& model, I18NString const& text,
                                       MayBeNamed const& mayBeNamed) {
    SuggestionCandidates candidates;
    if (text.empty() || text.length() > longestText ||
        !searchAWhile([&] { searchObjects(model, text, candidates); })) {
        return {};
    }
    std::vector<Suggestion> chosen = orNothing([&] {
        return candidates.choose(mayBeNamed, [&](SuggestionCandidate const& each) {
            return each.isFoundById ? SuggestedText() : referenceTo(model, each.object);
        });
    });
    bool const isRight = std::any_of(chosen.begin(), chosen.end(),
                                     [&](Suggestion const& each) { return each.text == text; });
    return isRight ? std::vector<Suggestion>() : chosen;
}

std::vector<Suggestion> suggestPaths(Model const& model, I18NString const& text,
                                     I18NLocale const& locale, MayBeNamed const& mayBeNamed) {
    SuggestionCandidates candidates;
    if (text.length() > longestText ||
        !searchAWhile([&] { searchPaths(model, text, locale, candidates); })) {
        return {};
    }
    return orNothing([&] {
        return candidates.choose(mayBeNamed, [&](SuggestionCandidate const& each) {
            return each.start.IsNotNull() ? pathTo(each.object, each.start, locale)
                                          : SuggestedText();
        });
    });
}

std::string toQuestion(std::vector<std::string> const& texts) {
    std::string question;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        bool const isLast = index + 1 == texts.size();
        question += index == 0 ? "did you mean " : isLast ? " or " : ", ";
        question += texts[index];
    }
    return question.empty() ? question : question + '?';
}

std::string toQuestion(std::vector<Suggestion> const& suggestions) {
    std::vector<std::string> texts;
    for (Suggestion const& each : suggestions) {
        texts.push_back(each.text.toUtf8());
    }
    return toQuestion(texts);
}

} // namespace vex
