#include "host/service/NameSuggestion.h"

#include "VexObject.h"
#include "host/service/EditDistance.h"
#include "host/service/NamesOnTheWay.h"
#include "host/store/image/ReferenceText.h"
#include "resources.h"

#include <algorithm>
#include <unordered_set>

namespace vex {

namespace {

constexpr std::size_t shownSuggestions = 3;

/// How far a slip of the hand may lead.
std::size_t allowance(std::size_t length) {
    constexpr std::size_t charactersForEach = 4;
    return std::max<std::size_t>(length < charactersForEach ? 1 : 2, length / charactersForEach);
}

/// What was found, from which the nearest that may be named are chosen.
class Candidates {
public:
    explicit Candidates(I18NString const& text)
        : m_text(text), m_worst(allowance(static_cast<std::size_t>(text.length()))) {}

    /// One that is not far from the text.
    void consider(VEX_HANDLE object, I18NString const& candidate) {
        std::size_t const distance = editDistance(m_text.view(), candidate.view(), m_worst);
        if (distance <= m_worst) {
            add(object, candidate, distance);
        }
    }

    /// One that was found by what the text says, however it is written.
    void add(VEX_HANDLE object, I18NString const& text, std::size_t distance = 0) {
        m_found.push_back({{object, text}, distance});
    }

    std::vector<Suggestion> choose(MayBeNamed const& mayBeNamed) {
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](Found const& a, Found const& b) { return a.distance < b.distance; });
        keepNamed(mayBeNamed);
        std::vector<Suggestion> chosen;
        std::unordered_set<VEX_HANDLE> known; // each is suggested once
        // Beside what is meant, a slip of the hand is unlikely.
        std::size_t const nearest = m_found.empty() ? 0 : m_found.front().distance;
        std::size_t const furthest = nearest == 0 ? 0 : nearest + 1;
        for (Found const& found : m_found) {
            if (chosen.size() == shownSuggestions || found.distance > furthest) {
                break;
            }
            if (known.insert(found.suggestion.object).second) {
                chosen.push_back(found.suggestion);
            }
        }
        return chosen;
    }

private:
    struct Found {
        Suggestion suggestion;
        std::size_t distance;
    };

    void keepNamed(MayBeNamed const& mayBeNamed) {
        if (!mayBeNamed || m_found.empty()) {
            return;
        }
        Vex_Handle_Collection objects;
        for (Found const& found : m_found) {
            objects.push_back(found.suggestion.object);
        }
        std::vector<bool> verdicts = mayBeNamed(objects);
        verdicts.resize(m_found.size(), false);
        std::size_t index = 0;
        std::erase_if(m_found, [&](Found const& /*found*/) { return !verdicts[index++]; });
    }

    I18NString const& m_text;
    std::size_t m_worst;
    std::vector<Found> m_found;
};

/// Goes through the elements whose name, in one language, is nearly the last one of the
/// text, and through those that the names lead to. `take` gets the element, and whether
/// they do.
template <class Take>
void forEachNear(Model const& model, NamesOnTheWay const& names, I18NLocale const& locale,
                 Take const& take) {
    std::size_t const allowed = allowance(names.last().size());
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        bool const isMeant = names.leadTo(element);
        if (isMeant ||
            editDistance(nameInLocale(element, locale).view(), names.last(), allowed) <= allowed) {
            take(element, isMeant);
        }
    }
}

/// Goes through the elements whose ids are near the text. `take` gets the element, its
/// id and how far that is.
template <class Take>
void forEachNearId(Model const& model, I18NString const& text, Take const& take) {
    std::size_t const allowed = allowance(static_cast<std::size_t>(text.length()));
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        I18NString id;
        if (VexObject(element).GetId(id)) {
            std::size_t const distance = editDistance(text.view(), id.view(), allowed);
            if (distance <= allowed) {
                take(element, id, distance);
            }
        }
    }
}

/// The reference, or the id where the reference is another object's; "" for neither.
I18NString findableReference(Model const& model, VEX_HANDLE element) {
    I18NString text;
    if (model.getReference(element, text) && model.GetObjectByReference(text, 0) == element) {
        return text;
    }
    text = {};
    VexObject(element).GetId(text);
    return text;
}

/// A path to an element, and the namespace that it begins with.
struct Path {
    VEX_HANDLE start;
    I18NString text;
};

/// The paths to the element from each namespace around it, nearest first.
std::vector<Path> pathsTo(VEX_HANDLE element, I18NLocale const& locale) {
    std::vector<I18NString> names; // from the element on
    std::vector<Path> paths;
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        names.push_back(nameInLocale(at, locale));
        I18NString className;
        VexObject(at).GetName(className);
        if (className == resources::getString(resources::Namespace)) {
            Path& path = paths.emplace_back(Path{at, {}});
            for (auto name = names.rbegin(); name != names.rend(); ++name) {
                appendToReference(path.text, name->view());
            }
        }
    }
    return paths;
}

/// The one that begins as the names do; else the longest.
Path const& mostLike(NamesOnTheWay const& names, std::vector<Path> const& paths) {
    auto const like = std::find_if(paths.begin(), paths.end(),
                                   [&](Path const& path) { return names.beginAt(path.start); });
    return like != paths.end() ? *like : paths.back();
}

} // namespace

std::vector<Suggestion> suggestObjects(Model const& model, I18NString const& text,
                                       MayBeNamed const& mayBeNamed) {
    Candidates candidates(text);
    NamesOnTheWay const names(model, text);
    forEachNear(model, names, model.defaultLocale(), [&](VEX_HANDLE element, bool isMeant) {
        I18NString const reference = findableReference(model, element);
        if (isMeant && !reference.empty()) {
            candidates.add(element, reference);
        } else {
            candidates.consider(element, reference);
        }
    });
    forEachNearId(model, text, [&](VEX_HANDLE element, I18NString const& id, std::size_t distance) {
        candidates.add(element, id, distance);
    });
    std::vector<Suggestion> chosen = candidates.choose(mayBeNamed);
    bool const isRight =
        text.empty() || std::any_of(chosen.begin(), chosen.end(),
                                    [&](Suggestion const& each) { return each.text == text; });
    return isRight ? std::vector<Suggestion>() : chosen;
}

std::vector<Suggestion> suggestPaths(Model const& model, I18NString const& text,
                                     I18NLocale const& locale, MayBeNamed const& mayBeNamed) {
    Candidates candidates(text);
    NamesOnTheWay const names(model, text, locale);
    forEachNear(model, names, locale, [&](VEX_HANDLE element, bool isMeant) {
        std::vector<Path> const paths = pathsTo(element, locale);
        if (isMeant && !paths.empty()) {
            candidates.add(element, mostLike(names, paths).text);
            return;
        }
        for (Path const& path : paths) {
            candidates.consider(element, path.text);
        }
    });
    forEachNearId(model, text, [&](VEX_HANDLE element, I18NString const& id, std::size_t distance) {
        std::vector<Path> const paths = pathsTo(element, locale);
        candidates.add(element, paths.empty() ? id : paths.back().text, distance);
    });
    return candidates.choose(mayBeNamed);
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
