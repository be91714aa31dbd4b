#include "host/service/NameSuggestion.h"

#include "VexObject.h"
#include "host/store/image/ReferenceText.h"
#include "resources.h"

#include <algorithm>
#include <numeric>

#include <unicode/uchar.h>

namespace vex {

namespace {

constexpr std::size_t shownSuggestions = 3;

std::u16string foldCase(std::u16string_view text) {
    std::u16string folded;
    for (char16_t const unit : text) {
        folded += static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
    }
    return folded;
}

/// How far a slip of the hand may lead.
std::size_t allowance(std::size_t length) {
    constexpr std::size_t charactersForEach = 4;
    return std::max<std::size_t>(length < charactersForEach ? 1 : 2, length / charactersForEach);
}

/// The last name of a path or reference, whether or not its brackets are right.
std::u16string lastName(I18NString const& text) {
    std::vector<std::u16string> names;
    if (splitReference(text, names) && !names.empty()) {
        return names.back();
    }
    std::u16string_view rest = text.view();
    auto const dot = rest.rfind(u'.');
    rest = dot == std::u16string_view::npos ? rest : rest.substr(dot + 1);
    auto const isBracket = [](char16_t unit) { return unit == u'[' || unit == u']'; };
    std::u16string name;
    std::copy_if(rest.begin(), rest.end(), std::back_inserter(name),
                 [&](char16_t unit) { return !isBracket(unit); });
    return name;
}

/// The nearest of the texts that it is shown.
class Nearest {
public:
    explicit Nearest(I18NString const& text)
        : m_text(text), m_worst(allowance(static_cast<std::size_t>(text.length()))),
          m_isRight(text.empty()) {}

    void consider(I18NString const& candidate) {
        std::size_t const distance = editDistance(m_text.view(), candidate.view(), m_worst);
        m_isRight = m_isRight || candidate == m_text;
        bool const isKnown = std::any_of(m_found.begin(), m_found.end(), [&](Found const& found) {
            return found.text == candidate;
        });
        if (distance > m_worst || isKnown) {
            return;
        }
        auto const place = std::upper_bound(
            m_found.begin(), m_found.end(), distance,
            [](std::size_t value, Found const& found) { return value < found.distance; });
        m_found.insert(place, {candidate, distance});
        m_found.resize(std::min(m_found.size(), shownSuggestions));
    }

    std::vector<I18NString> take() const {
        std::vector<I18NString> texts;
        for (Found const& found : m_found) {
            if (!m_isRight && found.distance <= m_found.front().distance + 1) {
                texts.push_back(found.text);
            }
        }
        return texts;
    }

private:
    struct Found {
        I18NString text;
        std::size_t distance;
    };
    I18NString const& m_text;
    std::size_t m_worst;
    bool m_isRight; // there is nothing to suggest
    std::vector<Found> m_found;
};

I18NString nameOf(VEX_HANDLE element, I18NLocale locale) {
    I18NString name;
    VexObject(VexObject(element).GetPropertyByName(resources::getString(resources::Name), &locale))
        .GetValue(name, true);
    return name;
}

/// The paths to the element from each namespace around it.
void considerPaths(VEX_HANDLE element, I18NLocale locale, Nearest& nearest) {
    std::vector<I18NString> names; // from the element on
    for (VEX_HANDLE at = element; at.IsNotNull(); at = VexObject(at).GetParent()) {
        names.push_back(nameOf(at, locale));
        I18NString cls;
        VexObject(at).GetName(cls);
        if (cls == resources::getString(resources::Namespace)) {
            I18NString path;
            for (auto name = names.rbegin(); name != names.rend(); ++name) {
                appendToReference(path, name->view());
            }
            nearest.consider(path);
        }
    }
}

} // namespace

std::size_t editDistance(std::u16string_view a, std::u16string_view b, std::size_t limit) {
    std::size_t const difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
    if (difference > limit) {
        return limit + 1;
    }
    std::u16string const left = foldCase(a);
    std::u16string const right = foldCase(b);
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t before = row[0]; // of the row above, one to the left
        row[0] = i + 1;
        for (std::size_t j = 0; j < right.size(); ++j) {
            std::size_t const above = row[j + 1];
            std::size_t const exchanged = before + (left[i] == right[j] ? 0 : 1);
            row[j + 1] = std::min({exchanged, above + 1, row[j] + 1});
            before = above;
        }
        if (*std::min_element(row.begin(), row.end()) > limit) {
            return limit + 1;
        }
    }
    return std::min(row.back(), limit + 1);
}

std::vector<I18NString> suggestObjects(Model const& model, I18NString const& text) {
    std::u16string const last = lastName(text);
    Nearest nearest(text);
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        I18NString id;
        if (VexObject(element).GetId(id)) {
            nearest.consider(id);
        }
        I18NString const name = nameOf(element, model.defaultLocale());
        I18NString reference;
        std::size_t const allowed = allowance(last.size());
        if (editDistance(name.view(), last, allowed) <= allowed &&
            model.getReference(element, reference)) {
            nearest.consider(reference);
        }
    }
    return nearest.take();
}

std::vector<I18NString> suggestPaths(Model const& model, I18NString const& text,
                                     I18NLocale locale) {
    std::u16string const last = lastName(text);
    std::size_t const allowed = allowance(last.size());
    Nearest nearest(text);
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        if (editDistance(nameOf(element, locale).view(), last, allowed) <= allowed) {
            considerPaths(element, locale, nearest);
        }
    }
    return nearest.take();
}

std::string toQuestion(std::vector<I18NString> const& suggestions) {
    std::string text;
    for (std::size_t index = 0; index < suggestions.size(); ++index) {
        bool const isLast = index + 1 == suggestions.size();
        text += index == 0 ? "did you mean " : isLast ? " or " : ", ";
        text += suggestions[index].toUtf8();
    }
    return text.empty() ? text : text + '?';
}

} // namespace vex
