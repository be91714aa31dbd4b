#include "I18NString.h"
#include "host/store/image/FileBeside.h"
#include "host/store/image/ImageFile.h"
#include "host/store/image/ImageFormat.h"

#include <cstring>
#include <functional>
#include <vector>

namespace vex {

namespace {

using Header = ImageFormat::Header;
using Section = ImageFormat::Section;
using Sink = std::function<void(void const* bytes, std::size_t count)>;

void appendName(CompactArray<char16_t>& names, I18NLocale const& locale) {
    std::u16string_view const name = locale.getName().view();
    names.append(name.data(), name.size());
    names.push_back(0);
}

/// Gives an image piece by piece, as often as it is asked to.
class ImagePieces {
public:
    explicit ImagePieces(StoreData const& data) {
        appendName(m_localeNames, data.defaultLocale);
        for (I18NLocale const& locale : data.locales) {
            appendName(m_localeNames, locale);
        }
        for (std::uint32_t number = 1; number <= data.usedLocales.count(); ++number) {
            appendName(m_localeNames, data.usedLocales[number]);
        }
        auto const addArray = [this]<typename Record>(CompactArray<Record> const& array) {
            add(array.data(), array.size(), sizeof(Record));
        };
        StoreData::visitArrays(data, addArray);
        addArray(m_localeNames);
        fillHeader(data);
        ImageChecksum checksum;
        giveTo([&](void const* bytes, std::size_t count) { checksum.add(bytes, count); });
        m_header.checksum = checksum.value();
    }

    std::uint64_t size() const { return m_header.size; }

    void giveTo(Sink const& sink) const {
        static constexpr char zeros[ImageFormat::Alignment] = {};
        sink(&m_header, sizeof m_header);
        sink(m_sections.data(), m_sections.size() * sizeof(Section));
        std::uint64_t at = ImageFormat::FirstOffset;
        for (std::size_t number = 0; number < m_sections.size(); ++number) {
            Section const& section = m_sections[number];
            sink(zeros, section.offset - at);
            std::size_t const size = section.count * section.recordSize;
            sink(m_arrays[number], size);
            at = section.offset + size;
        }
        sink(zeros, m_header.size - at);
    }

private:
    void add(void const* array, std::size_t count, std::size_t recordSize) {
        std::uint64_t const before =
            m_sections.empty()
                ? ImageFormat::FirstOffset
                : m_sections.back().offset + m_sections.back().count * m_sections.back().recordSize;
        m_sections.push_back({static_cast<std::uint32_t>(m_sections.size()),
                              static_cast<std::uint32_t>(recordSize), ImageFormat::aligned(before),
                              count});
        m_arrays.push_back(array);
        m_header.size = ImageFormat::aligned(m_sections.back().offset + count * recordSize);
    }

    void fillHeader(StoreData const& data) {
        std::memcpy(m_header.magic, ImageFormat::Magic, ImageFormat::MagicSize);
        m_header.byteOrder = ImageFormat::ByteOrder;
        m_header.version = ImageFormat::Version;
        m_header.hashSeed = data.hashSeed;
        m_header.sectionCount = ImageFormat::SectionCount;
        m_header.elementValueCount = data.elementValueCount;
        m_header.idName = data.idName;
        m_header.nameName = data.nameName;
        m_header.namespaceName = data.namespaceName;
        m_header.folderName = data.folderName;
        m_header.queryItemFolderName = data.queryItemFolderName;
        m_header.localeCount = static_cast<std::uint32_t>(data.locales.size());
        m_header.usedLocaleCount = static_cast<std::uint32_t>(data.usedLocales.count());
    }

    Header m_header{};
    std::vector<Section> m_sections;
    std::vector<void const*> m_arrays; // by section
    CompactArray<char16_t> m_localeNames;
};

} // namespace

void writeImage(Model const& model, std::string const& file) {
    ImagePieces const pieces(model.data());
    FileBeside beside(file);
    pieces.giveTo([&](void const* bytes, std::size_t count) {
        beside.write({static_cast<char const*>(bytes), count});
    });
    beside.finish();
    beside.putInPlace();
}

std::string imageBytesOf(Model const& model) {
    ImagePieces const pieces(model.data());
    std::string image;
    image.reserve(pieces.size());
    pieces.giveTo([&](void const* bytes, std::size_t count) {
        image.append(static_cast<char const*>(bytes), count);
    });
    return image;
}

} // namespace vex
