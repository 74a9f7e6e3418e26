#include "designer/window/dropped_parts.h"

#include <algorithm>
#include <span>

#include "designer/window/file_rows.h"
#include "support/paths.h"

namespace bw {
namespace {

using enum DesignPart;

bool IsVideoMemory(DesignPart part) {
    return part == kVideoMemory2000 || part == kVideoMemory2C00;
}

// The parts that the buttons around a view load.
std::span<const DesignPart> PartsOf(std::optional<Control> view) {
    static constexpr DesignPart kOfScreen[] = {kNameTable, kAttributes, kSprites, kVideoMemory2000,
                                               kVideoMemory2C00};
    static constexpr DesignPart kOfColours[] = {kBkgPalette, kSpritePalette};
    static constexpr DesignPart kOfTiles[] = {kBkgTiles, kSpriteTiles};
    static constexpr DesignPart kOfAttribute[] = {kAttributes};
    if (!view) return {};
    switch (*view) {
        case Control::kBkgTileList:
        case Control::kBkgTileEditor:
            return std::span(kOfTiles).first<1>();
        case Control::kSpriteTileList:
        case Control::kSpriteTileEditor:
            return std::span(kOfTiles).last<1>();
        case Control::kNameTable:
            return kOfScreen;
        case Control::kAttribute:
            return kOfAttribute;
        case Control::kBkgPalette:
            return std::span(kOfColours).first<1>();
        case Control::kSpritePalette:
            return std::span(kOfColours).last<1>();
        case Control::kSystemPalette:
            return kOfColours;
        default:
            return {};
    }
}

}  // namespace

std::vector<DesignPart> DroppedParts(const std::filesystem::path& file, uint64_t size,
                                     std::optional<Control> view) {
    // A whole design is also read for what a screen or texts would hold: all of it would replace
    // everything that is there.
    if (HasExtension(file, PartExtension(kDesign))) return {kDesign, kScreen, kTexts};
    std::vector<DesignPart> parts;
    for (const FileRow& row : FileRows()) {
        for (const PartType& type : row.loadTypes) {
            if (HasExtension(file, type.extension)) parts.push_back(type.part);
        }
    }
    std::erase_if(parts,
                  [&](DesignPart part) { return IsVideoMemory(part) && size != TableSize(part); });
    const std::span<const DesignPart> own = PartsOf(view);
    const auto isOthers = [&](DesignPart part) {
        return std::ranges::find(own, part) == own.end();
    };
    if (!std::ranges::all_of(parts, isOthers)) std::erase_if(parts, isOthers);
    std::ranges::stable_partition(parts, [&](DesignPart part) { return TableSize(part) == size; });
    return parts;
}

}  // namespace bw
