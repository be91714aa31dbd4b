#pragma once

#include "host/store/image/StoreData.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vex {

/// How an image lies in its file: the header, the table of sections, the sections, each at a
/// multiple of 64 bytes with zeros before it. Numbers are those of the machine; another byte
/// order is refused. A change of anything that lies in an image, and of the hash function that
/// its tables rely on, needs another version.
struct ImageFormat {
    static constexpr char Magic[] = "\x89VEXM\r\n\x1a"; // what no text begins with
    static constexpr std::size_t MagicSize = sizeof Magic - 1;
    static constexpr std::uint32_t ByteOrder = 0x0102'0304;
    static constexpr std::uint32_t Version = 1;
    static constexpr std::size_t Alignment = 64;

    struct Header {
        char magic[MagicSize];
        std::uint32_t byteOrder;
        std::uint32_t version;
        std::uint64_t size;     // of the file
        std::uint64_t checksum; // of the file with 0 in this place
        std::uint64_t hashSeed;
        std::uint32_t sectionCount;
        std::uint32_t elementValueCount;
        Atom idName;
        Atom nameName;
        Atom namespaceName;
        Atom folderName;
        Atom queryItemFolderName;
        std::uint32_t localeCount;     // the default one, then these,
        std::uint32_t usedLocaleCount; // then these: names, a zero behind each
        std::uint32_t unused;          // 0
    };

    struct Section {
        std::uint32_t number;     // from 0 on
        std::uint32_t recordSize; // in bytes
        std::uint64_t offset;     // from the beginning of the file
        std::uint64_t count;      // of records
    };

    /// The arrays of `StoreData::visitArrays`, and the names of the locales.
    static constexpr std::uint32_t SectionCount = 18;
    static constexpr std::size_t SectionsStart = sizeof(Header);
    static constexpr std::size_t FirstOffset = SectionsStart + SectionCount * sizeof(Section);

    static constexpr std::uint64_t aligned(std::uint64_t offset) {
        return (offset + Alignment - 1) / Alignment * Alignment;
    }
};

static_assert(sizeof(ImageFormat::Header) == 80 && sizeof(ImageFormat::Section) == 24);

/// Of all bytes of an image in their order.
class ImageChecksum {
public:
    ImageChecksum();
    ImageChecksum(ImageChecksum const&) = delete;
    ImageChecksum& operator=(ImageChecksum const&) = delete;
    ~ImageChecksum();

    void add(void const* bytes, std::size_t count);
    std::uint64_t value() const;

private:
    void* m_state;
};

} // namespace vex
