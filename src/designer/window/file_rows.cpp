#include "designer/window/file_rows.h"

#include <algorithm>
#include <array>

#include "designer/files/bare_tables.h"
#include "designer/model/design_store.h"

namespace bw {
namespace {

using enum DesignPart;

constexpr uint64_t kLargestTable = uint64_t{1} << 20;

constexpr PartType kWholeTypes[] = {{u"fcm", "fcm", kDesign},
                                    {u"bin_2000", "bin", kVideoMemory2000},
                                    {u"bin_2C00", "bin", kVideoMemory2C00}};
constexpr PartType kScreenTypes[] = {{u"fcc", "fcc", kScreen}};
constexpr PartType kTextTypes[] = {{u"fct", "fct", kTexts}};
constexpr PartType kBkgTileTypes[] = {{u"chr", "chr", kBkgTiles}, {u"bin", "bin", kBkgTiles}};
constexpr PartType kSpriteTileTypes[] = {{u"chr", "chr", kSpriteTiles},
                                         {u"bin", "bin", kSpriteTiles}};
constexpr PartType kNameTableTypes[] = {{u"nam", "nam", kNameTable}, {u"bin", "bin", kNameTable}};
constexpr PartType kAttributeTypes[] = {{u"attr", "attr", kAttributes},
                                        {u"bin", "bin", kAttributes}};
constexpr PartType kSavedAttributeTypes[] = {{u"attr", "attr", kAttributes},
                                             {u"bin", "bin", kAttributesAsBin},
                                             {u"attr(MMC5)", "attr", kMmc5Attributes},
                                             {u"bin(MMC5)", "bin", kMmc5Attributes}};
constexpr PartType kSpriteTypes[] = {{u"spl", "spl", kSprites}, {u"bin", "bin", kSprites}};
constexpr PartType kBkgPaletteTypes[] = {{u"pal", "pal", kBkgPalette},
                                         {u"bin", "bin", kBkgPalette}};
constexpr PartType kSpritePaletteTypes[] = {{u"pal", "pal", kSpritePalette},
                                            {u"bin", "bin", kSpritePalette}};
constexpr PartType kCharMapTypes[] = {{u"bin", "bin", kCharMap}};

constexpr FileRow kRows[] = {
    {1068, 1072, kWholeTypes, std::span(kWholeTypes).first<1>()},
    {1087, 1088, kScreenTypes, kScreenTypes},
    {1121, 1122, kTextTypes, kTextTypes},
    {1071, 1073, kBkgTileTypes, kBkgTileTypes},
    {1080, 1082, kSpriteTileTypes, kSpriteTileTypes},
    {1109, 1110, kNameTableTypes, kNameTableTypes},
    {1116, 1117, kAttributeTypes, kSavedAttributeTypes},
    {1096, 1097, kSpriteTypes, kSpriteTypes},
    {1090, 1091, kBkgPaletteTypes, kBkgPaletteTypes},
    {1093, 1094, kSpritePaletteTypes, kSpritePaletteTypes},
    {0, 1146, {}, kCharMapTypes},
};

const FileRow* RowOf(int FileRow::*command, int id) {
    const auto* row = std::ranges::find(kRows, id, command);
    return id == 0 || row == std::end(kRows) ? nullptr : row;
}

}  // namespace

std::span<const FileRow> FileRows() {
    return kRows;
}

const FileRow* RowOfLoad(int id) {
    return RowOf(&FileRow::load, id);
}

const FileRow* RowOfSave(int id) {
    return RowOf(&FileRow::save, id);
}

TextId PartName(DesignPart part) {
    switch (part) {
        case kDesign:
            return TextId::kPartDesign;
        case kScreen:
            return TextId::kPartScreen;
        case kTexts:
            return TextId::kPartTexts;
        case kVideoMemory2000:
            return TextId::kPartVideoMemory2000;
        case kVideoMemory2C00:
            return TextId::kPartVideoMemory2C00;
        case kBkgTiles:
            return TextId::kPartBkgTiles;
        case kSpriteTiles:
            return TextId::kPartSpriteTiles;
        case kNameTable:
            return TextId::kBackgroundTileList;
        case kAttributes:
        case kAttributesAsBin:
        case kMmc5Attributes:
            return TextId::kAttributes;
        case kSprites:
            return TextId::kSpriteTileList;
        case kBkgPalette:
            return TextId::kBackgroundPalette;
        case kSpritePalette:
            return TextId::kSpritePalette;
        default:
            return TextId::kPartCharMap;
    }
}

uint64_t LargestFile(DesignPart part) {
    return TableSize(part) == 0 ? kLargestDesignFile : kLargestTable;
}

size_t TableSize(DesignPart part) {
    switch (part) {
        case kDesign:
        case kScreen:
        case kTexts:
            return 0;
        case kVideoMemory2000:
        case kVideoMemory2C00:
            return kVideoMemorySize;
        case kBkgTiles:
        case kSpriteTiles:
            return kPatternTableSize;
        case kNameTable:
            return kNameTableSize;
        case kSprites:
            return kSpritesInMemory * 4;
        case kBkgPalette:
        case kSpritePalette:
            return kPaletteSize;
        case kCharMap:
            return kCharMapSize;
        default:
            return kAttributeSize;
    }
}

}  // namespace bw
