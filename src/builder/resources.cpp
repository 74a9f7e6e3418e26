#include "builder/resources.h"

#include <array>

#include "support/files.h"

#define BANKWEAVER_EMBEDDED(name)                             \
    extern "C" const unsigned char embedded_##name##_begin[]; \
    extern "C" const unsigned char embedded_##name##_end[]

BANKWEAVER_EMBEDDED(nesasm);
BANKWEAVER_EMBEDDED(menu);
BANKWEAVER_EMBEDDED(coolboy);
BANKWEAVER_EMBEDDED(coolgirl);
BANKWEAVER_EMBEDDED(coolboy_final_data);
BANKWEAVER_EMBEDDED(coolgirl_final_data);
BANKWEAVER_EMBEDDED(chr_data);
BANKWEAVER_EMBEDDED(music_0);
BANKWEAVER_EMBEDDED(music_1);
BANKWEAVER_EMBEDDED(music_2);
BANKWEAVER_EMBEDDED(music_3);
BANKWEAVER_EMBEDDED(music_4);
BANKWEAVER_EMBEDDED(music_5);
BANKWEAVER_EMBEDDED(music_6);
BANKWEAVER_EMBEDDED(music_7);
BANKWEAVER_EMBEDDED(music_8);
BANKWEAVER_EMBEDDED(music_9);
BANKWEAVER_EMBEDDED(music_A);
BANKWEAVER_EMBEDDED(music_B);
BANKWEAVER_EMBEDDED(music_C);

namespace bw {
namespace {

std::span<const uint8_t> Embedded(const unsigned char* begin, const unsigned char* end) {
    return {begin, end};
}

constexpr std::string_view kAssembler = "tools/nesasm" BANKWEAVER_EXECUTABLE_SUFFIX;
constexpr std::string_view kMusic = "MUSIC_DATA_BANK";

}  // namespace

std::span<const Resource> ResourceTable() {
    static const std::array<Resource, 20> table{{
        {kAssembler, "NES_ASM", 120, Embedded(embedded_nesasm_begin, embedded_nesasm_end)},
        {"menu/menu.asm", "MENU_ASM", 121, Embedded(embedded_menu_begin, embedded_menu_end)},
        {"menu/coolboy.asm", "MENU_ASM", 201,
         Embedded(embedded_coolboy_begin, embedded_coolboy_end)},
        {"menu/coolgirl.asm", "MENU_ASM", 202,
         Embedded(embedded_coolgirl_begin, embedded_coolgirl_end)},
        {"menu/coolboy_final_data.asm", "MENU_ASM", 214,
         Embedded(embedded_coolboy_final_data_begin, embedded_coolboy_final_data_end)},
        {"menu/coolgirl_final_data.asm", "MENU_ASM", 213,
         Embedded(embedded_coolgirl_final_data_begin, embedded_coolgirl_final_data_end)},
        {"menu/menu_data/chr_data.bin", "MENU_CHR", 122, DefaultTileSet()},
        {"menu/menu_data/music_data_0.bank", kMusic, 188,
         Embedded(embedded_music_0_begin, embedded_music_0_end)},
        {"menu/menu_data/music_data_1.bank", kMusic, 189,
         Embedded(embedded_music_1_begin, embedded_music_1_end)},
        {"menu/menu_data/music_data_2.bank", kMusic, 190,
         Embedded(embedded_music_2_begin, embedded_music_2_end)},
        {"menu/menu_data/music_data_3.bank", kMusic, 182,
         Embedded(embedded_music_3_begin, embedded_music_3_end)},
        {"menu/menu_data/music_data_4.bank", kMusic, 183,
         Embedded(embedded_music_4_begin, embedded_music_4_end)},
        {"menu/menu_data/music_data_5.bank", kMusic, 184,
         Embedded(embedded_music_5_begin, embedded_music_5_end)},
        {"menu/menu_data/music_data_6.bank", kMusic, 191,
         Embedded(embedded_music_6_begin, embedded_music_6_end)},
        {"menu/menu_data/music_data_7.bank", kMusic, 192,
         Embedded(embedded_music_7_begin, embedded_music_7_end)},
        {"menu/menu_data/music_data_8.bank", kMusic, 193,
         Embedded(embedded_music_8_begin, embedded_music_8_end)},
        {"menu/menu_data/music_data_9.bank", kMusic, 196,
         Embedded(embedded_music_9_begin, embedded_music_9_end)},
        {"menu/menu_data/music_data_A.bank", kMusic, 197,
         Embedded(embedded_music_A_begin, embedded_music_A_end)},
        {"menu/menu_data/music_data_B.bank", kMusic, 198,
         Embedded(embedded_music_B_begin, embedded_music_B_end)},
        {"menu/menu_data/music_data_C.bank", kMusic, 199,
         Embedded(embedded_music_C_begin, embedded_music_C_end)},
    }};
    return table;
}

std::span<const uint8_t> DefaultTileSet() {
    return Embedded(embedded_chr_data_begin, embedded_chr_data_end);
}

std::filesystem::path AssemblerPath(const std::filesystem::path& workFolder) {
    return (workFolder / kAssembler).make_preferred();
}

FileResult<> WriteResources(const std::filesystem::path& workFolder) {
    for (const Resource& row : ResourceTable()) {
        if (row.data.empty()) continue;
        const std::filesystem::path file = (workFolder / row.path).make_preferred();
        FileResult<> written = MakeFolders(file.parent_path());
        if (written) written = WriteScratchFile(file, row.data);
        if (!written) {
            RemoveFolder(workFolder);
            return written;
        }
    }
    std::error_code ignored;  // a folder that allows no execution shows when the assembler starts
    std::filesystem::permissions(AssemblerPath(workFolder), std::filesystem::perms::owner_exec,
                                 std::filesystem::perm_options::add, ignored);
    return {};
}

}  // namespace bw
