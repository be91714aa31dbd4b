#include "VexObject.h"
#include "host/insight/KnownWords.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/NearestWord.h"
#include "host/insight/ObjectText.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace vex {

namespace {

/// The words of one kind that a model uses, with how often.
using WordCounts = std::unordered_map<I18NString, std::size_t>;

constexpr char const* emptyWord = "\"\"";

constexpr std::size_t often = 10;           // what is used so often is meant
constexpr std::size_t mostCandidates = 100; // of the words used often; the most used count

/// What was probably meant by the words of one kind that are doubtful.
class Misspellings {
public:
    Misspellings(WordCounts const& used, std::span<I18NString const> vocabulary) {
        std::vector<std::pair<std::size_t, I18NString>> frequent;
        for (auto const& [word, count] : used) {
            if (count >= often) {
                frequent.emplace_back(count, word);
            }
        }
        std::sort(frequent.rbegin(), frequent.rend());
        frequent.resize(std::min(frequent.size(), mostCandidates));
        for (auto const& [word, count] : used) {
            if (std::find(vocabulary.begin(), vocabulary.end(), word) == vocabulary.end()) {
                consider(word, count, vocabulary, frequent);
            }
        }
    }

    bool empty() const { return m_meant.empty(); }
    /// "" when the word is not doubtful.
    I18NString const& meantBy(I18NString const& word) const {
        static I18NString const none;
        auto const at = m_meant.find(word);
        return at == m_meant.end() ? none : at->second;
    }

private:
    void consider(I18NString const& word, std::size_t count, std::span<I18NString const> vocabulary,
                  std::span<std::pair<std::size_t, I18NString> const> frequent) {
        I18NString const* nearest = nullptr;
        std::size_t least = 0;
        auto const compare = [&](I18NString const& candidate, bool isLikelier) {
            auto const slips = slipsBetween(word.view(), candidate.view());
            // What differs by its case alone is doubtful however often it is used.
            if (slips && (isLikelier || *slips == 0) && (nearest == nullptr || *slips < least) &&
                !isPlural(word, candidate)) {
                nearest = &candidate;
                least = *slips;
            }
        };
        for (I18NString const& candidate : vocabulary) {
            compare(candidate, count < often);
        }
        for (auto const& [timesUsed, candidate] : frequent) {
            if (candidate != word && timesUsed / often >= count) {
                compare(candidate, true);
            }
        }
        if (nearest != nullptr) {
            m_meant.emplace(word, *nearest);
        }
    }

    /// "folders" is what folders stand in, as "securityViews" is.
    static bool isPlural(I18NString const& word, I18NString const& candidate) {
        return word == candidate + "s";
    }

    std::unordered_map<I18NString, I18NString> m_meant;
};

/// An object for people: its class and name.
std::string called(ModelFindings const& findings, VEX_HANDLE element) {
    std::string const name = findings.nameOf(element);
    return classOf(element).toUtf8() + (name == emptyWord ? " without a name" : ' ' + name);
}

class WordCheck {
public:
    explicit WordCheck(ModelFindings& findings) : m_findings(findings) {}

    void run() {
        WordCounts classes;
        WordCounts properties;
        Model const& model = m_findings.getModel();
        for (std::size_t index = 0; index < model.elementCount(); ++index) {
            VEX_HANDLE const element = model.getElement(index);
            ++classes[classOf(element)];
            for (VEX_HANDLE const property : simpleProperties(element)) {
                ++properties[classOf(property)];
            }
        }
        Misspellings const misspeltClasses(classes, KnownWords::classes());
        Misspellings const misspeltProperties(properties, KnownWords::properties());
        for (std::size_t index = 0; index < model.elementCount(); ++index) {
            VEX_HANDLE const element = model.getElement(index);
            if (!misspeltClasses.empty()) {
                checkClass(element, misspeltClasses);
            }
            if (!misspeltProperties.empty()) {
                checkProperties(element, misspeltProperties);
            }
        }
    }

private:
    static std::vector<VEX_HANDLE> simpleProperties(VEX_HANDLE element) {
        Vex_Handle_Collection listed;
        VexObject(element).Properties(listed, nullptr, nullptr, false);
        std::vector<VEX_HANDLE> simple;
        std::copy_if(listed.begin(), listed.end(), std::back_inserter(simple),
                     [](VEX_HANDLE property) { return !VexObject(property).hasChildObjects(); });
        return simple;
    }

    void checkClass(VEX_HANDLE element, Misspellings const& misspelt) {
        I18NString const word = classOf(element);
        I18NString const& meant = misspelt.meantBy(word);
        if (!meant.empty()) {
            m_findings.add("misspelt-class", element, [&] {
                return "the class is " + inQuotes(word) + didYouMean(meant.toUtf8());
            });
        }
    }

    void checkProperties(VEX_HANDLE element, Misspellings const& misspelt) {
        for (VEX_HANDLE const property : simpleProperties(element)) {
            I18NString const word = classOf(property);
            I18NString const& meant = misspelt.meantBy(word);
            if (!meant.empty()) {
                m_findings.add("misspelt-property", element, [&] {
                    return "the " + called(m_findings, element) + " has the property " +
                           inQuotes(word) + didYouMean(meant.toUtf8());
                });
            }
        }
    }

    ModelFindings& m_findings;
};

/// What is wrong with the value of a property whose values the schema lists; ""
/// when nothing is.
std::string complaintAbout(ModelFindings const& findings, VEX_HANDLE element, char const* property,
                           std::span<I18NString const> known) {
    I18NString const value = ModelFindings::valueOf(element, property, nullptr);
    if (value.empty() || std::find(known.begin(), known.end(), value) != known.end()) {
        return "";
    }
    std::string text = std::string("the ") + property + " of the " + called(findings, element) +
                       " is " + inQuotes(value);
    if (I18NString const* const meant = nearestWord(value, known)) {
        return text + didYouMean(meant->toUtf8());
    }
    text += "; known are ";
    for (std::size_t index = 0; index < known.size(); ++index) {
        text += (index == 0 ? "" : ", ") + known[index].toUtf8();
    }
    return text;
}

void checkValues(ModelFindings& findings, VEX_HANDLE element) {
    std::string const ofDatatype =
        complaintAbout(findings, element, "datatype", KnownWords::datatypes());
    if (!ofDatatype.empty()) {
        findings.add("unknown-datatype", element, [&] { return ofDatatype; });
    }
    std::string const ofUsage = complaintAbout(findings, element, "usage", KnownWords::usages());
    if (!ofUsage.empty()) {
        findings.add("unknown-usage", element, [&] { return ofUsage; });
    }
}

} // namespace

void checkWords(ModelFindings& findings) {
    WordCheck(findings).run();
    Model const& model = findings.getModel();
    for (std::size_t index = 0; index < model.elementCount(); ++index) {
        VEX_HANDLE const element = model.getElement(index);
        if (isAskedFor(classOf(element))) {
            checkValues(findings, element);
        }
    }
}

} // namespace vex
