#pragma once

#include "I18NLocale.h"
#include "VEX_HANDLE.h"

#include <vector>

class VexCustomDataStore;

/// The objects of the model that a session has open. Its operations may raise, as
/// those of `VexObjectModel`.
class VEX_PLATFORM_API VexObjectStore {
public:
    /// The model root; never null.
    virtual VEX_HANDLE GetRootObject() const = 0;

    /// The first element in document order whose reference is `reference`
    /// ([namespace].[name]..., split like a start path); the null handle when
    /// there is none or the text does not split. Names are those of the model's
    /// default locale. `scope` must be 0. Asked for the targets of shortcuts only.
    virtual VEX_HANDLE GetObjectByReference(I18NString const& reference, long scope) const = 0;

protected:
    virtual ~VexObjectStore();
};

/// Tells which security views and roles a session's user has on one model, and
/// the values of the package that the model was published in. Owned by the
/// host; lives as long as the session. Its operations may raise, as those of `VexObjectModel`.
class VEX_PLATFORM_API VexSecurityInfoSource {
public:
    /// Replaces the list by the ids of the security views that the user may
    /// use, ascending, each once.
    virtual void GetAvailableViews(std::vector<I18NString>& views) = 0;

    /// Replaces the list by the identifiers of the user's roles, in any order. They
    /// are compared with the property "roleId" of a view's first "member".
    virtual void GetRoles(std::vector<I18NString>& roles) = 0;

    /// Sets `value` to the package's value; "" when it has none. The path is as for
    /// `VexModelService`.
    virtual void GetPackageValue(I18NString const& modelPath, I18NString& value,
                                 I18NLocale const& locale) = 0;

    /// The package property of that name; "" when it is missing.
    virtual I18NString GetPackagePropertyValue(I18NString const& modelPath,
                                               I18NLocale const& locale,
                                               I18NString const& name) = 0;

protected:
    virtual ~VexSecurityInfoSource();
};

/// Hands out security information by model path. May raise, as `VexSecurityInfoSource` may.
class VEX_PLATFORM_API VexModelService {
public:
    /// Null when nothing is known about the path. Owned by the host. The path comes
    /// as the request gave it, but without a "path:" in front.
    virtual VexSecurityInfoSource* GetSecurityInfoSource(I18NString const& modelPath) = 0;

protected:
    virtual ~VexModelService();
};

/// One user's work on one open model. A host runs one action of a session at a
/// time. Everything that is handed out belongs to the host and lives as long as
/// the session. Its operations may raise, as those of `VexObjectModel`.
class VEX_PLATFORM_API VexSession {
public:
    /// The locale that was chosen when the session opened; never null. Its canonical
    /// name is what "effectiveLocale" tells.
    virtual I18NLocale const* GetCurrentLocale() const = 0;

    /// The locale with that name; never null. "" gives the nameless locale. Asked for
    /// the values of the root's properties "defaultLocale" and "locales": these are
    /// written into answers as they stand, so a host gives the canonical names
    /// (`I18NLocale::getName`).
    virtual I18NLocale const* GetLocale(I18NString const& name) const = 0;

    /// The objects of the open model.
    virtual VexObjectStore& GetObjectStore() const = 0;

    /// Null when the host keeps no security information at all.
    virtual VexModelService* GetModelService() = 0;

    /// Where plug-ins keep small texts for this session, reached through
    /// `VexObjectCustomData`.
    virtual VexCustomDataStore& GetCustomDataStore() = 0;

protected:
    virtual ~VexSession();
};
