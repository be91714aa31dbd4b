#include "I18NString.h"
#include "KRLException.h"
#include "host/store/image/ImageFile.h"
#include "host/store/image/ImageFormat.h"
#include "host/store/image/MappedFile.h"
#include "host/store/image/StoreSoundness.h"

#include <cstring>
#include <new>
#include <span>

#include <fcntl.h>
#include <unistd.h>

namespace vex {

namespace {

using Header = ImageFormat::Header;
using Section = ImageFormat::Section;

/// Looks through the bytes of an image and makes a store of them.
class OpenedImage {
public:
    OpenedImage(std::string name, std::span<std::byte const> bytes, ImageLimits const& limits)
        : m_name(std::move(name)), m_bytes(bytes), m_limits(limits) {}

    std::unique_ptr<StoreData> store() {
        readHeader();
        checkSum();
        auto data = std::make_unique<StoreData>();
        data->hashSeed = m_header.hashSeed;
        data->names.setSeed(m_header.hashSeed);
        data->elementValueCount = m_header.elementValueCount;
        data->idName = m_header.idName;
        data->nameName = m_header.nameName;
        data->namespaceName = m_header.namespaceName;
        data->folderName = m_header.folderName;
        data->queryItemFolderName = m_header.queryItemFolderName;
        std::uint64_t behind = ImageFormat::FirstOffset;
        auto const show = [&]<typename Record>(CompactArray<Record>& array) {
            array = nextArray<Record>(behind);
        };
        StoreData::visitArrays(*data, show);
        CompactArray<char16_t> localeNames;
        show(localeNames);
        if (m_nextSection != ImageFormat::SectionCount ||
            ImageFormat::aligned(behind) != m_header.size) {
            refuse("its sections are not as they should be");
        }
        readLocales(localeNames, *data);
        if (char const* const problem = complaintAbout(*data, m_limits.depth)) {
            refuse(problem);
        }
        return data;
    }

private:
    [[noreturn]] void refuse(std::string const& problem) const {
        throw KRLDocumentException(m_name, 0, 0,
                                   "cannot be used as the image of a model: " + problem +
                                       "; compile the model again");
    }

    void readHeader() {
        if (m_bytes.size() < sizeof m_header) {
            refuse("it is cut off");
        }
        std::memcpy(&m_header, m_bytes.data(), sizeof m_header);
        if (!isImage({m_header.magic, sizeof m_header.magic})) {
            refuse("it does not begin like one");
        }
        if (m_header.byteOrder != ImageFormat::ByteOrder) {
            refuse("it was made on a machine with another byte order, or is damaged");
        }
        if (m_header.version != ImageFormat::Version) {
            refuse("it has the format " + std::to_string(m_header.version) +
                   ", and this program reads the format " + std::to_string(ImageFormat::Version));
        }
        if (m_header.size != m_bytes.size()) {
            refuse("it has " + std::to_string(m_bytes.size()) + " bytes in place of " +
                   std::to_string(m_header.size));
        }
        if (m_header.sectionCount != ImageFormat::SectionCount ||
            m_bytes.size() < ImageFormat::FirstOffset) {
            refuse("its sections are not as they should be");
        }
    }

    void checkSum() const {
        Header counted = m_header;
        counted.checksum = 0;
        ImageChecksum sum;
        sum.add(&counted, sizeof counted);
        sum.add(m_bytes.data() + sizeof counted, m_bytes.size() - sizeof counted);
        if (sum.value() != m_header.checksum) {
            refuse("it is damaged, its checksum is another one");
        }
    }

    /// The next section; `behind` is where the one before ends, and then where this one does.
    template <typename Record> CompactArray<Record> nextArray(std::uint64_t& behind) {
        Section section{};
        std::memcpy(&section,
                    m_bytes.data() + ImageFormat::SectionsStart + m_nextSection * sizeof section,
                    sizeof section);
        bool const isNext =
            section.number == m_nextSection && section.recordSize == sizeof(Record) &&
            section.offset == ImageFormat::aligned(behind) && section.offset <= m_bytes.size() &&
            section.count <= (m_bytes.size() - section.offset) / sizeof(Record);
        if (!isNext) {
            refuse("its sections are not as they should be");
        }
        ++m_nextSection;
        behind = section.offset + section.count * sizeof(Record);
        // Aligned by the format, and made of plain numbers: any bytes are a record.
        return CompactArray<Record>::viewOf(
            reinterpret_cast<Record const*>(m_bytes.data() + section.offset),
            static_cast<std::size_t>(section.count));
    }

    void readLocales(CompactArray<char16_t> const& names, StoreData& data) const {
        char16_t const* at = names.begin();
        auto const next = [&] {
            char16_t const* const end = std::find(at, names.end(), u'\0');
            I18NString const name(std::u16string_view(at, static_cast<std::size_t>(end - at)));
            if (end == names.end() || !I18NLocale::isKnown(name)) {
                refuse("it names a locale that is unknown");
            }
            at = end + 1;
            return I18NLocale(name);
        };
        data.defaultLocale = next();
        for (std::uint32_t count = 0; count < m_header.localeCount; ++count) {
            data.locales.push_back(next());
        }
        std::vector<I18NLocale> used;
        for (std::uint32_t count = 0; count < m_header.usedLocaleCount; ++count) {
            used.push_back(next());
        }
        data.usedLocales = LocaleNumbers(used);
        for (std::uint32_t number = 1; number <= used.size(); ++number) {
            if (data.usedLocales.of(used[number - 1]) != number) {
                refuse("it names a locale twice");
            }
        }
        if (at != names.end()) {
            refuse("it names more locales than it has");
        }
    }

    std::string const m_name;
    std::span<std::byte const> const m_bytes;
    ImageLimits const m_limits;
    Header m_header{};
    std::uint32_t m_nextSection = 0;
};

std::shared_ptr<Model const> modelOf(std::string const& name, std::span<std::byte const> bytes,
                                     ImageLimits const& limits,
                                     std::shared_ptr<void const> holder) {
    std::unique_ptr<StoreData> data = OpenedImage(name, bytes, limits).store();
    data->image = std::move(holder);
    return std::make_shared<Model const>(std::move(data));
}

} // namespace

std::string imageFormatName() {
    return std::to_string(ImageFormat::Version) +
           (std::endian::native == std::endian::little ? "-le" : "-be");
}

bool isImage(std::string_view beginning) {
    return beginning.starts_with(std::string_view(ImageFormat::Magic, ImageFormat::MagicSize));
}

bool isImageFile(std::string const& file) {
    return MappedFile::beginningOf(file, ImageFormat::MagicSize) ==
           std::string_view(ImageFormat::Magic, ImageFormat::MagicSize);
}

std::shared_ptr<Model const> openImage(std::string const& file, ImageLimits const& limits) {
    auto const mapped = std::make_shared<MappedFile const>(file, limits.bytes, limits.raisedBy);
    return modelOf(file, mapped->bytes(), limits, mapped);
}

std::shared_ptr<Model const> openImageBytes(std::string_view image, std::string const& name,
                                            ImageLimits const& limits) {
    struct Aligned {
        void operator()(std::byte* memory) const {
            ::operator delete[](memory, std::align_val_t{ImageFormat::Alignment});
        }
    };
    std::shared_ptr<std::byte[]> const copy(
        new (std::align_val_t{ImageFormat::Alignment}) std::byte[image.size() + 1], Aligned{});
    std::memcpy(copy.get(), image.data(), image.size());
    return modelOf(name, {copy.get(), image.size()}, limits, copy);
}

} // namespace vex
