#include "host/store/build/ModelWriter.h"

#include "host/store/build/ModelAddition.h"
#include "host/store/build/StoreBuilder.h"
#include "host/store/build/WrittenModel.h"
#include "host/store/image/Model.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace vex {

namespace {

void require(bool holds, char const* misuse) {
    if (!holds) {
        throw std::logic_error(std::string("ModelWriter: ") + misuse);
    }
}

} // namespace

/// What was opened and is not closed yet.
struct ModelWriter::Open {
    enum class Kind { Object, Property, Locales };

    Kind kind;
    bool hasProperties = false; // a property, locales: some of its own were added
    ShapeEntry entry{};         // of a property
};

ModelWriter::ModelWriter(SourceReport& report, ModelWriterOptions const& options)
    : m_report(report), m_limits(options.limits), m_keepPositions(options.keepPositions),
      m_isDocument(options.isDocument), m_addition(options.addition),
      m_store(std::make_unique<StoreBuilder>(options.keepPositions, options.sourceSize)),
      m_defaultLocale(I18NString("en_US")), m_model(m_store->addName(u"model")),
      m_property(m_store->addName(u"property")), m_localesName(m_store->addName(u"locales")),
      m_locale(m_store->addName(u"locale")), m_name(m_store->addName(u"name")),
      m_defaultLocaleName(m_store->addName(u"defaultLocale")) {}

ModelWriter::~ModelWriter() = default;

void ModelWriter::stopTooDeep() {
    m_report.stop("too-deep", "elements are nested more than " + std::to_string(m_limits.depth) +
                                  " deep; flatten the model here");
}

ModelWriter::Open& ModelWriter::innermostObject(char const* misuse) {
    require(!m_open.empty() && m_open.back().kind == Open::Kind::Object, misuse);
    return m_open.back();
}

ModelWriter::Open& ModelWriter::innermostOwner(char const* misuse) {
    require(!m_open.empty() && m_open.back().kind != Open::Kind::Locales, misuse);
    return m_open.back();
}

void ModelWriter::openObject(Name cls) {
    if (m_open.empty()) {
        require(cls == m_model, "the first object is of the class \"model\"");
        require(m_store->elementCount() == 0, "there is one object of the class \"model\" only");
    } else {
        innermostObject("an object was opened in a property or in locales");
    }
    admitDepth(m_open.size() + 1);
    if (!m_isDocument) {
        checkClass(cls);
    }
    m_store->openElement(cls.isEmpty() ? m_name.m_number : cls.m_number,
                         m_keepPositions && !m_isAdding ? m_report.source().position().inDocument
                                                        : DocumentPosition());
    m_open.push_back({Open::Kind::Object});
}

ModelWriter::PreparedId ModelWriter::prepareId(std::u16string_view id) const {
    return {id, m_store->prepareText(id)};
}

void ModelWriter::setId(PreparedId id) {
    innermostObject("an id was set outside of an object");
    if (id.text.empty()) {
        return;
    }
    require(!m_store->hasId(), "an object was given a second id");
    if (isHeldByDocument(id.text) && !m_store->setId(id.text, id.hash)) {
        m_report.report("duplicate-id", "another element has the id " + inQuotes(id.text) +
                                            " too; give one of them an id of its own");
    }
}

void ModelWriter::setRole(std::u16string_view role) {
    innermostObject("a role was set outside of an object");
    m_store->setOwn(Own::Role, heldByDocument(role));
}

void ModelWriter::setClass(std::u16string_view cls) {
    innermostObject("a class was set outside of an object");
    m_store->setOwn(Own::Class, heldByDocument(cls));
}

void ModelWriter::setText(std::u16string_view text) {
    innermostObject("a text was set outside of an object");
    m_store->setOwn(Own::Text, heldByDocument(text));
}

void ModelWriter::setKnownText(std::uint32_t text) {
    innermostObject("a text was set outside of an object");
    m_store->setOwn(Own::Text, text);
}

void ModelWriter::makeAddition() {
    ModelAddition* const addition = std::exchange(m_addition, nullptr);
    if (addition != nullptr && !m_report.hasErrors()) {
        m_isAdding = true; // what is added stands nowhere in the source
        WrittenModel written(*m_store, m_defaultLocale);
        addition->addTo(written, *this, m_report);
    }
}

void ModelWriter::closeObject() {
    innermostObject("an object was closed that is not the innermost thing open");
    if (m_open.size() == 1) {
        makeAddition();
    }
    m_open.pop_back();
    m_store->closeElement();
}

// Few properties have properties of their own.
void ModelWriter::openProperties(Open& owner) {
    if (owner.kind != Open::Kind::Object && !owner.hasProperties) {
        owner.hasProperties = true;
        m_store->openProperty();
    }
}

std::uint32_t ModelWriter::closeProperties(Open const& owner) {
    return owner.hasProperties ? m_store->closeProperty() : NotFound;
}

ShapeEntry ModelWriter::entryOf(Property const& property) {
    ShapeEntry entry{property.name.m_number,
                     property.locale.has_value() ? property.locale->getNumber() : 0,
                     property.role.empty() ? 0 : m_store->addText(heldByDocument(property.role))};
    if (property.name.isEmpty()) {
        m_report.report("property-without-name",
                        "the property has no name; " +
                            std::string(m_report.source().terms().onPropertyWithoutName));
        entry.name = m_property.m_number;
    } else if (entry.locale != 0 && m_store->hasValue(entry.name, entry.locale)) {
        m_report.report("duplicate-value", "the property has a value for this locale already; "
                                           "remove one of the two or correct its locale");
    }
    return entry;
}

void ModelWriter::addProperty(Property const& property, std::u16string_view value) {
    openProperties(innermostOwner("a property was added outside of an object"));
    ShapeEntry const entry = entryOf(property);
    m_store->addValue(entry, heldByDocument(value));
}

void ModelWriter::openProperty(Property const& property) {
    openProperties(innermostOwner("a property was opened outside of an object"));
    admitDepth(m_open.size() + 1);
    m_open.push_back({Open::Kind::Property, false, entryOf(property)});
}

void ModelWriter::closeProperty(std::u16string_view value) {
    require(!m_open.empty() && m_open.back().kind == Open::Kind::Property,
            "a property was closed that is not the innermost thing open");
    Open const property = m_open.back();
    m_open.pop_back();
    m_store->addValue(property.entry, heldByDocument(value), closeProperties(property));
}

void ModelWriter::setDefaultLocale(std::u16string_view name) {
    innermostObject("the default locale was set outside of the model");
    require(m_open.size() == 1, "the default locale was set in another object than the model");
    m_defaultLocale = locale(name);
    addProperty({m_defaultLocaleName}, m_defaultLocale.getName().view());
}

bool ModelWriter::openLocales() {
    innermostObject("locales were opened outside of an object");
    if (m_open.size() != 1) {
        m_report.report("locales-outside-model",
                        "\"locales\" stands directly in \"model\" only; move it there");
        return false;
    }
    admitDepth(m_open.size() + 1);
    m_open.push_back({Open::Kind::Locales});
    return true;
}

void ModelWriter::addLocale(std::u16string_view name) {
    require(!m_open.empty() && m_open.back().kind == Open::Kind::Locales,
            "a locale was added outside of locales");
    openProperties(m_open.back());
    I18NLocale const added = locale(name);
    m_locales.add(added);
    m_store->addValue({m_locale.m_number, 0, 0}, added.getName().view());
}

void ModelWriter::closeLocales() {
    require(!m_open.empty() && m_open.back().kind == Open::Kind::Locales,
            "locales were closed that are not the innermost thing open");
    Open const locales = m_open.back();
    m_open.pop_back();
    m_store->addValue({m_localesName.m_number, 0, 0}, {}, closeProperties(locales));
}

std::shared_ptr<Model const> ModelWriter::finish() && {
    if (m_report.hasErrors()) {
        return nullptr;
    }
    require(m_open.empty() && m_store->elementCount() != 0,
            "the model was finished before it was closed");
    return std::make_shared<Model const>(std::move(*m_store).finish(
        m_defaultLocale, std::move(m_locales.all), std::move(m_usedLocales.all)));
}

} // namespace vex
