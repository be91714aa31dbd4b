#include "host/translate/TranslatableModel.h"

#include "I18NString.h"
#include "KRLException.h"
#include "host/import/draft/PlainText.h"
#include "host/import/xml/ModelDocument.h"
#include "host/import/xml/ModelLoader.h"
#include "host/import/xml/XmlText.h"
#include "host/store/image/ImageFile.h"
#include "host/translate/ModelProperties.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace vex {

namespace {

// A model was read by then: its own limits hold.
constexpr ElementLimits limitsOfModel{
    .values = 200'000'000, .depth = 1'024, .attributesPerElement = 200};

ElementTree treeOf(std::string_view document, std::string const& name) {
    MemorySource source(document);
    return readElementTree(source, name, limitsOfModel);
}

/// Control characters stand in no XML document.
bool canBeText(std::string const& text) {
    bool const hasControls = std::any_of(text.begin(), text.end(), [](char unit) {
        return static_cast<unsigned char>(unit) < ' ' && unit != '\t' && unit != '\n' &&
               unit != '\r';
    });
    return !hasControls && text.find("\xEF\xBF\xBE") == std::string::npos &&
           text.find("\xEF\xBF\xBF") == std::string::npos;
}

/// White space at the ends does not count, nor how programs end lines.
bool isSameText(std::string one, std::string other) {
    std::erase(one, '\r');
    std::erase(other, '\r');
    return trimmed(one) == trimmed(other);
}

/// Writes a model document in one form, with other values for some properties.
class DocumentWriter {
public:
    using Targets = std::map<std::pair<ElementTree::Element, std::size_t>, std::string>;

    DocumentWriter(ElementTree const& tree, Targets const& targets, I18NLocale defaultLocale,
                   I18NLocale target)
        : m_tree(tree), m_targets(targets), m_defaultLocale(defaultLocale), m_target(target) {}

    std::string write() && {
        struct Open {
            ElementTree::Element element;
            ElementTree::Element next;
            bool isAdded; // its new properties were written
        };
        std::vector<Open> open;
        auto const enter = [&](ElementTree::Element element, ElementTree::Element owner) {
            this->open(element, owner);
            open.push_back({element, m_tree.first(element), !hasTargets(element)});
        };
        enter(ElementTree::Root, ElementTree::None);
        while (!open.empty()) {
            Open& at = open.back();
            // Behind the properties that are there, before anything else.
            bool const isBehind = at.next == ElementTree::None || isObject(at.next);
            if (!at.isAdded && isBehind) {
                addProperties(at.element);
                at.isAdded = true;
            }
            if (at.next != ElementTree::None) {
                ElementTree::Element const each = at.next;
                at.next = m_tree.next(each);
                enter(each, isObject(at.element) ? at.element : ElementTree::None);
                continue;
            }
            if (isListOfLocales(at.element)) {
                addLocale();
            }
            m_text.close();
            open.pop_back();
        }
        return std::move(m_text).take();
    }

private:
    bool isObject(ElementTree::Element element) const { return isObjectElement(m_tree, element); }
    bool isListOfLocales(ElementTree::Element element) const {
        return m_tree.writtenNameOf(element) == "locales";
    }
    bool hasTargets(ElementTree::Element element) const {
        auto const first = m_targets.lower_bound({element, 0});
        return first != m_targets.end() && first->first.first == element;
    }

    void open(ElementTree::Element element, ElementTree::Element owner) {
        m_text.open(m_tree.writtenNameOf(element));
        std::size_t const count = m_tree.attributeCount(element) + m_tree.declarationCount(element);
        for (std::size_t each = 0; each < count; ++each) {
            auto const [name, value] = m_tree.attributeOf(element, each);
            m_text.attribute(name, value);
        }
        std::string const* const target = targetOf(element, owner);
        m_text.text(target == nullptr ? trimmed(m_tree.textOf(element)) : *target);
        if (element == ElementTree::Root && !hasListOfLocales()) {
            m_text.open("locales");
            m_text.element("locale", m_defaultLocale.getName().toUtf8());
            addLocale();
            m_text.close();
        }
    }

    bool hasListOfLocales() const {
        auto each = m_tree.first(ElementTree::Root);
        while (each != ElementTree::None && !isListOfLocales(each)) {
            each = m_tree.next(each);
        }
        return each != ElementTree::None;
    }

    /// The new value of a property that is there already; null for none.
    std::string const* targetOf(ElementTree::Element element, ElementTree::Element owner) const {
        if (!isPropertyElement(m_tree, element) || owner == ElementTree::None ||
            localeOfProperty(m_tree, element) != m_target) {
            return nullptr;
        }
        auto const property = findTranslatedProperty(m_tree.find(element, "name").value_or(""));
        auto const found = property ? m_targets.find(std::pair(owner, *property)) : m_targets.end();
        return found == m_targets.end() ? nullptr : &found->second;
    }

    void addProperties(ElementTree::Element object) {
        for (auto each = m_targets.lower_bound({object, 0});
             each != m_targets.end() && each->first.first == object; ++each) {
            std::string_view const property = translatedProperties()[each->first.second];
            if (!valueIn(m_tree, object, property, m_target)) {
                m_text.open("property");
                m_text.attribute("name", property);
                m_text.attribute("locale", m_target.getName().toUtf8());
                m_text.text(each->second);
                m_text.close();
            }
        }
    }

    /// Once, however many lists there are.
    void addLocale() {
        if (!m_isListed && !isListed() && !m_targets.empty()) {
            m_text.element("locale", m_target.getName().toUtf8());
        }
        m_isListed = true;
    }

    bool isListed() const {
        for (auto list = m_tree.first(ElementTree::Root); list != ElementTree::None;
             list = m_tree.next(list)) {
            for (auto each = isListOfLocales(list) ? m_tree.first(list) : ElementTree::None;
                 each != ElementTree::None; each = m_tree.next(each)) {
                I18NLocale const locale(I18NString::fromUtf8(trimmed(m_tree.textOf(each))));
                if (locale == m_target) {
                    return true;
                }
            }
        }
        return false;
    }

    ElementTree const& m_tree;
    Targets const& m_targets;
    I18NLocale m_defaultLocale;
    I18NLocale m_target;
    bool m_isListed = false; // it was looked for, and added if it was not there
    XmlText m_text;
};

} // namespace

TranslatableModel::TranslatableModel(std::string_view document, std::string name)
    : m_name(std::move(name)) {
    auto const model = loadModelText(document, m_name);
    std::string ofImage;
    if (isImage(document)) {
        ofImage = modelDocumentOf(*model);
        document = ofImage;
    }
    m_defaultLocale = model->defaultLocale();
    m_elements = model->elementCount();
    m_tree = treeOf(document, m_name);
}

bool TranslatableModel::isOwnLanguage(I18NLocale locale) const {
    for (I18NLocale each = m_defaultLocale; each != I18NLocale(); each = each.getParent()) {
        if (each == locale) {
            return true;
        }
    }
    return locale == I18NLocale();
}

void TranslatableModel::appendTexts(ElementTree::Element element, std::string const& around,
                                    I18NLocale target, std::vector<Text>& texts) const {
    auto const id = m_tree.find(element, "id");
    if (!id || id->empty()) {
        return;
    }
    std::string const name = valueFor(m_tree, element, "name", m_defaultLocale);
    auto const properties = translatedProperties();
    for (std::size_t property = 0; property < properties.size(); ++property) {
        std::string source = valueFor(m_tree, element, properties[property], m_defaultLocale);
        if (source.empty()) {
            continue;
        }
        auto const known = valueIn(m_tree, element, properties[property], target);
        TranslationUnit unit{.object = std::string(*id),
                             .property = std::string(properties[property]),
                             .source = std::move(source)};
        unit.target = known.value_or("");
        unit.note = std::string(m_tree.writtenNameOf(element));
        bool const isName = properties[property] == "name";
        if (isName ? !around.empty() : !name.empty()) {
            unit.note += isName ? " in " + around : " " + name;
        }
        texts.push_back({element, property, std::move(unit), known.has_value()});
    }
}

std::vector<TranslatableModel::Text> TranslatableModel::textsOf(I18NLocale target) const {
    struct Open {
        ElementTree::Element next;
        std::string name;
    };
    std::vector<Text> texts;
    std::vector<Open> open{{ElementTree::Root, ""}};
    while (!open.empty()) {
        ElementTree::Element const each = open.back().next;
        if (each == ElementTree::None) {
            open.pop_back();
            continue;
        }
        open.back().next = each == ElementTree::Root ? ElementTree::None : m_tree.next(each);
        if (isObjectElement(m_tree, each)) {
            appendTexts(each, open.back().name, target, texts);
            open.push_back({m_tree.first(each), valueFor(m_tree, each, "name", m_defaultLocale)});
        }
    }
    return texts;
}

TranslationFile TranslatableModel::texts(I18NLocale target) const {
    TranslationFile file{
        .sourceLocale = m_defaultLocale, .targetLocale = target, .original = m_name};
    for (Text& text : textsOf(target)) {
        file.units.push_back(std::move(text.unit));
    }
    return file;
}

TranslationOutcome TranslatableModel::apply(TranslationFile const& translations, I18NLocale target,
                                            std::string const& file) const {
    std::map<std::pair<std::string_view, std::string_view>, std::size_t> unitOf;
    for (std::size_t number = 0; number < translations.units.size(); ++number) {
        TranslationUnit const& unit = translations.units[number];
        if (!findTranslatedProperty(unit.property)) {
            throw KRLDocumentException(file, unit.position.line, unit.position.column,
                                       "the property \"" + unit.property +
                                           "\" is not translated; name, description and "
                                           "screenTip are");
        }
        if (!canBeText(unit.target)) {
            throw KRLDocumentException(file, unit.position.line, unit.position.column,
                                       "the text holds a character that no document can hold; "
                                       "remove it");
        }
        unitOf.emplace(std::pair(std::string_view(unit.object), std::string_view(unit.property)),
                       number);
    }
    TranslationOutcome outcome;
    outcome.renewed = {.sourceLocale = m_defaultLocale, .targetLocale = target, .original = m_name};
    std::vector<bool> isFound(translations.units.size());
    Targets targets;
    for (Text& text : textsOf(target)) {
        TranslationUnit& today = text.unit;
        auto const known = unitOf.find({today.object, today.property});
        if (known == unitOf.end()) {
            ++outcome.missing;
            outcome.renewed.units.push_back(std::move(today));
            continue;
        }
        isFound[known->second] = true;
        TranslationUnit const& unit = translations.units[known->second];
        std::string const wanted = trimmed(unit.target);
        if (wanted.empty()) {
            ++outcome.untranslated;
        } else if (text.hasTarget && today.target == wanted) {
            ++outcome.same;
        } else {
            ++(text.hasTarget ? outcome.replaced : outcome.added);
            targets.emplace(std::pair(text.element, text.property), wanted);
            today.target = wanted;
        }
        if (!wanted.empty() &&
            (!isSameText(unit.source, today.source) || unit.mark == TranslationMark::Changed)) {
            outcome.changed.push_back({unit, today.source});
            today.mark = TranslationMark::Changed;
        }
        outcome.renewed.units.push_back(std::move(today));
    }
    for (std::size_t number = 0; number < isFound.size(); ++number) {
        if (!isFound[number]) {
            outcome.gone.push_back(translations.units[number]);
            outcome.renewed.units.push_back(translations.units[number]);
            outcome.renewed.units.back().mark = TranslationMark::Gone;
        }
    }
    outcome.document = write(targets, target);
    return outcome;
}

// What was written is what others will read: it is read here first.
std::string TranslatableModel::write(Targets const& targets, I18NLocale target) const {
    std::string document = DocumentWriter(m_tree, targets, m_defaultLocale, target).write();
    if (loadModelText(document, m_name)->elementCount() != m_elements) {
        throw std::logic_error("the model with translations is not the model: " + m_name);
    }
    return document;
}

} // namespace vex
