#pragma once

#include <cstdint>
#include <functional>

/// Names one object of a loaded model: a model element or a property.
///
/// A 32-bit value, 0 naming nothing. A handle is never freed; when its model is
/// unloaded it names nothing any more, and it is not given out again.
class VEX_HANDLE {
public:
    constexpr VEX_HANDLE() = default;
    /// The handle with that number; whether it names anything, its model knows.
    explicit constexpr VEX_HANDLE(std::uint32_t number) : m_number(number) {}

    /// False for 0. A handle that is not null need not name an object any more.
    constexpr bool IsNotNull() const { return m_number != 0; }
    /// What tells handles apart.
    constexpr std::uint32_t Number() const { return m_number; }

    /// @{
    /// Equal when their numbers are; 0 is the null handle.
    friend constexpr bool operator==(VEX_HANDLE a, VEX_HANDLE b) {
        return a.m_number == b.m_number;
    }
    friend constexpr bool operator!=(VEX_HANDLE a, VEX_HANDLE b) { return !(a == b); }
    friend constexpr bool operator==(VEX_HANDLE a, int number) {
        return a.m_number == static_cast<std::uint32_t>(number);
    }
    friend constexpr bool operator!=(VEX_HANDLE a, int number) { return !(a == number); }
    /// @}

private:
    std::uint32_t m_number = 0;
};

/// The handle's number, for interfaces that know int only.
constexpr int Convert2Int(VEX_HANDLE handle) {
    return static_cast<int>(handle.Number());
}

/// 0 gives the null handle.
constexpr VEX_HANDLE ConvertFromInt(int number) {
    return VEX_HANDLE(static_cast<std::uint32_t>(number));
}

template <> struct std::hash<VEX_HANDLE> {
    std::size_t operator()(VEX_HANDLE handle) const noexcept { return handle.Number(); }
};
