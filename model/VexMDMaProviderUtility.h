#pragma once

#include "I18NLocale.h"
#include "I18NString.h"
#include "VEX_HANDLE.h"
#include "VexObjectModel.h"
#include "Vex_Handle_Collection.h"

#include <memory>
#include <span>

/// The one place through which the plug-in reads the host's object model.
///
/// Each operation builds a view of the object and makes one host call on it. A
/// null handle, or one whose object is no longer valid, gives false, a null
/// handle or a null locale, and leaves the out-argument as it was. Nothing is
/// raised here; what the host raises passes through.
///
/// Threads: any that may use the object model.
class VexMDMaProviderUtility {
public:
    static bool getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                     Vex_Handle_Collection& found);

    /// Not guarded: the look-up is made in every case and the host's answer
    /// returned. Hosts answer for an object that is not usable with the null
    /// handle.
    static VEX_HANDLE GetPropertyByName(VEX_HANDLE object, I18NString& name,
                                        I18NLocale const* locale);
    /// Not guarded, as `GetPropertyByName`.
    static VEX_HANDLE GetPropertyByRole(VEX_HANDLE object, I18NString& role,
                                        I18NLocale const* locale);

    static bool Properties(VEX_HANDLE object, Vex_Handle_Collection& properties,
                           I18NString const* name, I18NString const* role, bool all);
    static bool GetId(VEX_HANDLE object, I18NString& id);
    /// The id of the parent; false as well when the parent is not usable.
    static bool GetParentId(VEX_HANDLE object, I18NString& id);
    static VEX_HANDLE GetParent(VEX_HANDLE object);
    static bool GetRole(VEX_HANDLE object, I18NString& role);
    static bool GetClass(VEX_HANDLE object, I18NString& className);
    /// The word for the object's kind, not the name that a user gave it.
    static bool GetName(VEX_HANDLE object, I18NString& name);
    static bool GetValue(VEX_HANDLE object, I18NString& value, bool resolve);
    static I18NLocale const* GetLocale(VEX_HANDLE object);
    static bool hasChildObjects(VEX_HANDLE object);
    static bool hasProperties(VEX_HANDLE object);
    static bool childObjects(VEX_HANDLE object, Vex_Handle_Collection& children,
                             I18NString const* className, I18NString const* role);

    /// Reads the property of that name into `value`, which keeps what it held
    /// when the object has no such property or the property no value.
    static void GetStringPropertyValue(VEX_HANDLE object, I18NString& name, I18NString& value,
                                       I18NLocale const* locale);

    /// Goes through the objects up to the first for which
    /// `GetStringPropertyValue` would not read another text than `text`; gives
    /// how many come before it, all when there is none, and how it compares.
    static std::size_t FindStringPropertyValue(std::span<VEX_HANDLE const> objects,
                                               I18NString const& name, I18NString const& text,
                                               I18NLocale const* locale, VexTextMatch& match);

    /// Appends the elements of the class `tag` below those of the objects for which
    /// `GetStringPropertyValue` would read `text`; an object that stands inside the one
    /// before it among those adds nothing.
    static void FindElementsWithin(std::span<VEX_HANDLE const> objects, I18NString const& name,
                                   I18NString const& text, I18NLocale const* locale,
                                   I18NString const& tag, Vex_Handle_Collection& found);

    /// The values of the elements of the class `tag` below those of the class `within` below
    /// the object for which `GetStringPropertyValue`, without a locale, would read `text`, as
    /// a set that the host has ready; null when it has none.
    static std::shared_ptr<VexTextSet const>
    FindTextSet(VEX_HANDLE object, I18NString const& within, I18NString const& name,
                I18NString const& text, I18NString const& tag);
};
