#include "designer/import/picture_import.h"

#include <algorithm>
#include <map>

#include "designer/import/dithering.h"
#include "designer/import/exact_colours.h"
#include "designer/import/import_report.h"
#include "designer/import/tile_room.h"
#include "designer/model/attribute_table.h"
#include "designer/model/tiles.h"

namespace bw {
namespace {

// The sub-palettes that are there; the backdrop is the one that the console shows.
ColourChoice KeptColours(const DesignStore& store, const Canvas& canvas) {
    ColourChoice choice;
    choice.backdrop = ShadeOf(store.SpritePalette[0]);
    for (size_t palette = 0; palette < kPaletteCount; ++palette)
        for (size_t colour = 0; colour < kPaletteColours; ++colour)
            choice.palettes[palette][colour] = ShadeOf(store.BkgPalette[palette * 4 + 1 + colour]);
    ChoosePalettesOfBlocks(canvas, choice);
    return choice;
}

class Import {
  public:
    Import(const WorkingCopy& copy, const Canvas& canvas, const ImportOptions& options,
           const std::atomic<bool>& stop)
        : copy_(copy),
          options_(options),
          stop_(stop),
          picture_(canvas),
          wanted_(&canvas),
          reached_(&canvas) {}

    std::optional<ImportResult> Run() {
        result_.area = wanted_->Area();
        DesignRoom room = RoomFor(copy_, result_.area);
        ChooseColourWay(room);
        if (stop_) return std::nullopt;
        tiles_ = TilesOf(*reached_);
        TakeReserve(room);
        const bool mayRefit = !exact_ && !options_.keepPalettes && reached_ == wanted_;
        chosen_ =
            options_.keepTiles
                ? ChooseKeptTiles(*reached_, tiles_, AllTiles(copy_), mayRefit, choice_, stop_)
                : ChooseTiles(*reached_, tiles_, room.room, mayRefit, choice_, stop_);
        if (stop_) return std::nullopt;
        FillChanges();
        DescribeImport(picture_, *wanted_, tiles_, chosen_, choice_, result_);
        result_.withoutLoss =
            exact_.has_value() && result_.lossyBlocks.empty() && result_.meanError == 0;
        return std::move(result_);
    }

  private:
    // A screen's own colours where the picture has them, else the palettes that are there, else
    // those that suit it; then the mixtures.
    void ChooseColourWay(const DesignRoom& room) {
        if (!options_.keepPalettes && !options_.keepTiles) {
            exact_ = FindExactColours(*wanted_, FixedBackdrop(), room.room.free.size());
        }
        if (exact_) {
            choice_ = exact_->choice;
            recoloured_.emplace(wanted_->Recoloured(exact_->shades));
            wanted_ = reached_ = &*recoloured_;
            return;
        }
        choice_ = options_.keepPalettes ? KeptColours(copy_.Store(), *wanted_)
                                        : ChooseColours(*wanted_, FixedBackdrop(), stop_);
        if (stop_) return;
        if (!options_.keepPalettes) ShareByOrder(*wanted_, TilesOf(*wanted_), choice_);
        if (options_.dithering == Dithering::kOrdered) {
            recoloured_.emplace(wanted_->Recoloured(Dither(*wanted_, choice_)));
            reached_ = &*recoloured_;
        }
    }

    // The rest of the screen keeps its backdrop, and so does what shines through a clear pixel.
    std::optional<Shade> FixedBackdrop() const {
        bool whole = wanted_->Area().IsWholeScreen();
        for (size_t pixel = 0; whole && pixel < wanted_->PixelCount(); ++pixel)
            whole = !wanted_->IsClear(pixel);
        return whole ? std::nullopt : std::optional(ShadeOf(copy_.Store().SpritePalette[0]));
    }

    // A picture that could come without loss may have tiles of letters that nothing prints yet.
    void TakeReserve(DesignRoom& room) {
        if (!exact_) return;
        std::vector<TilePattern> needed;
        for (const PictureTile& tile : tiles_)
            needed.push_back(ClosestPattern(*reached_, choice_, tile));
        std::ranges::sort(needed);
        needed.erase(std::ranges::unique(needed).begin(), needed.end());
        auto& kept = room.room.kept;
        const auto shared = std::ranges::count_if(needed, [&](const TilePattern& pattern) {
            return std::ranges::find(kept, pattern, &TileRoom::Kept::pattern) != kept.end();
        });
        std::vector<uint8_t> taken;
        for (const uint8_t number : room.reserve) {
            if (room.room.free.size() + taken.size() + static_cast<size_t>(shared) >=
                needed.size()) {
                break;
            }
            const auto place = std::ranges::find(kept, number, &TileRoom::Kept::number);
            if (!std::ranges::binary_search(needed, place->pattern)) taken.push_back(number);
        }
        if (room.room.free.size() + taken.size() + static_cast<size_t>(shared) < needed.size()) {
            return;  // they wouldn't do
        }
        for (const uint8_t number : taken) {
            std::erase_if(kept, [&](const auto& tile) { return tile.number == number; });
            room.room.free.push_back(number);
        }
        result_.lettersTaken = taken.size() - static_cast<size_t>(std::ranges::count(taken, 0));
    }

    void FillChanges() {
        const bool zeroIsBlank =
            IsBlank(TileAt(copy_.Store(), PatternTable::kBackground, 0)) &&
            std::ranges::find(chosen_.drawn, 0, &TileChoice::Drawn::number) == chosen_.drawn.end();
        std::map<size_t, uint8_t> palettes;  // of the blocks that show more than the backdrop
        for (size_t tile = 0; tile < tiles_.size(); ++tile) {
            const uint8_t number = chosen_.numbers[tile];
            const Pos& cell = tiles_[tile].cell;
            if (number != 0 || !zeroIsBlank) {
                result_.items.push_back({.X = cell.X, .Y = cell.Y, .Tile = number});
            }
            const size_t block = tiles_[tile].block;
            if (chosen_.shown[tile] != TilePattern()) palettes[block] = choice_.paletteOf[block];
        }
        for (const auto& [block, palette] : palettes)
            result_.blocks.emplace_back(wanted_->Blocks()[block], palette);
        result_.drawn = chosen_.drawn;
        if (!options_.keepPalettes) SetPalette();
    }

    // A sub-palette that no block has keeps its colours.
    void SetPalette() {
        auto& palette = result_.palette.emplace(copy_.Store().BkgPalette);
        const uint8_t before = copy_.Store().SpritePalette[0];
        const bool same = ShadeOf(before) == choice_.backdrop;  // it may have another code for it
        for (size_t number = 0; number < kPaletteCount; ++number) {
            palette[number * 4] = same ? before : ShownColours()[choice_.backdrop].code;
            const bool used = std::ranges::any_of(
                result_.blocks, [&](const auto& block) { return block.second == number; });
            for (size_t colour = 0; used && colour < kPaletteColours; ++colour)
                palette[number * 4 + 1 + colour] =
                    ShownColours()[choice_.palettes[number][colour]].code;
        }
    }

    const WorkingCopy& copy_;
    const ImportOptions& options_;
    const std::atomic<bool>& stop_;
    std::optional<ExactColours> exact_;
    std::optional<Canvas> recoloured_;
    const Canvas& picture_;
    const Canvas* wanted_;   // what errors are measured against
    const Canvas* reached_;  // what the tiles are to show
    ColourChoice choice_;
    std::vector<PictureTile> tiles_;
    TileChoice chosen_;
    ImportResult result_;
};

}  // namespace

std::optional<ImportResult> ImportPicture(const WorkingCopy& copy, const Picture& picture,
                                          const ImportOptions& options,
                                          const std::atomic<bool>& stop) {
    constexpr uint32_t kWidth = kScreenColumns * kTilePixels;
    constexpr uint32_t kHeight = kScreenRows * kTilePixels;
    const bool large = picture.width > kWidth || picture.height > kHeight;
    const Picture smaller = large ? Unmagnified(picture) : Picture();
    const Picture& taken = large ? smaller : picture;
    const Canvas canvas(taken, options.at);
    auto result = Import(copy, canvas, options, stop).Run();
    if (result) {
        result->cut = taken.width > kWidth - static_cast<uint32_t>(options.at.X * kTilePixels) ||
                      taken.height > kHeight - static_cast<uint32_t>(options.at.Y * kTilePixels);
    }
    return result;
}

Views ApplyImport(WorkingCopy& copy, const ImportResult& result) {
    DesignStore& store = copy.Store();
    for (const TileChoice::Drawn& drawn : result.drawn)
        WritePattern(drawn.pattern, TileAt(store, PatternTable::kBackground, drawn.number));
    std::erase_if(store.BkgTileList,
                  [&](const TileItem& item) { return result.area.Holds(item.X, item.Y); });
    store.BkgTileList.insert(store.BkgTileList.end(), result.items.begin(), result.items.end());
    copy.nextBkgIndex = Renumber(store.BkgTileList);
    for (const auto& [block, palette] : result.blocks) {
        uint8_t& attribute = store.Attributes[static_cast<size_t>(block.y / 2 * 8 + block.x / 2)];
        attribute = WithQuadrantPalette(attribute, {block.x, block.y}, palette);
    }
    if (result.palette) {
        store.BkgPalette = *result.palette;
        for (size_t entry = 0; entry < kPaletteSize; entry += 4)
            store.SpritePalette[entry] = store.BkgPalette[0];
    }
    return SynchroniseCursors(copy) | TableViews(PatternTable::kBackground) |
           TableViews(PatternTable::kSprites) | View::kSpritePalette;
}

Picture Unmagnified(const Picture& picture) {
    const auto isMadeOf = [&](uint32_t side) {
        if (picture.width % side != 0 || picture.height % side != 0) return false;
        for (size_t y = 0; y < picture.height; ++y)
            for (size_t x = 0; x < picture.width; ++x)
                if (picture.pixels[y * picture.width + x] !=
                    picture.pixels[y / side * side * picture.width + x / side * side]) {
                    return false;
                }
        return true;
    };
    constexpr uint32_t kMost = 8;
    uint32_t side = kMost;
    while (!isMadeOf(side))
        --side;  // 1 always does
    Picture smaller{.width = picture.width / side, .height = picture.height / side, .pixels = {}};
    smaller.pixels.reserve(size_t{smaller.width} * smaller.height);
    for (size_t y = 0; y < picture.height; y += side)
        for (size_t x = 0; x < picture.width; x += side)
            smaller.pixels.push_back(picture.pixels[y * picture.width + x]);
    return smaller;
}

}  // namespace bw
