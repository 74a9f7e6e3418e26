// Sprites and the cursor: how many there are, how many stand on a line, what nobody sees.
#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "builder/design_check/console_sprites.h"
#include "builder/design_check/design_checks.h"
#include "builder/tables/design_compile.h"

namespace bw {
namespace {

constexpr int kSpritesOnLine = 8;  // that the console draws

constexpr FindingSeverity kWarning = FindingSeverity::kWarning;

class SpriteCheck {
  public:
    SpriteCheck(const CheckedDesign& design, FindingList& findings)
        : document_(design.copy.document),
          store_(design.copy.Store()),
          screen_(design.screen),
          findings_(findings),
          sprites_(ShownSprites(document_)) {
        for (int32_t name = 0; name < screen_.CursorStops(); ++name)
            cursors_.push_back(CursorSprites(document_, screen_.BelowFirst(name)));
    }

    void Run() {
        CheckCount();
        CheckPlaces();
        CheckLines();
        CheckOrder();
        CheckCursorOrder();
        CheckCursorTiles();
    }

  private:
    using Lines = std::array<int, kScreenHeight>;

    void CheckCount() {
        const std::vector<TileItem>& list = store_.SpriteTileList;
        const auto built = static_cast<size_t>(std::ranges::count_if(list, IsSpriteBuilt));
        const size_t shown = SpritesShown(document_.BigCursor != 0);
        if (built <= shown) return;
        size_t past = 0;  // the first sprite that isn't shown
        for (size_t count = 0; count <= shown; ++past)
            if (IsSpriteBuilt(list[past])) ++count;
        const PlacedSprite place{past - 1};
        if (built > kSpritesInBank) {
            findings_.Add(FindingSeverity::kError, TextId::kFindingSpritesPastBank, place, built,
                          kSpritesInBank);
        } else {
            findings_.Add(kWarning, TextId::kFindingSpritesLeftOut, place, built, shown);
        }
    }

    void CheckPlaces() {
        const std::vector<TileItem>& list = store_.SpriteTileList;
        for (size_t i = 0; i < list.size(); ++i) {
            // One at the last Y stands below the last line.
            if (!IsSpriteBuilt(list[i]) || list[i].Y == kLastSpriteY) {
                findings_.Add(kWarning, TextId::kFindingSpriteOutside, PlacedSprite{i}, i + 1);
            }
        }
        for (const ConsoleSprite& sprite : sprites_) {
            if (!sprite.IsBlank()) continue;
            findings_.Add(kWarning, TextId::kFindingSpriteBlank, PlacedSprite{sprite.index},
                          sprite.index + 1, unsigned{list[sprite.index].Tile});
        }
    }

    // The console counts blank sprites as well, and those behind the picture.
    static void Count(const std::vector<ConsoleSprite>& sprites, Lines& lines) {
        for (const ConsoleSprite& sprite : sprites)
            for (int line = sprite.top; line < std::min(sprite.End(), kScreenHeight); ++line)
                ++lines[static_cast<size_t>(line)];
    }

    void CheckLines() {
        Lines fixed{};
        Count(sprites_, fixed);
        TellLines(fixed, [&](int first, int last, int most) {
            findings_.Add(kWarning, TextId::kFindingSpritesOnLine, NinthOn(first), most,
                          Range(first, last));
        });
        // Lines that are crowded because of the cursor, for each name that it stands at.
        Lines worst{};
        std::array<int32_t, kScreenHeight> name{};
        for (size_t i = 0; i < cursors_.size(); ++i) {
            Lines lines{};
            Count(cursors_[i], lines);
            for (size_t line = 0; line < lines.size(); ++line) {
                const int all = fixed[line] + lines[line];
                if (lines[line] == 0 || fixed[line] > kSpritesOnLine || all <= worst[line])
                    continue;
                worst[line] = all;
                name[line] = static_cast<int32_t>(i);
            }
        }
        TellLines(worst, [&](int first, int last, int most) {
            findings_.Add(kWarning, TextId::kFindingCursorOnLine, ScreenObject::kCursor,
                          name[static_cast<size_t>(first)] + 1, most, Range(first, last));
        });
    }

    // Calls `tell` for each run of lines with too many: the first and the last line, and the most.
    template <typename Tell>
    static void TellLines(const Lines& lines, Tell tell) {
        for (int line = 0; line < kScreenHeight; ++line) {
            const int first = line;
            int most = 0;
            for (; line < kScreenHeight && lines[static_cast<size_t>(line)] > kSpritesOnLine;
                 ++line)
                most = std::max(most, lines[static_cast<size_t>(line)]);
            if (most != 0) tell(first, line - 1, most);
        }
    }

    static std::u16string Range(int first, int last) {
        return first == last ? FormatText(u"%d", first) : FormatText(u"%d-%d", first, last);
    }

    PlacedSprite NinthOn(int line) const {
        int before = 0;
        for (const ConsoleSprite& sprite : sprites_) {
            if (line < sprite.top || line >= sprite.End()) continue;
            if (before++ == kSpritesOnLine) return {sprite.index};
        }
        return {};
    }

    // The menu moves the sprites on in the console's memory, so that each comes to be in front.
    void CheckOrder() {
        for (size_t i = 1; i < sprites_.size(); ++i) {
            const auto end = sprites_.begin() + static_cast<std::ptrdiff_t>(i);
            const auto other =
                std::find_if(sprites_.begin(), end, [&](const ConsoleSprite& sprite) {
                    return OrderMatters(sprite, sprites_[i], store_);
                });
            if (other == end) continue;
            findings_.Add(kWarning, TextId::kFindingSpritesCross, PlacedSprite{sprites_[i].index},
                          sprites_[i].index + 1, other->index + 1);
        }
    }

    void CheckCursorOrder() {
        CheckPartsOfCursor();
        for (const ConsoleSprite& sprite : sprites_)
            CheckCursorOver(sprite);
    }

    // One pair is enough: moving the cursor puts them all right.
    void CheckPartsOfCursor() {
        const std::vector<ConsoleSprite>& parts = cursors_.front();
        for (size_t i = 1; i < parts.size(); ++i) {
            for (size_t j = 0; j < i; ++j) {
                if (!OrderMatters(parts[j], parts[i], store_)) continue;
                findings_.Add(kWarning, TextId::kFindingCursorPartsCross, ScreenObject::kCursor,
                              parts[j].index + 1, parts[i].index + 1);
                return;
            }
        }
    }

    void CheckCursorOver(const ConsoleSprite& sprite) {
        for (size_t name = 0; name < cursors_.size(); ++name) {
            for (const ConsoleSprite& part : cursors_[name]) {
                if (!OrderMatters(sprite, part, store_)) continue;
                findings_.Add(kWarning, TextId::kFindingCursorCrosses, PlacedSprite{sprite.index},
                              name + 1, sprite.index + 1);
                return;
            }
        }
    }

    void CheckCursorTiles() {
        const std::vector<ConsoleSprite>& parts = cursors_.front();
        const std::span<const TileItem> tiles = CursorTiles(document_);
        const auto isUsed = [](const TileItem& item) { return item.Tile != 0; };
        const bool large = document_.BigCursor != 0;
        const auto used = static_cast<size_t>(std::ranges::count_if(tiles, isUsed));
        if (std::ranges::all_of(parts, &ConsoleSprite::IsBlank) && (!parts.empty() || used == 0)) {
            findings_.Add(kWarning, TextId::kFindingCursorBlank, ScreenObject::kCursor);
        }
        for (size_t i = used; large && i < tiles.size(); ++i) {
            if (isUsed(tiles[i])) {
                findings_.Add(kWarning, TextId::kFindingCursorPartHidden, ScreenObject::kCursor,
                              i + 1);
            }
        }
    }

    const DesignDocument& document_;
    const DesignStore& store_;
    const MenuScreen& screen_;
    FindingList& findings_;
    std::vector<ConsoleSprite> sprites_;
    std::vector<std::vector<ConsoleSprite>> cursors_;  // at each name of a page
};

}  // namespace

void CheckSprites(const CheckedDesign& design, FindingList& findings) {
    SpriteCheck(design, findings).Run();
}

}  // namespace bw
