// A picture becomes the screen's tiles, attributes and palettes.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "designer/files/png_file.h"
#include "designer/import/canvas.h"
#include "designer/import/tile_choice.h"
#include "designer/model/views.h"
#include "designer/model/working_copy.h"
#include "designer/pictures/surface.h"

namespace bw {

// Pixels each way of the pictures that are worth reading: a screen eight times as large.
inline constexpr uint32_t kLargestPictureSide = 2048;

enum class Dithering { kNone, kOrdered };

struct ImportOptions {
    Pos at{};                   // the cell of its top left corner: columns 0 to 31, rows 0 to 29
    bool keepPalettes = false;  // with the colours that are there
    bool keepTiles = false;     // with the tiles that are there, none added
    Dithering dithering = Dithering::kNone;

    bool operator==(const ImportOptions&) const = default;
};

struct ImportResult {
    // What changes in the design.
    TileArea area;                // where all that was placed goes
    std::vector<TileItem> items;  // what comes instead; Index isn't set
    std::vector<TileChoice::Drawn> drawn;
    std::vector<std::pair<Point, uint8_t>> blocks;  // 16 by 16 pixels each, and their sub-palette
    std::optional<std::array<uint8_t, kPaletteSize>> palette;  // of the background; none: as it was

    // Numbers for people.
    size_t tiles = 0;                // different ones that the picture shows
    std::vector<Point> lossyBlocks;  // where the closest colour of some pixel shows nowhere
    // The mean distance of its pixels from those of the picture, where that of black and white is
    // 100. Clear pixels don't count. 0 for a picture that came without loss, whose colours then
    // stand for the console's.
    double meanError = 0;
    bool withoutLoss = false;  // a console's screen as it was: equal pixels equal, others different
    size_t lettersTaken = 0;   // of characters that nothing prints yet
    bool cut = false;          // some of the picture lies beside the screen

    // `area` in pixels; what is clear shows the backdrop.
    Surface original{0, 0};
    Surface result{0, 0};
    Surface error{0, 0};  // black where there is none, the brighter the larger; lossy blocks framed
};

// Colours are compared in OKLab. The picture has at least a pixel and the place is on the screen;
// what hangs over the screen's right or lower edge is cut off. A picture that is too large for the
// screen, but made of squares of one colour all over, is taken as what they magnify.
//
// A picture that a console's screen could show comes without loss where its palettes and tiles may
// change and its tiles find room: letters that nothing prints yet then give theirs. For the
// backdrop, entry 0 of all sub-palettes is changed, of sprites too. Only a picture that covers the
// whole screen changes which colour that is. Clear pixels show the backdrop.
//
// The same picture, design and options give the same result. Nothing once `stop` is set, which may
// be done from another thread.
std::optional<ImportResult> ImportPicture(const WorkingCopy& copy, const Picture& picture,
                                          const ImportOptions& options,
                                          const std::atomic<bool>& stop);

// Puts it into the design; for EditSession::Run. The result names the views that are out of date.
Views ApplyImport(WorkingCopy& copy, const ImportResult& result);

// The picture that this one magnifies by a whole number, itself at the least.
Picture Unmagnified(const Picture& picture);

}  // namespace bw
