#include "host/import/draft/DraftedModel.h"

#include "I18NString.h"
#include "host/import/draft/ImportWork.h"
#include "host/store/image/Model.h"

namespace vex {

namespace {

std::u16string utf16(std::string const& text) {
    return std::u16string(I18NString::fromUtf8(text).view());
}

class DraftedModel final : private ModelSource {
public:
    explicit DraftedModel(ImportWork& work)
        : m_draft(work.draft), m_name(work.request.sourceName()), m_file(m_name),
          m_report(m_file, *this, work.found),
          m_writer(m_report, {.limits = work.request.limits.model}) {}

    std::shared_ptr<Model const> write() && {
        try {
            writeObjects();
        } catch (SourceReport::Stop const&) {
            return nullptr; // the reason was reported
        }
        return std::move(m_writer).finish();
    }

private:
    SourcePosition position() const override { return {m_position}; }

    void writeObjects() {
        m_draft.model.walk([&](DraftObject const& object) { open(object); },
                           [&](DraftObject const& object) {
                               if (object.container == DraftObject::None) {
                                   writeViews();
                               }
                               m_writer.closeObject();
                           });
    }

    void open(DraftObject const& object) {
        m_position = object.position;
        m_file = m_draft.model.fileOf(object).empty() ? m_name : m_draft.model.fileOf(object);
        m_writer.openObject(utf16(object.className));
        if (object.container == DraftObject::None) {
            writeLanguages();
        }
        m_writer.setId(utf16(object.id));
        for (DraftValue const& value : object.values) {
            std::u16string const text = utf16(value.value);
            ModelWriter::Name const name = m_writer.countedName(utf16(value.property));
            if (value.locale == I18NLocale()) {
                m_writer.addProperty({name}, text);
            } else {
                m_writer.addProperty({name, m_writer.locale(value.locale.getName().view())}, text);
            }
        }
    }

    void writeLanguages() {
        m_writer.setDefaultLocale(m_draft.model.defaultLocale().getName().view());
        m_writer.openLocales();
        for (I18NLocale const locale : m_draft.model.locales()) {
            m_writer.addLocale(locale.getName().view());
        }
        m_writer.closeLocales();
    }

    void writeViews() {
        if (m_draft.views.empty()) {
            return;
        }
        m_position = {};
        m_file = m_name;
        m_writer.openObject(u"securityViews");
        for (DraftView const& view : m_draft.views) {
            m_writer.openObject(u"securityView");
            m_writer.setId(utf16(view.id));
            m_writer.addProperty(u"name", utf16(view.name));
            if (!view.description.empty()) {
                m_writer.addProperty(u"description", utf16(view.description));
            }
            m_writer.openObject(u"set");
            m_writer.addProperty(u"kind", u"included");
            for (std::size_t const object : view.included) {
                m_writer.openObject(u"item");
                m_writer.setText(utf16(m_draft.model[object].id));
                m_writer.closeObject();
            }
            m_writer.closeObject();
            m_writer.closeObject();
        }
        m_writer.closeObject();
    }

    ImportDraft const& m_draft;
    std::string const m_name;
    std::string m_file; // of the object that is written
    DocumentPosition m_position{};
    SourceReport m_report;
    ModelWriter m_writer;
};

} // namespace

std::shared_ptr<Model const> writeDraftedModel(ImportWork& work) {
    return DraftedModel(work).write();
}

} // namespace vex
