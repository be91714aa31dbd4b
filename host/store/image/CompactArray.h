#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace vex {

/// A growing array of plain values that keeps no more memory than it needs once
/// it was shrunk. Large ones grow and shrink in place (`realloc` moves pages,
/// not bytes), which a `std::vector` cannot. Raises `std::bad_alloc`. One that shows
/// memory of another's, such as a mapped file, is only read.
template <typename T> class CompactArray {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    CompactArray() = default;
    CompactArray(CompactArray&& other) noexcept { swap(other); }
    CompactArray& operator=(CompactArray&& other) noexcept {
        swap(other);
        return *this;
    }
    CompactArray(CompactArray const&) = delete;
    CompactArray& operator=(CompactArray const&) = delete;
    ~CompactArray() {
        if (m_capacity != 0) {
            std::free(m_data);
        }
    }

    /// Shows what lies there, which stays until the array is gone.
    static CompactArray viewOf(T const* first, std::size_t size) {
        CompactArray view;
        view.m_data = const_cast<T*>(first); // nobody writes to what was not built here
        view.m_size = size;
        return view;
    }

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    /// Shown memory counts too.
    std::size_t byteCount() const { return std::max(m_capacity, m_size) * sizeof(T); }

    T* data() { return m_data; }
    T const* data() const { return m_data; }
    T& operator[](std::size_t index) { return m_data[index]; }
    T const& operator[](std::size_t index) const { return m_data[index]; }
    T& back() { return m_data[m_size - 1]; }
    T const* begin() const { return m_data; }
    T const* end() const { return m_data + m_size; }

    void reserve(std::size_t capacity) {
        if (capacity > m_capacity) {
            resizeStorage(capacity);
        }
    }

    void push_back(T value) {
        if (m_size == m_capacity) {
            grow(m_size + 1);
        }
        m_data[m_size] = value;
        ++m_size;
    }

    /// Makes room for `count` more and gives the first; their content is not set.
    T* extend(std::size_t count) {
        if (count > m_capacity - m_size) {
            grow(m_size + count);
        }
        T* const first = m_data + m_size;
        m_size += count;
        return first;
    }

    void append(T const* first, std::size_t count) {
        if (count != 0) {
            std::memcpy(extend(count), first, count * sizeof(T));
        }
    }

    void assign(std::size_t count, T value) {
        m_size = 0;
        T* const first = extend(count);
        for (std::size_t i = 0; i < count; ++i) {
            first[i] = value;
        }
    }

    /// Drops everything from `size` on.
    void truncate(std::size_t size) { m_size = size; }

    void shrink() {
        if (m_size == 0) {
            std::free(m_data);
            m_data = nullptr;
            m_capacity = 0;
        } else if (m_size != m_capacity) {
            resizeStorage(m_size);
        }
    }

    void swap(CompactArray& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
        std::swap(m_capacity, other.m_capacity);
    }

private:
    static constexpr std::size_t FirstCapacity = 16;

    void grow(std::size_t needed) {
        std::size_t const doubled = m_capacity == 0 ? FirstCapacity : 2 * m_capacity;
        resizeStorage(needed > doubled ? needed : doubled);
    }

    void resizeStorage(std::size_t capacity) {
        void* const moved = std::realloc(m_data, capacity * sizeof(T));
        if (moved == nullptr) {
            throw std::bad_alloc();
        }
        m_data = static_cast<T*>(moved);
        m_capacity = capacity;
    }

    T* m_data = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0; // 0 while nothing is owned
};

} // namespace vex
