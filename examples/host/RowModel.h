#pragma once

#include "VexLocaleChoice.h"
#include "VexObject.h"
#include "VexObjectModel.h"
#include "VexReferenceIndex.h"
#include "VexSession.h"

#include <iterator>
#include <vector>

/// The host's own data: here a table, elsewhere a database or a file.
struct Row {
    char const* className;
    char const* id;
    char const* role;
    char const* english;
    char const* german;
    int parent;
};
constexpr Row rows[] = {
    {"model", "m", "", "", "", -1},
    {"namespace", "n", "", "Shop", "Laden", 0},
    {"querySubject", "q", "", "Orders", "Aufträge", 1},
    {"queryItem", "i1", "measure", "Quantity", "Menge", 2},
    {"queryItem", "i2", "", "Ordered", "", 2},
};

/// Shows the rows as model objects. Each row has four handles: its element, its name
/// in two languages, its id as a property.
class RowModel final : public VexObjectModel, public VexObjectStore {
public:
    RowModel() {
        TakeHandles(PartCount * static_cast<std::uint32_t>(std::size(rows)));
        m_references = VexReferenceIndex(GetRootObject(), m_languages[0]);
    }

    VEX_HANDLE GetRootObject() const override { return At(0, Element); }
    VEX_HANDLE GetObjectByReference(I18NString const& reference, long) const override {
        return m_references.find(reference);
    }

    bool IsObject(VEX_HANDLE object) const override { return *TextOf(object) != '\0'; }
    bool GetName(VEX_HANDLE object, I18NString& name) const override {
        constexpr char const* names[] = {nullptr, "name", "name", "ID"};
        Part const part = PartOf(object);
        name = part == Element ? RowOf(object).className : names[part];
        return true;
    }
    bool GetId(VEX_HANDLE object, I18NString& id) const override {
        return PartOf(object) == Element && Give(RowOf(object).id, id);
    }
    bool GetValue(VEX_HANDLE object, I18NString& value, bool) const override {
        return PartOf(object) != Element && Give(TextOf(object), value);
    }
    bool GetClass(VEX_HANDLE, I18NString&) const override { return false; }
    bool GetRole(VEX_HANDLE object, I18NString& role) const override {
        return PartOf(object) == Element && Give(RowOf(object).role, role);
    }
    I18NLocale const* GetLocale(VEX_HANDLE object) const override {
        Part const part = PartOf(object);
        return part == Id ? nullptr : &m_languages[part == German ? 1 : 0];
    }

    VEX_HANDLE GetParent(VEX_HANDLE object) const override {
        return PartOf(object) != Element  ? At(Number(object), Element)
               : RowOf(object).parent < 0 ? VEX_HANDLE()
                                          : At(RowOf(object).parent, Element);
    }
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                 I18NLocale const* locale) const override {
        if (PartOf(object) != Element) {
            return VEX_HANDLE();
        }
        if (name == "ID") {
            return IfThere(At(Number(object), Id));
        }
        return name == "name" ? NameOf(object, locale) : VEX_HANDLE();
    }
    VEX_HANDLE GetPropertyByRole(VEX_HANDLE, I18NString const&, I18NLocale const*) const override {
        return VEX_HANDLE(); // no property has a role
    }
    bool Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                    I18NString const* role) const override {
        VEX_HANDLE const property = GetPropertyByName(object, "name", nullptr);
        if (property.IsNotNull() && (name == nullptr || *name == "name") && role == nullptr) {
            found.push_back(property);
        }
        return true;
    }
    bool hasProperties(VEX_HANDLE object) const override {
        return GetPropertyByName(object, "name", nullptr).IsNotNull();
    }

    bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const* name,
                      I18NString const* role) const override {
        for (int row = 0; PartOf(object) == Element && row < RowCount; ++row) {
            if (rows[row].parent == Number(object) &&
                (name == nullptr || *name == rows[row].className) &&
                (role == nullptr || (!role->empty() && *role == rows[row].role))) {
                found.push_back(At(row, Element));
            }
        }
        return true;
    }
    bool hasChildObjects(VEX_HANDLE object) const override {
        Vex_Handle_Collection found;
        childObjects(object, found, nullptr, nullptr);
        return !found.empty();
    }
    bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                              Vex_Handle_Collection& found) const override {
        for (int row = 0; PartOf(object) == Element && row < RowCount; ++row) {
            if (tag == rows[row].className && IsBelow(row, Number(object))) {
                found.push_back(At(row, Element));
            }
        }
        return true;
    }

private:
    enum Part : std::uint32_t { Element, English, German, Id, PartCount };
    static constexpr int RowCount = static_cast<int>(std::size(rows));

    VEX_HANDLE At(int row, Part part) const {
        return VEX_HANDLE(FirstHandle() + PartCount * static_cast<std::uint32_t>(row) + part);
    }
    Part PartOf(VEX_HANDLE object) const {
        return static_cast<Part>((object.Number() - FirstHandle()) % PartCount);
    }
    int Number(VEX_HANDLE object) const {
        return static_cast<int>((object.Number() - FirstHandle()) / PartCount);
    }
    Row const& RowOf(VEX_HANDLE object) const { return rows[Number(object)]; }

    /// What the handle stands for; "" for a name or id that the row lacks.
    char const* TextOf(VEX_HANDLE object) const {
        Row const& row = RowOf(object);
        char const* const texts[] = {row.className, row.english, row.german, row.id};
        return texts[PartOf(object)];
    }
    VEX_HANDLE IfThere(VEX_HANDLE object) const { return IsObject(object) ? object : VEX_HANDLE(); }

    /// The row's name as a language finds it.
    VEX_HANDLE NameOf(VEX_HANDLE object, I18NLocale const* locale) const {
        std::vector<VEX_HANDLE> values;
        std::vector<I18NLocale> languages;
        for (Part const part : {English, German}) {
            if (IsObject(At(Number(object), part))) {
                values.push_back(At(Number(object), part));
                languages.push_back(*GetLocale(values.back()));
            }
        }
        auto const chosen = VexChooseValue(languages, locale, m_languages[0]);
        return chosen ? values[*chosen] : VEX_HANDLE();
    }

    static bool IsBelow(int row, int ancestor) {
        for (row = rows[row].parent; row >= 0; row = rows[row].parent) {
            if (row == ancestor) {
                return true;
            }
        }
        return false;
    }
    static bool Give(char const* text, I18NString& target) {
        if (*text == '\0') {
            return false;
        }
        target = text;
        return true;
    }

    I18NLocale const m_languages[2] = {I18NLocale("en"), I18NLocale("de")};
    VexReferenceIndex m_references; // made last: it asks the model
};
