#include "model/VexMDMaProviderUtility.h"

#include "VexObject.h"
#include "provider/VexConstants.h"

namespace {

// The guard of every operation: the handle is asked first, so that the host is
// not asked whether a null handle's object is valid.
template <class Result, class Call>
Result guarded(VEX_HANDLE handle, Result unusable, Call const& call) {
    VexObject const object(handle, nullptr);
    return handle.IsNotNull() && object.IsValid() ? call(object) : unusable;
}

} // namespace

bool VexMDMaProviderUtility::getElementsByTagName(VEX_HANDLE object, I18NString const& tag,
                                                  Vex_Handle_Collection& found) {
    return guarded(object, false,
                   [&](VexObject const& view) { return view.getElementsByTagName(tag, found); });
}

// quirk: property-lookup-unguarded
VEX_HANDLE VexMDMaProviderUtility::GetPropertyByName(VEX_HANDLE object, I18NString& name,
                                                     I18NLocale const* locale) {
    return VexObject(object, nullptr).GetPropertyByName(name, locale);
}

VEX_HANDLE VexMDMaProviderUtility::GetPropertyByRole(VEX_HANDLE object, I18NString& role,
                                                     I18NLocale const* locale) {
    return VexObject(object, nullptr).GetPropertyByRole(role, locale);
}

bool VexMDMaProviderUtility::Properties(VEX_HANDLE object, Vex_Handle_Collection& properties,
                                        I18NString const* name, I18NString const* role, bool all) {
    return guarded(object, false, [&](VexObject const& view) {
        return view.Properties(properties, name, role, all);
    });
}

bool VexMDMaProviderUtility::GetId(VEX_HANDLE object, I18NString& id) {
    return guarded(object, false, [&](VexObject const& view) { return view.GetId(id); });
}

bool VexMDMaProviderUtility::GetParentId(VEX_HANDLE object, I18NString& id) {
    return guarded(object, false,
                   [&](VexObject const& view) { return GetId(view.GetParent(), id); });
}

VEX_HANDLE VexMDMaProviderUtility::GetParent(VEX_HANDLE object) {
    return guarded(object, ConvertFromInt(0),
                   [](VexObject const& view) { return view.GetParent(); });
}

bool VexMDMaProviderUtility::GetRole(VEX_HANDLE object, I18NString& role) {
    return guarded(object, false, [&](VexObject const& view) { return view.GetRole(role); });
}

bool VexMDMaProviderUtility::GetClass(VEX_HANDLE object, I18NString& className) {
    return guarded(object, false, [&](VexObject const& view) { return view.GetClass(className); });
}

bool VexMDMaProviderUtility::GetName(VEX_HANDLE object, I18NString& name) {
    return guarded(object, false, [&](VexObject const& view) { return view.GetName(name); });
}

bool VexMDMaProviderUtility::GetValue(VEX_HANDLE object, I18NString& value, bool resolve) {
    return guarded(object, false,
                   [&](VexObject const& view) { return view.GetValue(value, resolve); });
}

I18NLocale const* VexMDMaProviderUtility::GetLocale(VEX_HANDLE object) {
    return guarded(object, static_cast<I18NLocale const*>(nullptr),
                   [](VexObject const& view) { return view.GetLocale(); });
}

bool VexMDMaProviderUtility::hasChildObjects(VEX_HANDLE object) {
    return guarded(object, false, [](VexObject const& view) { return view.hasChildObjects(); });
}

bool VexMDMaProviderUtility::hasProperties(VEX_HANDLE object) {
    return guarded(object, false, [](VexObject const& view) { return view.hasProperties(); });
}

bool VexMDMaProviderUtility::childObjects(VEX_HANDLE object, Vex_Handle_Collection& children,
                                          I18NString const* className, I18NString const* role) {
    return guarded(object, false, [&](VexObject const& view) {
        return view.childObjects(children, className, role);
    });
}

void VexMDMaProviderUtility::GetStringPropertyValue(VEX_HANDLE object, I18NString& name,
                                                    I18NString& value, I18NLocale const* locale) {
    VEX_HANDLE const property = GetPropertyByName(object, name, locale);
    if (property != 0) {
        GetValue(property, value, true);
    }
}

std::size_t VexMDMaProviderUtility::FindStringPropertyValue(std::span<VEX_HANDLE const> objects,
                                                            I18NString const& name,
                                                            I18NString const& text,
                                                            I18NLocale const* locale,
                                                            VexTextMatch& match) {
    return VexObject::FindPropertyValue(objects, name, locale, text, match);
}

void VexMDMaProviderUtility::FindElementsWithin(std::span<VEX_HANDLE const> objects,
                                                I18NString const& name, I18NString const& text,
                                                I18NLocale const* locale, I18NString const& tag,
                                                Vex_Handle_Collection& found) {
    VexObject::FindElementsWithin(objects, name, locale, text, tag, found);
}

std::shared_ptr<VexTextSet const> VexMDMaProviderUtility::FindTextSet(VEX_HANDLE object,
                                                                      I18NString const& within,
                                                                      I18NString const& name,
                                                                      I18NString const& text,
                                                                      I18NString const& tag) {
    return VexObject(object).FindTextSet(within, name, text, tag);
}
