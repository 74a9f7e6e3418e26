// Turns the design into the files that the menu source includes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/model/design_store.h"
#include "support/file_problem.h"

namespace bw {

// What of a text stands on the screen, and at which column it starts there. Empty: nothing.
struct ShownText {
    std::u16string_view text;
    size_t column = 0;
};
ShownText ShownPart(const TextItem& item);

// The menu has 64 sprites and the cursor takes some of them; the design's first ones take the rest.
constexpr size_t SpritesShown(bool largeCursor) {
    return largeCursor ? 60 : 63;
}
// Sprites at other places are left out.
constexpr bool IsSpriteBuilt(const TileItem& item) {
    return item.Y >= kFirstSpriteY && item.Y <= kLastSpriteY && item.X >= 0 &&
           item.X <= kLastSpriteX;
}
// More of them don't fit behind the other tables in the menu's last bank, and the menu can't be
// assembled: 3 KB from $B400 on, four bytes each, and 64 hidden ones behind them.
inline constexpr size_t kSpritesInBank = 3072 / 4 - 64;

// One file of the menu's screen.
struct DesignFile {
    const char* name;
    std::string contents;
};

// The files in the order in which they are written: twelve, or eleven where the caption is empty,
// since its file then isn't written at all.
std::vector<DesignFile> CompileDesign(const DesignStore& store, bool custom);

// Writes the files of the menu's screen into `folder`, which exists. `checkedCount` is the
// number of games; `captionSetting` is the caption as the user stored it, if he did: it replaces
// the caption that the count gives. `custom` is whether the custom menu is on; only
// char_mapping.bin differs by it. Sets the store's CaptionText on the way.
//
// Ends at the first file that can't be written; earlier files stay.
FileResult<> WriteDesignFiles(DesignStore& store, size_t checkedCount,
                              const std::optional<std::u16string>& captionSetting,
                              const std::filesystem::path& folder, bool custom);

}  // namespace bw
