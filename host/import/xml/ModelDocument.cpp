#include "host/import/xml/ModelDocument.h"

#include "KRLIDOM_Helper.h"
#include "host/import/xml/ModelLoader.h"
#include "host/import/xml/WhiteSpace.h"
#include "host/import/xml/XmlText.h"
#include "host/store/image/StoreData.h"

#include <algorithm>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace vex {

namespace {

bool isReservedAttribute(std::u16string_view name) {
    return name == u"id" || name == u"role" || name == u"class" || name == u"xmlns" ||
           name.starts_with(u"xml:") || name.starts_with(u"xmlns:");
}

class ModelDocument {
public:
    explicit ModelDocument(Model const& model)
        : m_data(model.data()), m_isAttributeName(m_data.names.size()),
          m_localesName(m_data.names.find(u"locales", m_data.texts)),
          m_localeName(m_data.names.find(u"locale", m_data.texts)),
          m_defaultLocaleName(m_data.names.find(u"defaultLocale", m_data.texts)) {
        for (I18NLocale const& locale : m_data.locales) {
            m_placeOfLocale.emplace(locale.getName().view(), m_placeOfLocale.size());
        }
    }

    std::string write() && {
        std::vector<ElementNumber> ends; // of the open elements
        for (ElementNumber element = 0; element < m_data.elementCount(); ++element) {
            for (; !ends.empty() && ends.back() <= element; ends.pop_back()) {
                m_text.close();
            }
            open(element);
            ends.push_back(m_data.elements[element].end);
        }
        for (; !ends.empty(); ends.pop_back()) {
            m_text.close();
        }
        return std::move(m_text).take();
    }

private:
    std::u16string_view view(TextRef text) const { return m_data.texts.view(text); }
    std::string utf8(TextRef text) const { return I18NString(view(text)).toUtf8(); }
    std::string utf8OfName(Atom name) const { return utf8(m_data.names.text(name)); }

    void open(ElementNumber element) {
        Shape const& shape = m_data.shapeOf(element);
        m_text.open(utf8OfName(shape.cls));
        std::size_t attributes = 0;
        for (auto const& [which, name] : {std::pair(Own::Id, "id"), std::pair(Own::Role, "role"),
                                          std::pair(Own::Class, "class")}) {
            if (TextRef const text = m_data.ownText(element, which)) {
                m_text.attribute(name, utf8(text));
                ++attributes;
            }
        }
        std::span<ShapeEntry const> const simple = m_data.shapes.simple(shape);
        std::uint32_t const firstValue = m_data.elements[element].firstValue + shape.ownCount;
        std::size_t const asAttributes = countAttributes(element, simple, firstValue, attributes);
        for (std::size_t at = 0; at < asAttributes; ++at) {
            m_text.attribute(utf8OfName(simple[at].name), utf8(m_data.values[firstValue + at]));
        }
        m_text.text(utf8(m_data.ownText(element, Own::Text)));
        for (std::size_t at = asAttributes; at < simple.size(); ++at) {
            std::uint32_t const value = firstValue + static_cast<std::uint32_t>(at);
            if (element != 0 || !writeLocales(simple[at], value)) {
                writeProperty(simple[at], value);
            }
        }
    }

    /// How many of the first properties are written as attributes. White space around a text
    /// counts in an attribute alone: up to the last such text all are. Of the others as many
    /// as can be, where a reader may hold as many names.
    std::size_t countAttributes(ElementNumber element, std::span<ShapeEntry const> simple,
                                std::uint32_t firstValue, std::size_t others) {
        std::size_t const most = DocumentLimits().attributesPerElement - others;
        std::size_t needed = 0;
        std::size_t possible = 0;
        for (; possible < std::min(simple.size(), most); ++possible) {
            ShapeEntry const& entry = simple[possible];
            auto const before = simple.first(possible);
            bool const isRepeated =
                std::any_of(before.begin(), before.end(),
                            [&](ShapeEntry const& other) { return other.name == entry.name; });
            std::uint32_t const value = firstValue + static_cast<std::uint32_t>(possible);
            if (isRepeated || !canBeAttribute(element, entry, value)) {
                break;
            }
            if (!isTrimmed(view(m_data.values[value]))) {
                needed = possible + 1;
            }
        }
        return m_data.names.size() <= DocumentLimits().distinctNames ? possible : needed;
    }

    bool canBeAttribute(ElementNumber element, ShapeEntry const& entry, std::uint32_t value) {
        if (entry.locale != 0 || entry.role != 0 || !isAttributeName(entry.name) ||
            m_data.findPropertyOwner(value) != nullptr) {
            return false;
        }
        // As an attribute of the model it would say what the default locale is.
        TextRef const text = m_data.values[value];
        return element != 0 || entry.name != m_defaultLocaleName || text == 0 ||
               view(text) == m_data.defaultLocale.getName().view();
    }

    bool isAttributeName(Atom name) {
        std::optional<bool>& known = m_isAttributeName[name];
        if (!known) {
            std::u16string_view const text = view(m_data.names.text(name));
            known = text.size() <= DocumentLimits().nameLength && !isReservedAttribute(text) &&
                    KRLIDOM_Helper::isName(I18NString(text));
        }
        return *known;
    }

    void writeProperty(ShapeEntry const& entry, std::uint32_t value) {
        m_text.open("property");
        m_text.attribute("name", utf8OfName(entry.name));
        if (entry.locale != 0) {
            m_text.attribute("locale", m_data.usedLocales[entry.locale].getName().toUtf8());
        }
        if (entry.role != 0) {
            m_text.attribute("role", utf8(entry.role));
        }
        m_text.text(utf8(m_data.values[value]));
        if (PropertyOwner const* const owner = m_data.findPropertyOwner(value)) {
            std::uint32_t inside = owner->firstValue;
            for (ShapeEntry const& each : m_data.shapes.entries(m_data.shapes[owner->shape])) {
                writeProperty(each, inside++);
            }
        }
        m_text.close();
    }

    /// False for a property that only has the name of locales: its entries are not those that
    /// the model says next.
    bool writeLocales(ShapeEntry const& entry, std::uint32_t value) {
        PropertyOwner const* const owner = m_data.findPropertyOwner(value);
        if (entry.name != m_localesName || entry.locale != 0 || entry.role != 0 ||
            m_data.values[value] != 0 || owner == nullptr) {
            return false;
        }
        std::size_t told = m_toldLocales;
        std::span<ShapeEntry const> const entries =
            m_data.shapes.entries(m_data.shapes[owner->shape]);
        for (std::uint32_t at = 0; at < entries.size(); ++at) {
            std::uint32_t const inside = owner->firstValue + at;
            if (entries[at].name != m_localeName || entries[at].locale != 0 ||
                entries[at].role != 0 || m_data.findPropertyOwner(inside) != nullptr) {
                return false;
            }
            auto const place = m_placeOfLocale.find(view(m_data.values[inside]));
            if (place == m_placeOfLocale.end() || place->second > told) {
                return false;
            }
            told = std::max(told, place->second + 1);
        }
        m_toldLocales = told;
        m_text.open("locales");
        for (std::uint32_t at = 0; at < entries.size(); ++at) {
            m_text.element("locale", utf8(m_data.values[owner->firstValue + at]));
        }
        m_text.close();
        return true;
    }

    StoreData const& m_data;
    std::vector<std::optional<bool>> m_isAttributeName; // by name, once asked
    Atom m_localesName;
    Atom m_localeName;
    Atom m_defaultLocaleName;
    std::map<std::u16string_view, std::size_t> m_placeOfLocale; // among those of the model
    std::size_t m_toldLocales = 0;
    XmlText m_text;
};

} // namespace

std::string modelDocumentOf(Model const& model) {
    return ModelDocument(model).write();
}

} // namespace vex
