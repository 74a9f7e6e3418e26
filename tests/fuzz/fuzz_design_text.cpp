// Any text as a design: what is taken is a design, and its own text leads to the same file.
#include <algorithm>

#include "designer/files/design_file.h"
#include "designer/files/design_text.h"
#include "designer/files/tile_picture.h"
#include "fuzz.h"

namespace {

// The pictures' contents are the fuzzer's too: the first bytes of the text.
std::optional<std::string> ReadPicture(std::string_view text, const std::string& name,
                                       std::span<uint8_t> table) {
    Expect(name.find('/') == std::string::npos && table.size() == bw::kPatternTableSize);
    if (text.size() < 64) return "too short";
    for (size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<uint8_t>(text[(i * 7 + name.size()) % 64]);
    }
    return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text = TextOf({data, size});
    std::vector<uint8_t> bytes{1, 2, 3};
    const auto problem = bw::ParseDesign(
        text,
        [&](const std::string& name, std::span<uint8_t> table) {
            return ReadPicture(text, name, table);
        },
        bytes);
    if (problem) {
        const auto lines = static_cast<size_t>(std::ranges::count(text, '\n')) + 1;
        Expect(!problem->text.empty() && problem->place.line >= 1 && problem->place.line <= lines);
        Expect(bytes == std::vector<uint8_t>({1, 2, 3}));
        // The same bytes as a picture.
        std::vector<uint8_t> table(bw::kPatternTableSize);
        if (!bw::ReadTilePicture({data, size}, table)) {
            std::vector<uint8_t> again(bw::kPatternTableSize);
            Expect(!bw::ReadTilePicture(bw::TilePicture(table), again) && again == table);
        }
        return 0;
    }
    bw::DesignDocument document;
    Expect(!bw::ReadDesign(bytes, document, bw::Language::kEnglish));
    const bw::ChunkList list = bw::ReadChunks(bytes);
    const bw::DesignText design = bw::DescribeDesign(list.chunks);
    std::vector<uint8_t> again;
    const auto tiles = [&](const std::string& name, std::span<uint8_t> table) {
        const size_t from = name == bw::kSpritesPicture ? table.size() : 0;
        std::ranges::copy(design.tiles.subspan(from, table.size()), table.begin());
        return std::optional<std::string>();
    };
    Expect(!bw::ParseDesign(design.text, tiles, again) && again == bytes);
    return 0;
}
