#include "platform/src/document/KRLIDOM_Memory.h"

#include "KRLException.h"
#include "platform/src/document/KRLIDOM_Guard.h"
#include "platform/src/document/KRLIDOM_SpareBlocks.h"

#include <new>
#include <string>

#include <xercesc/util/PlatformUtils.hpp>

namespace {

// `whole` is `size` with the header.
void* obtain(std::size_t size, std::size_t whole) {
    if (KRLIDOM_SpareBlocks::areKept(size)) {
        if (void* const spare = KRLIDOM_SpareBlocks::take(size)) {
            return spare;
        }
    }
    return ::operator new(whole, std::nothrow);
}

} // namespace

KRLIDOM_Memory::~KRLIDOM_Memory() {
    while (m_ring.next != &m_ring) {
        release(m_ring.next);
    }
}

void* KRLIDOM_Memory::allocate(XMLSize_t size) {
    std::size_t const whole = size + sizeof(Header);
    if (m_limit != 0 && whole > m_limit - m_used) {
        throw KRLLimitException("The document takes more than " + std::to_string(m_limit) +
                                " bytes of memory, which is the limit. Ask for less with \"Depth\" "
                                "or a start path, or raise the limit" +
                                KRLIDOM::withName(m_limitName));
    }
    void* const block = obtain(size, whole);
    if (block == nullptr) {
        throw KRLIDOM::OutOfMemory(m_limitName);
    }
    Header* const header = ::new (block) Header{m_ring.next, &m_ring, whole};
    header->next->previous = header;
    m_ring.next = header;
    m_used += whole;
    return header + 1;
}

void KRLIDOM_Memory::deallocate(void* block) {
    if (block != nullptr) {
        release(static_cast<Header*>(block) - 1);
    }
}

void KRLIDOM_Memory::release(Header* header) {
    header->next->previous = header->previous;
    header->previous->next = header->next;
    std::size_t const size = header->size - sizeof(Header);
    m_used -= header->size;
    if (!KRLIDOM_SpareBlocks::areKept(size) || !KRLIDOM_SpareBlocks::keep(header, size)) {
        ::operator delete(header);
    }
}

xercesc::MemoryManager* KRLIDOM_Memory::getExceptionMemoryManager() {
    // An exception may outlive the document.
    return xercesc::XMLPlatformUtils::fgMemoryManager;
}
