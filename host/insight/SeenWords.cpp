#include "host/insight/SeenWords.h"

#include "VexObject.h"
#include "host/insight/NearestWord.h"
#include "host/insight/ObjectText.h"

#include <algorithm>

namespace vex {

namespace {

constexpr std::size_t objectsOfACall = 1'024;

/// Not what names a collection of members.
bool isSimple(VEX_HANDLE property) {
    return !VexObject(property).hasChildObjects();
}

bool hasProperty(VEX_HANDLE element, I18NString const& name) {
    Vex_Handle_Collection named;
    VexObject(element).Properties(named, &name, nullptr, false);
    return std::any_of(named.begin(), named.end(), &isSimple);
}

std::string nearestOf(I18NString const& word, std::set<I18NString> const& seen,
                      std::vector<I18NString> const& others) {
    std::vector<I18NString> known = others;
    known.insert(known.end(), seen.begin(), seen.end());
    I18NString const* const nearest = nearestWord(word, known);
    return nearest == nullptr ? "" : nearest->toUtf8();
}

} // namespace

SeenWords::SeenWords(Model const& model, MaySee maySee, Answered answered)
    : m_model(model), m_maySee(std::move(maySee)), m_askForAnswered(std::move(answered)) {}

/// One word is found with few questions. For many words everything is asked for once,
/// so that the work does not grow with them.
bool SeenWords::mayScan() {
    constexpr std::size_t mostScans = 16;
    return !m_all && ++m_scans <= mostScans;
}

bool SeenWords::isClass(I18NString const& word) {
    if (!mayScan()) {
        return all().classes.contains(word);
    }
    return isOnSeenObject([&](VEX_HANDLE element) { return classOf(element) == word; });
}

bool SeenWords::isProperty(I18NString const& word) {
    if (!mayScan()) {
        return all().properties.contains(word);
    }
    return isOnSeenObject([&](VEX_HANDLE element) { return hasProperty(element, word); });
}

std::string SeenWords::nearestClass(I18NString const& word, std::vector<I18NString> const& others) {
    return nearestOf(word, all().classes, others);
}

std::string SeenWords::nearestProperty(I18NString const& word,
                                       std::vector<I18NString> const& others) {
    return nearestOf(word, all().properties, others);
}

std::vector<VEX_HANDLE> const& SeenWords::answered() {
    if (!m_answered) {
        m_answered = m_askForAnswered();
    }
    return *m_answered;
}

template <class Has> bool SeenWords::isOnSeenObject(Has const& has) {
    Vex_Handle_Collection batch;
    bool isOnAny = false;
    for (std::size_t index = 0; index < m_model.elementCount(); ++index) {
        VEX_HANDLE const element = m_model.getElement(index);
        if (has(element)) {
            batch.push_back(element);
            isOnAny = true;
        }
        bool const isFull = batch.size() == objectsOfACall || index + 1 == m_model.elementCount();
        if (isFull && batch.size() != 0 && !seenOf(batch).empty()) {
            return true;
        }
        if (isFull) {
            batch = Vex_Handle_Collection();
        }
    }
    return isOnAny && std::any_of(answered().begin(), answered().end(), has);
}

std::vector<VEX_HANDLE> SeenWords::seenOf(Vex_Handle_Collection const& objects) const {
    std::vector<bool> const verdicts = m_maySee(objects);
    std::vector<VEX_HANDLE> seen;
    for (std::size_t index = 0; index < std::min(objects.size(), verdicts.size()); ++index) {
        if (verdicts[index]) {
            seen.push_back(objects[index]);
        }
    }
    return seen;
}

SeenWords::Words const& SeenWords::all() {
    if (m_all) {
        return *m_all;
    }
    m_all.emplace();
    auto const take = [&](VEX_HANDLE element) {
        m_all->classes.insert(classOf(element));
        Vex_Handle_Collection properties;
        VexObject(element).Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const property : properties) {
            if (isSimple(property)) {
                m_all->properties.insert(classOf(property));
            }
        }
    };
    for (std::size_t first = 0; first < m_model.elementCount(); first += objectsOfACall) {
        Vex_Handle_Collection batch;
        for (std::size_t index = first;
             index < std::min(first + objectsOfACall, m_model.elementCount()); ++index) {
            batch.push_back(m_model.getElement(index));
        }
        std::vector<VEX_HANDLE> const seen = seenOf(batch);
        std::for_each(seen.begin(), seen.end(), take);
    }
    std::for_each(answered().begin(), answered().end(), take);
    return *m_all;
}

} // namespace vex
