#include "VexModelRows.h"

#include "KRLException.h"
#include "host/store/build/ModelWriter.h"
#include "kit/src/VexModelState.h"

#include <vector>

namespace {

struct RowProperty {
    I18NString name;
    I18NString value;
    I18NString locale;
    I18NString role;
};

struct RowData {
    I18NString className;
    I18NString id;
    I18NString role;
    I18NString classAttribute;
    I18NString text;
    std::vector<RowProperty> properties;
    std::vector<VexModelRows::Row> members;
};

/// Tells messages which row is being written.
class RowSource final : private vex::ModelSource {
public:
    vex::ModelSource const& source() const { return *this; }
    void setRow(VexModelRows::Row row) { m_row = row; }

private:
    vex::SourcePosition position() const override {
        return {{}, m_row == VexModelRows::Root ? "the model" : "row " + std::to_string(m_row)};
    }

    VexModelRows::Row m_row = VexModelRows::Root;
};

/// Writes the rows in the order of a document.
class RowWriter {
public:
    RowWriter(std::vector<RowData> const& rows, RowSource& source, vex::ModelWriter& writer)
        : m_rows(rows), m_source(source), m_writer(writer) {}

    void write(I18NString const& defaultLocale, std::vector<I18NString> const& locales) {
        m_writer.openObject(m_rows.front().className.view());
        m_writer.setDefaultLocale(defaultLocale.view());
        if (!locales.empty() && m_writer.openLocales()) {
            for (I18NString const& locale : locales) {
                m_writer.addLocale(locale.view());
            }
            m_writer.closeLocales();
        }
        writeRow(VexModelRows::Root);
        writeMembers();
    }

private:
    struct OpenRow {
        RowData const& row;
        std::size_t nextMember = 0;
    };

    // No recursion: rows may stand in each other deeper than the stack.
    void writeMembers() {
        std::vector<OpenRow> open{{m_rows.front()}};
        while (!open.empty()) {
            OpenRow& innermost = open.back();
            if (innermost.nextMember == innermost.row.members.size()) {
                m_writer.closeObject();
                open.pop_back();
                continue;
            }
            VexModelRows::Row const member = innermost.row.members[innermost.nextMember++];
            m_source.setRow(member);
            m_writer.openObject(m_rows[member].className.view());
            writeRow(member);
            open.push_back({m_rows[member]});
        }
    }

    void writeRow(VexModelRows::Row number) {
        RowData const& row = m_rows[number];
        if (!row.id.empty()) {
            m_writer.setId(row.id.view());
        }
        m_writer.setRole(row.role.view());
        m_writer.setClass(row.classAttribute.view());
        m_writer.setText(row.text.view());
        for (RowProperty const& property : row.properties) {
            vex::ModelWriter::Property written{m_writer.name(property.name.view())};
            if (!property.locale.empty()) {
                written.locale = m_writer.locale(property.locale.view());
            }
            written.role = property.role.view();
            m_writer.addProperty(written, property.value.view());
        }
    }

    std::vector<RowData> const& m_rows;
    RowSource& m_source;
    vex::ModelWriter& m_writer;
};

} // namespace

struct VexModelRows::State {
    RowData& at(Row row) {
        if (row >= rows.size()) {
            throw KRLException("there is no row " + std::to_string(row) + " among " +
                               std::to_string(rows.size()) + " rows; add it first");
        }
        return rows[row];
    }

    I18NString defaultLocale;
    std::vector<I18NString> locales;
    std::vector<RowData> rows;
};

VexModelRows::VexModelRows(I18NString const& defaultLocale) : m_state(std::make_unique<State>()) {
    m_state->defaultLocale = defaultLocale;
    m_state->rows.emplace_back().className = "model";
}

VexModelRows::VexModelRows(VexModelRows&& other) noexcept = default;
VexModelRows& VexModelRows::operator=(VexModelRows&& other) noexcept = default;
VexModelRows::~VexModelRows() = default;

void VexModelRows::addLocale(I18NString const& name) {
    m_state->locales.push_back(name);
}

VexModelRows::Row VexModelRows::add(Row parent, I18NString const& className, I18NString const& id) {
    m_state->at(parent);
    Row const row = m_state->rows.size();
    RowData added;
    added.className = className;
    added.id = id;
    m_state->rows.push_back(std::move(added));
    m_state->at(parent).members.push_back(row);
    return row;
}

void VexModelRows::addProperty(Row row, I18NString const& name, I18NString const& value,
                               I18NString const& locale, I18NString const& role) {
    m_state->at(row).properties.push_back({name, value, locale, role});
}

void VexModelRows::setText(Row row, I18NString const& text) {
    m_state->at(row).text = text;
}

void VexModelRows::setRole(Row row, I18NString const& role) {
    m_state->at(row).role = role;
}

void VexModelRows::setClass(Row row, I18NString const& text) {
    m_state->at(row).classAttribute = text;
}

void VexModelRows::setId(Row row, I18NString const& id) {
    m_state->at(row).id = id;
}

std::size_t VexModelRows::size() const {
    return m_state->rows.size();
}

std::shared_ptr<VexModel const> VexModelRows::load(std::string const& name) const {
    RowSource source;
    vex::Diagnostics errors;
    vex::SourceReport report(name, source.source(), errors);
    vex::ModelWriter writer(report);
    try {
        RowWriter(m_state->rows, source, writer).write(m_state->defaultLocale, m_state->locales);
    } catch (vex::SourceReport::Stop const&) {
        // What ended the writing stands among the errors.
    }
    std::shared_ptr<vex::Model const> model = std::move(writer).finish();
    if (model == nullptr) {
        vex::Diagnostic const& first = errors.front();
        std::string const where = first.part.empty() ? "" : first.part + ": ";
        throw KRLDocumentException(first.file, first.line, first.column, where + first.text);
    }
    return std::shared_ptr<VexModel const>(
        new VexModel(std::make_unique<VexModel::State>(std::move(model))));
}
