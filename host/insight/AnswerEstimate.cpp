#include "host/insight/AnswerEstimate.h"

#include "host/insight/AnswerLimit.h"

#include <algorithm>

namespace vex {

namespace {

// Measured on the documents that answers are made in.
constexpr std::size_t documentBytes = 16 * 1024; // before anything is in it
constexpr std::size_t elementBytes = 320;        // its attributes apart
constexpr std::size_t attributeBytes = 144;      // its text apart
constexpr std::size_t characterBytes = 2;
constexpr std::size_t firstChunk = 16 * 1024;    // each next one is twice as large,
constexpr std::size_t largestChunk = 512 * 1024; // up to this
constexpr std::size_t chunkHeader = 64;
constexpr std::size_t lostInChunk = 4 * 1024; // at its end, when a piece does not fit

/// The memory that a document takes for what needs `used` bytes.
std::size_t inChunks(std::size_t used) {
    std::size_t whole = 0;
    std::size_t held = 0;
    for (std::size_t chunk = firstChunk;; chunk = std::min(2 * chunk, largestChunk)) {
        whole += chunk + chunkHeader;
        held += chunk - lostInChunk;
        if (held >= used) {
            return whole;
        }
    }
}

} // namespace

void AnswerEstimate::add(VexTreeSize const& size) {
    m_size.elements += size.elements;
    m_size.attributes += size.attributes;
    m_size.characters += size.characters;
    if (isMore()) {
        raiseAnswerTooLarge(m_elementLimit);
    }
}

std::size_t AnswerEstimate::bytes() const {
    return documentBytes +
           inChunks(elementBytes * m_size.elements + attributeBytes * m_size.attributes +
                    characterBytes * m_size.characters);
}

} // namespace vex
