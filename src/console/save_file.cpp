#include "console/save_file.h"

#include <vector>

#include <fmt/format.h>

#include "builder/tables/cart_tables.h"
#include "rom/crc32.h"
#include "rom/image_files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

uint32_t ContentsCode(const std::filesystem::path& rom) {
    const auto file = OpenImage(rom);
    std::vector<uint8_t> part(size_t{1} << 18);
    uint32_t code = 0;
    for (uint64_t at = 0; file; at += part.size()) {
        const size_t read = file->ReadAt(at, part).ValueOr(0);
        code = Crc32({part.data(), read}, code);
        if (read < part.size()) break;
    }
    return code;
}

uint32_t PlaceCode(const std::filesystem::path& rom) {
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::weakly_canonical(rom, error);
    const std::string name = ToUtf8(PathText(error ? rom : whole));
    return Crc32({reinterpret_cast<const uint8_t*>(name.data()), name.size()});
}

}  // namespace

std::filesystem::path SaveFileOf(const std::filesystem::path& rom) {
    const bool cart = static_cast<bool>(ReadCart(rom));
    const std::string name = fmt::format("{}-{:08X}.sav", cart ? "cart" : "game",
                                         cart ? PlaceCode(rom) : ContentsCode(rom));
    return UserDataFolder() / "saves" / name;
}

}  // namespace bw
