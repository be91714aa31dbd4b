#include "host/insight/RequestWords.h"

#include "host/insight/KnownWords.h"
#include "host/insight/ModelFindings.h"
#include "host/insight/NearestWord.h"
#include "resources.h"

#include <algorithm>
#include <optional>

namespace vex {

namespace {

constexpr char16_t wildcard = u'*';
constexpr std::size_t mostDoubts = 50;

/// Properties that answers have of themselves, and those that have a meaning.
std::vector<I18NString> const& knownProperties() {
    static std::vector<I18NString> const words{"ID",         "_path",      "_ref",     "name",
                                               "screenTip",  "usage",      "datatype", "refobj",
                                               "expression", "description"};
    return words;
}

std::vector<I18NString> const& knownClasses() {
    static std::vector<I18NString> const words = [] {
        std::vector<I18NString> all;
        for (I18NString const& each : KnownWords::classes()) {
            if (each != "property" && each != "locales") { // these are no objects
                all.push_back(each);
            }
        }
        all.push_back(resources::getString(resources::Package));
        return all;
    }();
    return words;
}

std::vector<I18NString> const& knownGlobals() {
    static std::vector<I18NString> const words{
        "decimalSeparator", "decimal_separator", "listSeparator",   "list_separator",
        "defaultLocale",    "supportedLocales",  "effectiveLocale", "modelSearchPath"};
    return words;
}

bool isAmong(std::vector<I18NString> const& list, I18NString const& text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

std::string listed(std::vector<I18NString> const& words) {
    constexpr std::size_t shown = 10;
    std::string text;
    for (std::size_t index = 0; index < std::min(words.size(), shown); ++index) {
        text += (index == 0 ? "" : ", ") + words[index].toUtf8();
    }
    return words.size() > shown ? text + ", ..." : text;
}

/// "CLASS/@NAME" or "CLASS/NAME", taken apart.
struct AskedWord {
    I18NString className;
    I18NString name;

    bool isForEachClass() const { return className == "*" || className == "."; }
    bool isWildcard() const { return !name.empty() && name[0] == wildcard; }
};

class RequestCheck {
public:
    RequestCheck(MetadataRequest const& request, Visit const& visit, SeenWords& seen)
        : m_request(request), m_visit(visit), m_seen(seen) {}

    std::vector<DoubtfulWord> run() {
        checkAll();
        if (isFull()) {
            add({}, "what else the request asks for was not looked at; correct this first");
        }
        return std::move(m_found);
    }

private:
    void checkAll() {
        checkView();
        checkLanguage();
        if (m_request.functions) {
            checkPackage();
            return;
        }
        forEach(m_request.globals, [&](I18NString const& global) { checkGlobal(global); });
        forEach(m_request.properties, [&](I18NString const& each) { checkProperty(each, each); });
        forEach(m_request.collections, [&](I18NString const& each) { checkCollection(each); });
        forEach(m_request.constraints, [&](MetadataRequest::Constraint const& each) {
            checkProperty(each.property, each.property + "=[" + each.value + "]");
        });
        forEach(m_request.oddConstraints, [&](I18NString const& text) {
            add(text, "the constraint " + inQuotes(text) +
                          " binds nothing; write it as CLASS/@NAME=[VALUE]");
        });
    }

    template <class List, class Check> void forEach(List const& list, Check const& check) {
        for (auto at = list.begin(); at != list.end() && !isFull(); ++at) {
            check(*at);
        }
    }

    /// The nearest word of each is looked for, so no more are told than people read.
    void add(I18NString const& entry, std::string text) {
        m_found.push_back({entry, std::move(text)});
    }
    bool isFull() const { return m_found.size() >= mostDoubts; }

    void checkView() {
        if (m_request.view.empty()) {
            return;
        }
        CatalogueModel const* const model =
            m_visit.catalogue == nullptr ? nullptr
                                         : m_visit.catalogue->findModel(m_visit.version->path());
        if (model == nullptr || m_visit.user == nullptr) {
            add({}, "the view " + inQuotes(m_request.view) +
                        " is not looked at: nobody is restricted in a model file alone");
            return;
        }
        std::vector<I18NString> const views = availableViews(*model, *m_visit.user);
        if (!isAmong(views, m_request.view)) {
            I18NString const* const nearest = nearestWord(m_request.view, views);
            add({}, "the view " + inQuotes(m_request.view) + " is none of the user's" +
                        didYouMean(nearest == nullptr ? "" : nearest->toUtf8()));
        }
    }

    /// What a request document says about its language is read and not used.
    void checkLanguage() {
        for (char const* const option : {"authoringLocale", "xml:lang"}) {
            auto const at = m_request.otherOptions.find(option);
            if (at == m_request.otherOptions.end() || at->second.empty()) {
                continue;
            }
            I18NLocale const written(at->second);
            I18NLocale used = m_visit.locale;
            while (used != written && used != I18NLocale()) {
                used = used.getParent();
            }
            if (used != written) {
                add({}, std::string("the request's ") + option + ' ' + inQuotes(at->second) +
                            " chooses no language, the session's is " +
                            m_visit.locale.getName().toUtf8());
            }
        }
    }

    /// A function request is answered with properties of the package, and nothing else.
    void checkPackage() {
        CatalogueModel const* const model =
            m_visit.catalogue == nullptr ? nullptr
                                         : m_visit.catalogue->findModel(m_visit.version->path());
        if (model == nullptr) {
            add({}, "a model file alone is published in no package, so the answer has none");
            return;
        }
        std::vector<I18NString> known;
        for (auto const& [name, value] : model->package) {
            known.push_back(name);
        }
        for (I18NString const& entry : m_request.properties) {
            if (isFull()) {
                return;
            }
            std::optional<AskedWord> const word = split(entry, "/@");
            bool const isRead =
                word && (word->isForEachClass() ||
                         word->className == resources::getString(resources::Package));
            if (isRead && !isAmong(known, word->name) &&
                word->name != resources::getString(resources::Name)) {
                I18NString const* const nearest = nearestWord(word->name, known);
                add(entry, "the package has no property " + inQuotes(word->name) +
                               didYouMean(nearest == nullptr ? "" : nearest->toUtf8()));
            }
        }
    }

    void checkGlobal(I18NString const& global) {
        if (!isAmong(knownGlobals(), global)) {
            I18NString const* const nearest = nearestWord(global, knownGlobals());
            add(I18NString("/@") + global,
                "there is no setting " + inQuotes(global) +
                    (nearest != nullptr ? didYouMean(nearest->toUtf8())
                                        : "; known are " + listed(knownGlobals())));
        }
    }

    void checkProperty(I18NString const& text, I18NString const& entry) {
        std::optional<AskedWord> const word = split(text, "/@");
        if (!word) {
            add(entry, "the property " + inQuotes(text) +
                           " is asked of nothing; write CLASS/@NAME, or */@NAME for every class");
            return;
        }
        checkClass(*word, entry);
        if (!word->isWildcard() && !isAmong(knownProperties(), word->name) &&
            !m_seen.isProperty(word->name)) {
            add(entry, "no object that may be seen has the property " + inQuotes(word->name) +
                           didYouMean(m_seen.nearestProperty(word->name, knownProperties())));
        }
    }

    void checkCollection(I18NString const& entry) {
        std::optional<AskedWord> const word = split(entry, "/");
        if (!word) {
            add(entry, "the collection " + inQuotes(entry) +
                           " is asked of nothing; write CLASS/NAME, or */NAME for every class; for "
                           "a property */@NAME");
            return;
        }
        checkClass(*word, entry);
        if (!word->isWildcard() && !isClass(word->name)) {
            add(entry, "no object that may be seen is in a collection " + inQuotes(word->name) +
                           didYouMean(m_seen.nearestClass(word->name, knownClasses())));
        }
    }

    void checkClass(AskedWord const& word, I18NString const& entry) {
        if (!word.isForEachClass() && !isClass(word.className)) {
            add(entry, "no object that may be seen is of the class " + inQuotes(word.className) +
                           didYouMean(m_seen.nearestClass(word.className, knownClasses())));
        }
    }

    bool isClass(I18NString const& word) {
        return isAmong(knownClasses(), word) || m_seen.isClass(word);
    }

    /// Nothing when the text is not of that form.
    static std::optional<AskedWord> split(I18NString const& text, char const* separator) {
        I18NString const mark(separator);
        int const at = text.find(mark);
        if (at <= 0 || at + mark.length() == text.length()) {
            return std::nullopt;
        }
        return AskedWord{text.substring(0, at), text.substring(at + mark.length())};
    }

    MetadataRequest const& m_request;
    Visit const& m_visit;
    SeenWords& m_seen;
    std::vector<DoubtfulWord> m_found;
};

std::vector<I18NString> namesOf(std::vector<I18NLocale> const& locales) {
    std::vector<I18NString> names;
    for (I18NLocale const& locale : locales) {
        names.push_back(locale.getName());
    }
    return names;
}

} // namespace

std::vector<DoubtfulWord> doubtfulWords(MetadataRequest const& request, Visit const& visit,
                                        SeenWords& seen) {
    return RequestCheck(request, visit, seen).run();
}

std::string doubtfulLocale(Visit const& visit) {
    if (visit.asked == I18NLocale() || visit.asked == visit.locale) {
        return "";
    }
    std::vector<I18NString> const names = namesOf(visit.model().locales());
    return "the model has no language " + inQuotes(visit.asked.getName()) + ", so " +
           visit.locale.getName().toUtf8() + " is used; it has " +
           (names.empty() ? "no other" : listed(names));
}

} // namespace vex
