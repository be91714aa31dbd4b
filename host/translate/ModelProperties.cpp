#include "host/translate/ModelProperties.h"

#include "I18NString.h"
#include "host/import/draft/PlainText.h"

#include <algorithm>
#include <iterator>

namespace vex {

namespace {

constexpr std::string_view translated[] = {"name", "description", "screenTip"};

} // namespace

std::span<std::string_view const> translatedProperties() {
    return translated;
}

std::optional<std::size_t> findTranslatedProperty(std::string_view name) {
    auto const found = std::find(std::begin(translated), std::end(translated), name);
    return found == std::end(translated)
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - std::begin(translated)));
}

bool isPropertyElement(ElementTree const& tree, ElementTree::Element element) {
    return tree.writtenNameOf(element) == "property";
}

bool isObjectElement(ElementTree const& tree, ElementTree::Element element) {
    return !isPropertyElement(tree, element) && tree.writtenNameOf(element) != "locales";
}

I18NLocale localeOfProperty(ElementTree const& tree, ElementTree::Element property) {
    auto const locale = tree.find(property, "locale");
    return locale ? I18NLocale(I18NString::fromUtf8(*locale)) : I18NLocale();
}

std::optional<std::string> valueIn(ElementTree const& tree, ElementTree::Element object,
                                   std::string_view property, I18NLocale locale) {
    auto const attribute = tree.find(object, property);
    if (locale == I18NLocale() && attribute) {
        return std::string(*attribute);
    }
    for (auto each = tree.first(object); each != ElementTree::None; each = tree.next(each)) {
        if (isPropertyElement(tree, each) && tree.find(each, "name") == property &&
            localeOfProperty(tree, each) == locale) {
            return trimmed(tree.textOf(each));
        }
    }
    return std::nullopt;
}

std::string valueFor(ElementTree const& tree, ElementTree::Element object,
                     std::string_view property, I18NLocale locale) {
    for (I18NLocale each = locale;; each = each.getParent()) {
        if (auto value = valueIn(tree, object, property, each)) {
            return *value;
        }
        if (each == I18NLocale()) {
            return "";
        }
    }
}

} // namespace vex
