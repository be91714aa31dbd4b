#pragma once

#include <cstddef>

/// Blocks of memory of documents that are gone, kept for the next documents of the same
/// thread: making room for a new one takes longer than filling it, since the system gives
/// each page anew. They go with their thread.
namespace KRLIDOM_SpareBlocks {

/// Bytes that a thread keeps at most.
constexpr std::size_t Most = 4U << 20U;

/// Whether blocks for that many bytes are kept: those that documents are cut from. What
/// precedes the bytes in a block, and is as large in all blocks, is not counted.
bool areKept(std::size_t size) noexcept;

/// A block of that size; null when there is none.
void* take(std::size_t size) noexcept;
/// Keeps a block that came from `operator new`, what it holds with it; false when it is not
/// to be kept.
bool keep(void* block, std::size_t size) noexcept;

/// Gives all blocks of this thread back.
void release() noexcept;

} // namespace KRLIDOM_SpareBlocks
