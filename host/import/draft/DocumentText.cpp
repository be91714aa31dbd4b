#include "host/import/draft/DocumentText.h"

#include "KRLIDOM_Helper.h"
#include "host/import/xml/XmlText.h"

#include <algorithm>
#include <array>

namespace vex {

namespace {

constexpr std::size_t mostAttributes = 100; // of those that a reader allows

constexpr std::array<std::string_view, 5> reservedAttributes{"id", "role", "class", "defaultLocale",
                                                             "xmlns"};

bool canBeAttribute(std::string const& property) {
    return KRLIDOM_Helper::isName(I18NString::fromUtf8(property)) &&
           property.find(':') == std::string::npos &&
           std::find(reservedAttributes.begin(), reservedAttributes.end(), property) ==
               reservedAttributes.end();
}

class ModelDocument {
public:
    explicit ModelDocument(ImportDraft const& draft) : m_draft(draft) {}

    std::string write() && {
        m_draft.model.walk([&](DraftObject const& object) { open(object); },
                           [&](DraftObject const& object) {
                               if (object.container == DraftObject::None) {
                                   writeViews();
                               }
                               m_text.close();
                           });
        return std::move(m_text).take();
    }

private:
    void open(DraftObject const& object) {
        m_text.open(object.className);
        m_text.attribute("id", object.id);
        bool const isRoot = object.container == DraftObject::None;
        if (isRoot) {
            m_text.attribute("defaultLocale", m_draft.model.defaultLocale().getName().toUtf8());
        }
        std::vector<DraftValue const*> elements = writeAttributes(object);
        if (isRoot) {
            m_text.open("locales");
            for (I18NLocale const locale : m_draft.model.locales()) {
                m_text.element("locale", locale.getName().toUtf8());
            }
            m_text.close();
        }
        for (DraftValue const* const value : elements) {
            m_text.open("property");
            m_text.attribute("name", value->property);
            if (value->locale != I18NLocale()) {
                m_text.attribute("locale", value->locale.getName().toUtf8());
            }
            m_text.text(value->value);
            m_text.close();
        }
    }

    /// Gives what could not be one: all from the first on that is for all languages, so that
    /// the order stays, and what is for one.
    std::vector<DraftValue const*> writeAttributes(DraftObject const& object) {
        std::vector<DraftValue const*> elements;
        std::vector<std::string_view> written;
        bool goesOn = true;
        for (DraftValue const& value : object.values) {
            if (value.locale != I18NLocale()) {
                elements.push_back(&value);
                continue;
            }
            goesOn = goesOn && written.size() < mostAttributes && canBeAttribute(value.property) &&
                     std::find(written.begin(), written.end(), value.property) == written.end();
            if (goesOn) {
                m_text.attribute(value.property, value.value);
                written.push_back(value.property);
            } else {
                elements.push_back(&value);
            }
        }
        return elements;
    }

    void writeViews() {
        if (m_draft.views.empty()) {
            return;
        }
        m_text.open("securityViews");
        for (DraftView const& view : m_draft.views) {
            m_text.open("securityView");
            m_text.attribute("id", view.id);
            m_text.attribute("name", view.name);
            if (!view.description.empty()) {
                m_text.attribute("description", view.description);
            }
            m_text.open("set");
            m_text.attribute("kind", "included");
            for (std::size_t const object : view.included) {
                m_text.element("item", m_draft.model[object].id);
            }
            m_text.close();
            m_text.close();
        }
        m_text.close();
    }

    ImportDraft const& m_draft;
    XmlText m_text;
};

} // namespace

std::string modelDocumentOf(ImportDraft const& draft) {
    return ModelDocument(draft).write();
}

std::string catalogueDocumentOf(ImportDraft const& draft, std::string const& name) {
    XmlText text;
    text.open("catalog");
    text.open("model");
    text.attribute("path", "/content/" + name);
    text.attribute("file", name + ".model.xml");
    for (DraftGrant const& grant : draft.grants) {
        text.open("grant");
        text.attribute("role", grant.role);
        text.attribute("view", draft.views[grant.view].id);
        text.close();
    }
    text.close();
    for (DraftUser const& user : draft.users()) {
        text.open("user");
        text.attribute("name", user.name);
        for (std::string const& role : user.roles) {
            text.element("role", role);
        }
        text.close();
    }
    text.close();
    return std::move(text).take();
}

} // namespace vex
