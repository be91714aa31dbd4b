#pragma once

#include "VexObject.h"
#include "VexObjectModel.h"
#include "VexSession.h"

#include <iterator>

/// The host's own data: here a table, elsewhere a database or a file.
struct Row {
    char const* className;
    char const* id;
    char const* name;
    int parent;
};
constexpr Row rows[] = {
    {"model", "m", "", -1},
    {"namespace", "n", "Shop", 0},
    {"querySubject", "q", "Orders", 1},
    {"queryItem", "i1", "Quantity", 2},
    {"queryItem", "i2", "Ordered", 2},
};

/// Shows the rows as model objects. Row r has the handle first + 2r, its one
/// property, the name, the handle after it.
class RowModel final : public VexObjectModel, public VexObjectStore {
public:
    RowModel() { TakeHandles(2 * static_cast<std::uint32_t>(std::size(rows))); }

    VEX_HANDLE GetRootObject() const override { return Element(0); }
    VEX_HANDLE GetObjectByReference(I18NString const&, long) const override {
        return VEX_HANDLE(); // asked for the targets of shortcuts; there are none
    }

    bool IsObject(VEX_HANDLE object) const override { return Holds(object); }
    bool GetName(VEX_HANDLE object, I18NString& name) const override {
        name = IsProperty(object) ? "name" : RowOf(object).className;
        return true;
    }
    bool GetId(VEX_HANDLE object, I18NString& id) const override {
        return !IsProperty(object) && Give(RowOf(object).id, id);
    }
    bool GetValue(VEX_HANDLE object, I18NString& value, bool) const override {
        return IsProperty(object) && Give(RowOf(object).name, value);
    }
    bool GetClass(VEX_HANDLE, I18NString&) const override { return false; }
    bool GetRole(VEX_HANDLE, I18NString&) const override { return false; }
    I18NLocale const* GetLocale(VEX_HANDLE) const override { return nullptr; }

    VEX_HANDLE GetParent(VEX_HANDLE object) const override {
        return IsProperty(object) ? Element(Number(object)) : Element(RowOf(object).parent);
    }
    VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString const& name,
                                 I18NLocale const*) const override {
        bool const has = !IsProperty(object) && name == "name" && *RowOf(object).name != '\0';
        return has ? VEX_HANDLE(object.Number() + 1) : VEX_HANDLE();
    }
    VEX_HANDLE GetPropertyByRole(VEX_HANDLE, I18NString const&, I18NLocale const*) const override {
        return VEX_HANDLE();
    }
    bool Properties(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const*,
                    I18NString const*) const override {
        if (IsProperty(object)) {
            return false;
        }
        found.push_back(VEX_HANDLE(object.Number() + 1));
        return true;
    }
    bool hasProperties(VEX_HANDLE object) const override { return !IsProperty(object); }

    bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& found, I18NString const*,
                      I18NString const*) const override {
        std::size_t const before = found.size();
        for (int row = 0; !IsProperty(object) && row < RowCount; ++row) {
            if (rows[row].parent == Number(object)) {
                found.push_back(Element(row));
            }
        }
        return found.size() != before;
    }
    bool hasChildObjects(VEX_HANDLE object) const override {
        Vex_Handle_Collection found;
        return childObjects(object, found, nullptr, nullptr);
    }
    bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                              Vex_Handle_Collection& found) const override {
        std::size_t const before = found.size();
        for (int row = 0; row < RowCount; ++row) {
            if (tag == rows[row].className && IsBelow(row, Number(object))) {
                found.push_back(Element(row));
            }
        }
        return found.size() != before;
    }

private:
    static constexpr int RowCount = static_cast<int>(std::size(rows));

    VEX_HANDLE Element(int row) const {
        return row < 0 ? VEX_HANDLE()
                       : VEX_HANDLE(FirstHandle() + 2 * static_cast<std::uint32_t>(row));
    }
    bool IsProperty(VEX_HANDLE object) const { return (object.Number() - FirstHandle()) % 2 == 1; }
    int Number(VEX_HANDLE object) const {
        return static_cast<int>((object.Number() - FirstHandle()) / 2);
    }
    Row const& RowOf(VEX_HANDLE object) const { return rows[Number(object)]; }

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
};
