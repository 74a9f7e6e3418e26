// Any bytes as a design that goes on: it has an exact text, and compiles to files of the right
// size.
#include "builder/tables/design_compile.h"
#include "designer/files/design_file.h"
#include "designer/files/design_text.h"
#include "fuzz.h"

namespace {

// The pictures of a text are those that were described with it.
bw::PictureReader PicturesOf(const bw::DesignText& design) {
    return [&](const std::string& name, std::span<uint8_t> table) -> std::optional<std::string> {
        const size_t half = design.tiles.size() / 2;
        Expect(table.size() == half);
        const auto source = design.tiles.subspan(name == bw::kSpritesPicture ? half : 0, half);
        std::copy(source.begin(), source.end(), table.begin());
        return std::nullopt;
    };
}

void CheckText(std::span<const uint8_t> bytes) {
    const bw::ChunkList list = bw::ReadChunks(bytes);
    const bw::DesignText design = bw::DescribeDesign(list.chunks);
    std::vector<uint8_t> again;
    Expect(!bw::ParseDesign(design.text, PicturesOf(design), again));
    Expect(std::equal(again.begin(), again.end(), bytes.begin(), bytes.end()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    bw::DesignDocument document;
    if (bw::ReadDesign({data, size}, document, bw::Language::kEnglish)) return 0;
    CheckText({data, size});
    CheckText(bw::WriteDesign(document));

    const auto settings = bw::MakeMemoryStore();
    bw::RebuildShortLargeCursor(document);
    Expect(document.store.ArrowTileList.size() >= 4 && bw::StoreDesign(document, *settings));
    for (const bw::DesignFile& file : bw::CompileDesign(document.store, true)) {
        Expect(std::string_view(file.name) != "game_name_table.bin" || file.contents.size() == 960);
    }
    return 0;
}
