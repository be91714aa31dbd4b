#include "host/insight/ModelOutline.h"

#include "I18NHash.h"
#include "VexObject.h"
#include "host/catalogue/Selector.h"
#include "host/insight/ObjectReference.h"
#include "host/insight/ObjectText.h"
#include "resources.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace vex {

namespace {

using Element = ModelOutline::Element;

constexpr Element NoNode = 0xFFFF'FFFF;
constexpr int longestValue = 40; // what is longer describes single objects
constexpr std::size_t mostTraits = 4'000;

/// What a node of references and a name lead to.
struct Step {
    Element node;
    std::u16string_view name;

    bool operator==(Step const&) const = default;
};
struct StepHash {
    std::size_t operator()(Step const& step) const noexcept {
        return static_cast<std::size_t>(
            I18NMixHash(I18NHashText(step.name, I18NHashSeed()), step.node, I18NHashSeed()));
    }
};

/// A value as a selector holds it: in quotes where it must be.
std::string selectorValue(std::string const& value) {
    std::string const id = selectorOfId(value); // "#" and the same rule
    return id.substr(1);
}

bool isPlainName(std::string_view name) {
    return !name.empty() && name.find_first_of("@=:[]#*/\" \t\r\n") == name.npos;
}

/// Counts traits as long as there are few enough.
class TraitCounts {
public:
    void add(std::string const& selector, Element element) {
        auto at = m_elements.find(selector);
        if (at == m_elements.end()) {
            if (m_elements.size() == mostTraits) {
                return; // one that comes late is left out as a whole
            }
            at = m_elements.emplace(selector, std::vector<Element>()).first;
        }
        if (at->second.empty() || at->second.back() != element) {
            at->second.push_back(element);
        }
    }

    /// Those that mean several objects, most first.
    std::vector<ModelOutline::Trait> take() {
        std::vector<ModelOutline::Trait> all;
        for (auto& [selector, elements] : m_elements) {
            if (elements.size() > 1) {
                all.push_back({selector, std::move(elements)});
            }
        }
        std::stable_sort(all.begin(), all.end(), [](auto const& a, auto const& b) {
            return a.elements.size() > b.elements.size();
        });
        return all;
    }

private:
    std::map<std::string, std::vector<Element>> m_elements;
};

} // namespace

ModelOutline::ModelOutline(Model const& model) : m_model(model) {
    std::size_t const count = model.elementCount();
    parent.resize(count);
    end.resize(count);
    isOutside.resize(count);
    hasId.resize(count);
    isNameable.resize(count);
    for (Element element = 0; element < count; ++element) {
        VEX_HANDLE const object = model.getElement(element);
        I18NString id;
        VexObject const asked(object);
        hasId[element] = asked.GetId(id) && !id.empty();
        end[element] = element + 1;
        VEX_HANDLE const above = asked.GetParent();
        parent[element] = element == 0 ? 0 : static_cast<Element>(numberOf(model, above));
        I18NString const name = classOf(object);
        isOutside[element] = element == 0 || name == "securityViews" ||
                             name == resources::getString(resources::SecurityView) ||
                             (parent[element] != 0 && isOutside[parent[element]]);
    }
    for (std::size_t element = count; element-- > 1;) {
        end[parent[element]] = std::max(end[parent[element]], end[element]);
    }
    findReferences();
    findTraits();
}

// As references are made: a namespace begins anew, folders leave their name out of those of
// what is in them.
void ModelOutline::findReferences() {
    std::unordered_map<Step, Element, StepHash> nodes;
    std::vector<std::size_t> bearers(1);
    std::vector<Element> within(size(), NoNode); // the node that names below begin at
    std::vector<Element> own(size(), NoNode);
    for (Element element = 1; element < size(); ++element) {
        if (isOutside[element]) {
            continue;
        }
        VEX_HANDLE const object = m_model.getElement(element);
        I18NString const name = classOf(object);
        Element const before = within[parent[element]];
        Element const from = name == resources::getString(resources::Namespace) ? 0 : before;
        if (from != NoNode) {
            auto const [at, isNew] = nodes.try_emplace({from, nameText(m_model, object)},
                                                       static_cast<Element>(bearers.size()));
            if (isNew) {
                bearers.push_back(0);
            }
            own[element] = at->second;
            ++bearers[at->second];
        }
        bool const isLeftOut = name == resources::getString(resources::Folder) ||
                               name == resources::getString(resources::QueryItemFolder);
        within[element] = isLeftOut ? before : own[element];
    }
    for (Element element = 1; element < size(); ++element) {
        isNameable[element] = own[element] != NoNode && bearers[own[element]] == 1;
    }
}

void ModelOutline::findTraits() {
    constexpr char const* texts[] = {"name",   "screenTip", "description", "expression",
                                     "refobj", "left",      "right"};
    TraitCounts counts;
    I18NLocale const locales[] = {I18NLocale(), m_model.defaultLocale()};
    for (Element element = 1; element < size(); ++element) {
        if (isOutside[element]) {
            continue;
        }
        VexObject const object(m_model.getElement(element));
        std::string const className = classOf(m_model.getElement(element)).toUtf8();
        if (isPlainName(className)) {
            counts.add(className + ':', element);
        }
        Vex_Handle_Collection properties;
        object.Properties(properties, nullptr, nullptr, false);
        for (VEX_HANDLE const each : properties) {
            VexObject const property(each);
            I18NLocale const* const locale = property.GetLocale();
            I18NString name;
            I18NString value;
            property.GetName(name);
            bool const isKnown =
                property.GetValue(value, true) && !value.empty() &&
                value.length() <= longestValue && isPlainName(name.toUtf8()) &&
                (locale == nullptr || *locale == locales[0] || *locale == locales[1]) &&
                std::none_of(std::begin(texts), std::end(texts),
                             [&](char const* text) { return name == text; });
            if (!isKnown) {
                continue;
            }
            if (name == "tags") {
                forEachWord(value.view(), [&](std::u16string_view word) {
                    counts.add("**@tag=" + selectorValue(I18NString(word).toUtf8()), element);
                });
                continue;
            }
            std::string const test = '@' + name.toUtf8() + '=' + selectorValue(value.toUtf8());
            counts.add("**" + test, element);
            if (isPlainName(className)) {
                counts.add(className + test, element);
            }
        }
    }
    traits = counts.take();
}

std::string ModelOutline::selectorOf(Element element) const {
    VEX_HANDLE const object = m_model.getElement(element);
    if (isNameable[element]) {
        I18NString reference;
        if (m_model.getReference(object, reference)) {
            return reference.toUtf8();
        }
    }
    return selectorOfId(idOf(object).toUtf8());
}

} // namespace vex
