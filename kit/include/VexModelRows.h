#pragma once

#include "I18NString.h"
#include "VexHostExport.h"
#include "VexModel.h"

#include <cstddef>
#include <memory>
#include <string>

/// A model from a host's own data: a tree of rows, each an element with what is known
/// of it, in one or several languages.
///
///     VexModelRows rows("en");
///     VexModelRows::Row const shop = rows.add(VexModelRows::Root, "namespace", "n1");
///     rows.addProperty(shop, "name", "Shop");
///     rows.addProperty(shop, "name", "Laden", "de");
///     std::shared_ptr<VexModel const> const model = rows.load("table of shops");
///
/// The model that comes of it keeps every rule of `VexObject`: languages, filters,
/// "ID", collections, references. Members stand in the order in which they were added.
/// Texts are taken as they are and copied; an empty one is none. Rows can be added to
/// after loading, for the next version of the model; a loaded one does not change.
/// Threads: one at a time.
class VEX_HOST_API VexModelRows {
public:
    /// The number of a row.
    using Row = std::size_t;
    /// The model itself, the row that is there from the start.
    static constexpr Row Root = 0;

    /// The model's default locale, in any spelling; also its property "defaultLocale".
    explicit VexModelRows(I18NString const& defaultLocale);
    /// @{
    /// Leaves `other` without use.
    VexModelRows(VexModelRows&& other) noexcept;
    VexModelRows& operator=(VexModelRows&& other) noexcept;
    /// @}
    ~VexModelRows();

    /// Adds a locale to those that the model supports, which its property "locales" lists.
    void addLocale(I18NString const& name);

    /// A new row, the last member of `parent`. Raises `KRLException` for a parent that
    /// is not there.
    Row add(Row parent, I18NString const& className, I18NString const& id = {});

    /// A value of a simple property; of an empty locale, one for all languages. Several
    /// with a locale make up one property. Raises `KRLException` for a row that is not
    /// there.
    void addProperty(Row row, I18NString const& name, I18NString const& value,
                     I18NString const& locale = {}, I18NString const& role = {});

    /// @{
    /// What `VexObject::GetValue`, `GetRole`, `GetClass` and `GetId` of the row give;
    /// the last call counts. Raises `KRLException` for a row that is not there.
    void setText(Row row, I18NString const& text);
    void setRole(Row row, I18NString const& role);
    void setClass(Row row, I18NString const& text);
    void setId(Row row, I18NString const& id);
    /// @}

    /// How many rows, the model itself counted.
    std::size_t size() const;

    /// The model. `name` stands for the source in messages. Raises
    /// `KRLDocumentException`, whose text names the row, for the first one that no model
    /// can hold: an id that another row has, two values for one locale, an unknown locale,
    /// a property without a name, a class that is no XML name or is one of "property" and
    /// "locales", text that XML cannot hold, more than 512 rows inside each other, more
    /// than 10000 classes, a class of more than 1000 characters. `KRLLimitException` when
    /// there are more rows than a model can number.
    std::shared_ptr<VexModel const> load(std::string const& name = "rows") const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};
