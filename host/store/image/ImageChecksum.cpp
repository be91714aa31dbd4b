#include "host/store/image/ImageFormat.h"

#include <new>

#define XXH_INLINE_ALL // nothing to install beside the program
#include <xxhash.h>

namespace vex {

namespace {

XXH3_state_t* stateOf(void* state) {
    return static_cast<XXH3_state_t*>(state);
}

} // namespace

ImageChecksum::ImageChecksum() : m_state(XXH3_createState()) {
    if (m_state == nullptr) {
        throw std::bad_alloc();
    }
    XXH3_64bits_reset(stateOf(m_state));
}

ImageChecksum::~ImageChecksum() {
    XXH3_freeState(stateOf(m_state));
}

void ImageChecksum::add(void const* bytes, std::size_t count) {
    XXH3_64bits_update(stateOf(m_state), bytes, count);
}

std::uint64_t ImageChecksum::value() const {
    return XXH3_64bits_digest(stateOf(m_state));
}

} // namespace vex
