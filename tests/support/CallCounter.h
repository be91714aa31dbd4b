#pragma once

#include <array>
#include <cstddef>

/// The operations of a host that a plug-in calls.
enum class Call {
    IsObject,
    GetId,
    GetName,
    GetClass,
    GetRole,
    GetValue,
    GetLocale,
    GetParent,
    GetPropertyByName,
    GetPropertyByRole,
    Properties,
    ChildObjects,
    GetElementsByTagName,
    HasChildObjects,
    HasProperties,
    FindTextSet,
    AskTextSet,
    GetRootObject,
    GetObjectByReference,
    GetCurrentLocale,
    GetLocaleByName,
    GetObjectStore,
    GetModelService,
    GetCustomDataStore,
    GetSecurityInfoSource,
    GetAvailableViews,
    GetRoles,
    GetPackageValue,
    GetPackagePropertyValue,
};

/// Counts the calls of a test's host and lets one of them raise.
class CallCounter {
public:
    /// The id of the exception that a call raises when told to fail.
    static constexpr unsigned InjectedFailure = 4711;

    int count(Call call) const { return m_counts[static_cast<std::size_t>(call)]; }
    int total() const;
    void reset() { m_counts = {}; }

    /// The nth call from now on raises a `VexException`, once; 1 is the next.
    void failAt(int nth);
    void failAt(Call call, int nth);

    /// Called by the host's operations before they do anything.
    void note(Call call);

private:
    static constexpr std::size_t Calls =
        static_cast<std::size_t>(Call::GetPackagePropertyValue) + 1;

    std::array<int, Calls> m_counts{};
    Call m_failingCall{};
    bool m_anyCallFails = false;
    int m_untilFailure = 0; // 0: none fails
};
