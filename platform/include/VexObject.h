#pragma once

#include "I18NLocale.h"
#include "VexObjectModel.h"
#include "VexTextSet.h"
#include "Vex_Handle_Collection.h"

#include <memory>
#include <span>

class VexSession;

/// A view of one object of a loaded model: a model element or a property of
/// one. Properties are objects too. A view is built where it is needed and
/// dropped again; it owns nothing and costs a table look-up.
///
/// Every operation is defined on every view. On one that is not valid, an
/// operation that gives bool gives false, one that gives a handle the null
/// handle, one that gives a pointer null. An operation that gives false leaves
/// its out-argument as it was. Lists are appended to. Text that is handed out
/// may share the model's storage (see `I18NString`).
///
/// The bools of `Properties`, `childObjects` and `getElementsByTagName` say whether
/// the object could be asked, not whether anything was appended: they are true for
/// every valid object. Look at the list.
///
/// Threads: any, as long as the model stays loaded during the call.
/// Raises: nothing of its own, and what the host's model raises; a host that limits a
/// call (deadline, cancel) may raise `KRLLimitException` from any operation.
class VexObject {
public:
    /// Works from the handle alone, for every loaded model of the process;
    /// `session` may be null.
    explicit VexObject(VEX_HANDLE handle, [[maybe_unused]] VexSession* session = nullptr)
        : m_handle(handle), m_model(VexObjectDirectory::Find(handle)) {}

    /// True while the object's model is loaded.
    bool IsValid() const { return usable() && m_model->IsObject(m_handle); }

    /// An element's id; false when it has none, and for a property.
    bool GetId(I18NString& id) const { return usable() && m_model->GetId(m_handle, id); }

    /// An element's class (the word for its kind, such as "namespace"), a
    /// property's name.
    bool GetName(I18NString& name) const { return usable() && m_model->GetName(m_handle, name); }

    /// An element's class attribute; false when absent, and for a property.
    bool GetClass(I18NString& name) const { return usable() && m_model->GetClass(m_handle, name); }

    /// The role; false when absent.
    bool GetRole(I18NString& role) const { return usable() && m_model->GetRole(m_handle, role); }

    /// An element's own text, a property's value; false when there is none.
    /// The text is handed out as it stands in the model: nobody trims it behind the
    /// model, and ids in the sets of a security view are compared unit by unit.
    ///
    /// `resolve` asks a host whose values hold placeholders (parameters, macros) to
    /// put their values in; one that has none ignores it.
    bool GetValue(I18NString& value, bool resolve) const {
        return usable() && m_model->GetValue(m_handle, value, resolve);
    }

    /// An element's model's default locale, the locale of a property's value
    /// (null when it is not localised). Valid while the model is loaded.
    I18NLocale const* GetLocale() const {
        return usable() ? m_model->GetLocale(m_handle) : nullptr;
    }

    /// The enclosing element, null for the root; a property's owner.
    VEX_HANDLE GetParent() const { return usable() ? m_model->GetParent(m_handle) : VEX_HANDLE(); }

    /// The property of that name as a locale finds it: the value for the
    /// locale, else for its nearest parent locale, else the unlocalised one.
    /// The null locale finds the unlocalised value, else the model's default
    /// locale's, else the first; it is what a property is asked for by that is the
    /// same in all languages. "ID" names the element's id; the name of a
    /// class that occurs among the children names the collection of them.
    ///
    /// A simple property of a name comes before the collection of that name, also
    /// when it has no value, or none for the locale: the collection is then not
    /// found by its name, though `Properties` lists both.
    VEX_HANDLE GetPropertyByName(I18NString const& name, I18NLocale const* locale) const {
        return usable() ? m_model->GetPropertyByName(m_handle, name, locale) : VEX_HANDLE();
    }

    /// The first property with that role, found by locale in the same way: of its
    /// name, the value that `GetPropertyByName` gives, even where that value has
    /// another role or none.
    VEX_HANDLE GetPropertyByRole(I18NString const& role, I18NLocale const* locale) const {
        return usable() ? m_model->GetPropertyByRole(m_handle, role, locale) : VEX_HANDLE();
    }

    /// Appends an element's properties: the simple ones in document order, then
    /// one collection for each class among its children in order of first
    /// occurrence; of a property, its own properties. A filter that is not null
    /// keeps those of that name, or role. `all` has no effect here.
    bool Properties(Vex_Handle_Collection& found, I18NString const* name, I18NString const* role,
                    [[maybe_unused]] bool all) const {
        return usable() && m_model->Properties(m_handle, found, name, role);
    }

    /// Appends an element's child elements in document order; of a collection
    /// property, its members; of another property nothing. A filter that is not
    /// null keeps those of that class, or role.
    bool childObjects(Vex_Handle_Collection& found, I18NString const* name,
                      I18NString const* role) const {
        return usable() && m_model->childObjects(m_handle, found, name, role);
    }

    /// Appends every element of the class `tag` below this one, not itself, in
    /// document order; of a property nothing. Costs by its answer, not by the
    /// model's size, or the plug-in is slow: it asks often.
    bool getElementsByTagName(I18NString const& tag, Vex_Handle_Collection& found) const {
        return usable() && m_model->getElementsByTagName(m_handle, tag, found);
    }

    /// Goes through objects of whatever models in their order, up to the first
    /// for which `GetPropertyByName`, then `GetValue` of that property, would
    /// give no other text than `text`: the same one, or none, as for an object
    /// that is not valid. Gives how many come before it, all when there is none,
    /// and says in `match` how it compares. Needs no string of each value.
    VEX_PLATFORM_API static std::size_t
    FindPropertyValue(std::span<VEX_HANDLE const> objects, I18NString const& name,
                      I18NLocale const* locale, I18NString const& text, VexTextMatch& match);

    /// Appends, for those of the objects whose property `name`, as `locale` finds it, has
    /// the text `text`, what `getElementsByTagName` appends for `tag`. One that stands
    /// inside the one before it among those adds nothing: what it holds is there.
    VEX_PLATFORM_API static void FindElementsWithin(std::span<VEX_HANDLE const> objects,
                                                    I18NString const& name,
                                                    I18NLocale const* locale,
                                                    I18NString const& text, I18NString const& tag,
                                                    Vex_Handle_Collection& found);

    /// A set that the host has ready of these texts: the values of the elements of the class
    /// `tag` below elements of the class `within` below this one whose property `name`, as the
    /// null locale finds it, has the text `text`. An element without a value stands for "".
    /// Null when none is ready, and for a view that is not valid: `getElementsByTagName`,
    /// `FindElementsWithin` and `GetValue`, with true for `resolve`, read the same texts.
    ///
    /// Shared with others; see `VexTextSet`.
    std::shared_ptr<VexTextSet const> FindTextSet(I18NString const& within, I18NString const& name,
                                                  I18NString const& text,
                                                  I18NString const& tag) const {
        return usable() ? m_model->FindTextSet(m_handle, within, name, text, tag) : nullptr;
    }

    /// @{
    /// True when `childObjects`, or `Properties`, would give something.
    bool hasChildObjects() const { return usable() && m_model->hasChildObjects(m_handle); }
    bool hasProperties() const { return usable() && m_model->hasProperties(m_handle); }
    /// @}

private:
    bool hasModel(VexObjectModel const* model) const { return usable() && m_model == model; }

    // The directory names the page's model; a page may be longer than the
    // model's range.
    bool usable() const { return m_model != nullptr && m_model->Holds(m_handle); }

    VEX_HANDLE m_handle;
    VexObjectModel const* m_model;
};
