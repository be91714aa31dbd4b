#pragma once

#include "VEX_HANDLE.h"

#include <cstddef>
#include <vector>

/// An ordered list of handles. An index past the end gives the null handle.
class Vex_Handle_Collection {
public:
    /// @{
    /// How many handles, null ones too, and whether there are none.
    std::size_t size() const { return m_handles.size(); }
    bool empty() const { return m_handles.empty(); }
    /// @}
    /// The handle at `index`, null past the end.
    VEX_HANDLE operator[](std::size_t index) const {
        return index < m_handles.size() ? m_handles[index] : VEX_HANDLE();
    }
    /// @{
    /// As of a standard vector.
    void push_back(VEX_HANDLE handle) { m_handles.push_back(handle); }
    void reserve(std::size_t count) { m_handles.reserve(count); }
    void clear() { m_handles.clear(); }
    void swap(Vex_Handle_Collection& other) noexcept { m_handles.swap(other.m_handles); }
    /// @}

    /// Lets a model append many handles at once: makes room for `count` more,
    /// all null, and gives the first.
    VEX_HANDLE* extend(std::size_t count) {
        std::size_t const before = m_handles.size();
        m_handles.resize(before + count);
        return m_handles.data() + before;
    }

    /// @{
    /// For loops. Valid until the list is changed.
    std::vector<VEX_HANDLE>::const_iterator begin() const { return m_handles.begin(); }
    std::vector<VEX_HANDLE>::const_iterator end() const { return m_handles.end(); }
    /// @}

private:
    std::vector<VEX_HANDLE> m_handles;
};
