#include "host/content/BuildName.h"

#include "host/content/FileState.h"

#include <array>
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <elf.h>
#include <link.h>

namespace vex {

namespace {

/// The id that the linker gave an object; empty when it gave none.
std::string_view buildIdOf(dl_phdr_info const& object) {
    constexpr std::size_t alignment = 4;
    for (std::size_t number = 0; number < object.dlpi_phnum; ++number) {
        ElfW(Phdr) const& segment = object.dlpi_phdr[number];
        if (segment.p_type != PT_NOTE) {
            continue;
        }
        // NOLINTNEXTLINE: the loader gives addresses as numbers
        auto const* at = reinterpret_cast<char const*>(object.dlpi_addr + segment.p_vaddr);
        char const* const end = at + segment.p_memsz;
        while (static_cast<std::size_t>(end - at) >= sizeof(ElfW(Nhdr))) {
            ElfW(Nhdr) note{};
            std::memcpy(&note, at, sizeof note);
            char const* const name = at + sizeof note;
            char const* const text = name + (note.n_namesz + alignment - 1) / alignment * alignment;
            if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == sizeof ELF_NOTE_GNU &&
                std::memcmp(name, ELF_NOTE_GNU, sizeof ELF_NOTE_GNU) == 0) {
                return {text, note.n_descsz};
            }
            at = text + (note.n_descsz + alignment - 1) / alignment * alignment;
        }
    }
    return {};
}

class NameMaker {
public:
    void add(dl_phdr_info const& object) {
        std::string const path = object.dlpi_name;
        bool const isProgram = m_isFirst;
        m_isFirst = false;
        if (!isProgram && path.find('/') == std::string::npos) {
            return; // what the kernel maps into every process
        }
        std::string_view const id = buildIdOf(object);
        if (!id.empty()) {
            add(id);
        } else if (auto const state = FileState::of(isProgram ? "/proc/self/exe" : path)) {
            add(state->text());
        }
    }

    std::string name() const {
        std::array<char, 20> text{};
        std::snprintf(text.data(), text.size(), "%016" PRIx64, m_hash);
        return text.data();
    }

private:
    void add(std::string_view text) {
        constexpr std::uint64_t prime = 0x100'0000'01B3;
        for (char const each : text) {
            m_hash = (m_hash ^ static_cast<unsigned char>(each)) * prime;
        }
    }

    bool m_isFirst = true;
    std::uint64_t m_hash = 0xCBF2'9CE4'8422'2325;
};

std::string makeName() {
    NameMaker maker;
    ::dl_iterate_phdr(
        [](dl_phdr_info* object, std::size_t, void* into) {
            static_cast<NameMaker*>(into)->add(*object);
            return 0;
        },
        &maker);
    return maker.name();
}

/// Made before anything else is loaded, such as a plug-in.
std::string const nameOfThisBuild = makeName();

} // namespace

std::string const& buildName() {
    return nameOfThisBuild;
}

} // namespace vex
