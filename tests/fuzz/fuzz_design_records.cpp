// Any bytes as the stored lists of a design: what is read stays within its limits, loads into a
// document, and compiles to files of the right size.

#include "builder/tables/design_compile.h"
#include "designer/model/design_records.h"
#include "fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    Expect(bw::ReadTileItems(bytes).size() == size / bw::TileItem::kStoredSize);
    size_t used = 0;
    uint32_t index = 0;
    for (const bw::TextItem& item : bw::ReadTextItems(bytes)) {
        Expect(item.Index == index++ && item.Text.size() <= 260);
        used += 16 + 12 + item.Text.size() * 2;
    }
    Expect(used <= size);

    // As one user's settings would hold them.
    const auto settings = bw::MakeMemoryStore();
    for (const char* name : {"CustomText", "BkgTileList", "SpriteTileList", "ArrowTileList"}) {
        settings->RegWriteBinary(bw::kDesignKey, name, bytes);
    }
    settings->RegWriteBinary(bw::kDesignKey, "ArrowTile", bytes.first(size < 20 ? size : 20));
    bw::DesignStore design;
    const uint8_t tile[1] = {};
    Expect(bw::LoadDesignData(design, *settings, tile));
    Expect(design.ArrowTileList.size() >= 4);
    for (const bw::DesignFile& file : bw::CompileDesign(design, true)) {
        Expect(std::string_view(file.name) != "game_name_table.bin" || file.contents.size() == 960);
    }
    return 0;
}
