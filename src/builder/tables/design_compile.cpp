#include "builder/tables/design_compile.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>

#include "builder/tables/generated_text.h"
#include "support/files.h"
#include "support/numbers.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr uint32_t kColumnMask = 31;  // of a video memory address

std::string AddressLine(std::string_view constant, uint32_t address) {
    std::string text(constant);
    text += " = $";
    AppendHex(text, address, 4);
    return text;
}

// The caption ends at the screen's right edge; the store keeps all of it.
std::string CaptionLine(const DesignStore& store) {
    const size_t column = store.CaptionPpuAddr & kColumnMask;
    std::string text;
    AppendCountedString(text, ToSingleByte(store.CaptionText).substr(0, kScreenColumns - column));
    return text;
}

// A sprite as the console's sprite memory holds it.
std::array<uint8_t, 4> SpriteBytes(const TileItem& item) {
    return {static_cast<uint8_t>(item.Y), item.Tile, SpriteAttribute(item),
            static_cast<uint8_t>(item.X)};
}

std::string LargeCursor(const std::vector<TileItem>& items) {
    std::string bytes;
    for (const TileItem& item : items) {
        for (const uint8_t byte : SpriteBytes(item))
            bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::string SpriteLines(const std::vector<TileItem>& items) {
    std::string text;
    for (const TileItem& item : items) {
        if (!IsSpriteBuilt(item)) continue;
        std::string_view separator = " .DB $";
        for (const uint8_t byte : SpriteBytes(item)) {
            text += separator;
            AppendHex(text, byte, 2);
            separator = ",$";
        }
        text += kLineEnd;
    }
    return text;
}

// Where a place on the screen lies in the name table.
size_t Cell(size_t column, int32_t row) {
    return static_cast<size_t>(row) * kScreenColumns + column;
}

std::string NameTable(const DesignStore& store) {
    std::string cells(Cell(0, kScreenRows), '\0');
    for (const TileItem& item : store.BkgTileList) {
        const bool onScreen =
            item.X >= 0 && item.X < kScreenColumns && item.Y >= 0 && item.Y < kScreenRows;
        if (onScreen)
            cells[Cell(static_cast<size_t>(item.X), item.Y)] = static_cast<char>(item.Tile);
    }
    for (const TextItem& item : store.CustomText) {
        const ShownText shown = ShownPart(item);
        size_t column = shown.column;
        for (const char byte : ToSingleByte(shown.text)) {
            // A space lets the tile below show through.
            const uint8_t tile = store.CharMapData[static_cast<uint8_t>(byte)];
            if (byte != ' ') cells[Cell(column, item.Y)] = static_cast<char>(tile);
            ++column;
        }
    }
    return cells;
}

std::string CharMapping(const DesignStore& store, bool custom) {
    std::array<uint8_t, kCharMapSize> map = store.CharMapData;
    if (!custom) std::iota(map.begin(), map.end(), uint8_t{0});
    return {map.begin(), map.end()};
}

}  // namespace

ShownText ShownPart(const TextItem& item) {
    if (item.X >= kScreenColumns || item.Y < 0 || item.Y >= kScreenRows) return {};
    std::u16string_view text = item.Text;
    const auto hidden = static_cast<size_t>(std::max<int64_t>(-int64_t{item.X}, 0));
    if (hidden >= text.size()) return {};
    const auto column = static_cast<size_t>(std::max(item.X, 0));
    return {text.substr(hidden, kScreenColumns - column), column};
}

// The constant of the page number is spelt as in the menu's source.
std::vector<DesignFile> CompileDesign(const DesignStore& store, bool custom) {
    const auto bytes = [](const auto& table) { return std::string(table.begin(), table.end()); };
    std::vector<DesignFile> files;
    files.push_back({"game_caption_addr.asm", AddressLine("TITLE_SHOW_POS", store.CaptionPpuAddr)});
    // The menu includes the caption only if its length isn't 0.
    if (!store.CaptionText.empty()) files.push_back({"game_caption_data.asm", CaptionLine(store)});
    files.push_back(
        {"game_page_number_addr.asm", AddressLine("PAGE_INDER_SHOW_POS", store.PageNumberPpuAddr)});
    files.push_back({"game_item_addr.asm", AddressLine("ITEM_SHOW_POS", store.ItemPpuAddr)});
    files.push_back({"game_big_arrow_data.bin", LargeCursor(store.ArrowTileList)});
    files.push_back({"game_attributes_data.bin", bytes(store.Attributes)});
    files.push_back({"game_bkg_palette_data.bin", bytes(store.BkgPalette)});
    files.push_back({"game_sprite_palette_data.bin", bytes(store.SpritePalette)});
    files.push_back({"game_sprite_list.asm", SpriteLines(store.SpriteTileList)});
    files.push_back({"game_name_table.bin", NameTable(store)});
    files.push_back({"custom_chr_data.bin", bytes(store.ChrData)});
    files.push_back({"char_mapping.bin", CharMapping(store, custom)});
    return files;
}

FileResult<> WriteDesignFiles(DesignStore& store, size_t checkedCount,
                              const std::optional<std::u16string>& captionSetting,
                              const std::filesystem::path& folder, bool custom) {
    store.CaptionText = captionSetting.value_or(ToWide(std::to_string(checkedCount) + " IN 1"));
    for (const DesignFile& file : CompileDesign(store, custom)) {
        FileResult<> written = WriteScratchFile(folder / file.name, file.contents);
        if (!written) return written;
    }
    return {};
}

}  // namespace bw
