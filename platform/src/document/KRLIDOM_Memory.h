#pragma once

#include <cstddef>

#include <xercesc/framework/MemoryManager.hpp>

/// The memory of one document, counted and kept within a budget. What is still
/// there when it goes is given back: the XML library drops blocks when it runs
/// out of memory halfway through. Blocks that many documents need stay with the thread.
class KRLIDOM_Memory final : public xercesc::MemoryManager {
public:
    /// `limit` in bytes; 0 sets none. `limitName` is what messages name it by, or null.
    explicit KRLIDOM_Memory(std::size_t limit, char const* limitName = nullptr)
        : m_limit(limit), m_limitName(limitName) {}
    KRLIDOM_Memory(KRLIDOM_Memory const&) = delete;
    KRLIDOM_Memory& operator=(KRLIDOM_Memory const&) = delete;
    ~KRLIDOM_Memory() override;

    void* allocate(XMLSize_t size) override;
    void deallocate(void* block) override;
    xercesc::MemoryManager* getExceptionMemoryManager() override;

    std::size_t used() const { return m_used; }

private:
    /// Precedes each block, in a ring of all of them.
    struct alignas(std::max_align_t) Header {
        Header* next = this;
        Header* previous = this;
        std::size_t size = 0; // with the header
    };

    void release(Header* header);

    std::size_t m_limit;
    char const* m_limitName;
    std::size_t m_used = 0;
    Header m_ring;
};
