#include <algorithm>
#include <map>
#include <optional>

#include "designer/files/design_text.h"
#include "designer/files/design_words.h"
#include "designer/model/design_chunks.h"
#include "designer/model/design_records.h"
#include "support/numbers.h"

namespace bw {
namespace {

constexpr size_t kShortestScreen = 8;  // items; fewer are told one by one
constexpr size_t kRowBytes = 16;
constexpr size_t kAttributeRow = 8;

std::string Hex(uint8_t byte) {
    std::string text;
    AppendHex(text, byte, 2);
    return text;
}

std::string HexWords(std::span<const uint8_t> bytes) {
    std::string text;
    for (const uint8_t byte : bytes)
        text += ' ' + Hex(byte);
    return text;
}

std::string Numbers(int32_t x, int32_t y) {
    return ' ' + std::to_string(x) + ' ' + std::to_string(y);
}

std::string Option(std::string_view name, uint32_t value, uint32_t usual) {
    return value == usual ? std::string() : ' ' + std::string(name) + '=' + std::to_string(value);
}

std::string FlagWords(uint8_t flags) {
    if (flags > 7) return Option("flags", flags, 0);
    std::string words;
    if ((flags & TileItem::kFlipVertically) != 0) words += " flip-v";
    if ((flags & TileItem::kFlipHorizontally) != 0) words += " flip-h";
    if ((flags & TileItem::kBehindBackground) != 0) words += " behind";
    return words;
}

std::string ItemWords(const TileItem& item, uint32_t usualIndex) {
    return Numbers(item.X, item.Y) + ' ' + Hex(item.Tile) + Option("palette", item.Palette, 0) +
           FlagWords(item.Flags) + Option("index", item.Index, usualIndex) +
           Option("selected", item.Selected, 0) + Option("reserved", item.Reserved, 0);
}

bool HasUsualHeader(const ChunkView& chunk) {
    return chunk.reserved == 0 && chunk.version == 1;
}

std::optional<TileItem> WholeItem(const ChunkView& chunk) {
    if (!HasUsualHeader(chunk) || chunk.payload.size() != TileItem::kStoredSize) {
        return std::nullopt;
    }
    return ReadTileItem(chunk.payload.first<TileItem::kStoredSize>());
}

class Describer {
  public:
    explicit Describer(std::span<const ChunkView> chunks) : chunks_(chunks) {}

    DesignText Run() {
        result_.text =
            "# A menu screen. See docs/designs.md and docs/formats.md of Bankweaver.\n\n";
        for (size_t at = 0; at < chunks_.size();) {
            const size_t run = ScreenLength(at);
            if (run >= kShortestScreen) {
                Screen(at, run);
            } else {
                Statement(chunks_[at]);
            }
            at += run >= kShortestScreen ? run : 1;
        }
        return std::move(result_);
    }

  private:
    static constexpr auto kTile = static_cast<uint32_t>(ChunkType::kBkgTile);

    // The number that an item of the list is expected to have.
    uint32_t Counted(uint32_t type) const {
        const auto count = counts_.find(type);
        return count == counts_.end() ? 0 : count->second;
    }

    // How many chunks from here on are items of one picture: a cell each, rows from the top.
    size_t ScreenLength(size_t first) const {
        int32_t lastCell = -1;
        size_t at = first;
        for (; at < chunks_.size() && chunks_[at].type == kTile; ++at) {
            const auto item = WholeItem(chunks_[at]);
            if (!item || item->X < 0 || item->X >= kScreenColumns || item->Y < 0 ||
                item->Y >= kScreenRows) {
                break;
            }
            const TileItem plain{.Index = Counted(kTile) + static_cast<uint32_t>(at - first),
                                 .X = item->X,
                                 .Y = item->Y,
                                 .Tile = item->Tile};
            const int32_t cell = item->Y * kScreenColumns + item->X;
            if (*item != plain || cell <= lastCell) break;
            lastCell = cell;
        }
        return at - first;
    }

    void Screen(size_t first, size_t count) {
        result_.text += "screen\n";
        size_t at = first;
        for (int32_t row = 0; row < kScreenRows; ++row) {
            std::string line = "   ";
            for (int32_t column = 0; column < kScreenColumns; ++column) {
                const auto item = at < first + count ? WholeItem(chunks_[at]) : std::nullopt;
                const bool here = item && item->X == column && item->Y == row;
                line += here ? ' ' + Hex(item->Tile) : " ..";
                at += here ? 1 : 0;
            }
            result_.text += line + '\n';
        }
        counts_[kTile] += static_cast<uint32_t>(count);
    }

    void Statement(const ChunkView& chunk) {
        std::optional<std::string> words;
        if (HasUsualHeader(chunk)) words = Words(chunk);
        result_.text += words ? *words : ExactWords(chunk);
        result_.text += '\n';
        ++counts_[chunk.type];
    }

    static std::string ExactWords(const ChunkView& chunk) {
        return "chunk " + std::to_string(chunk.type) + Option("reserved", chunk.reserved, 0) +
               Option("version", chunk.version, 1) + HexWords(chunk.payload);
    }

    std::optional<std::string> Item(const ChunkView& chunk, std::string_view name) const {
        const auto item = WholeItem(chunk);
        if (!item) return std::nullopt;
        const bool single = chunk.type == static_cast<uint32_t>(ChunkType::kArrowTile);
        return std::string(name) + ItemWords(*item, single ? 0 : Counted(chunk.type));
    }

    static std::optional<std::string> Place(const ChunkView& chunk, std::string_view name) {
        if (chunk.payload.size() != Pos::kStoredSize) return std::nullopt;
        const Pos place = ReadStoredPos(chunk.payload.first<Pos::kStoredSize>());
        return std::string(name) + Numbers(place.X, place.Y);
    }

    static std::optional<std::string> Rows(const ChunkView& chunk, std::string_view name,
                                           size_t size, size_t rowSize) {
        if (chunk.payload.size() != size) return std::nullopt;
        std::string text(name);
        for (size_t at = 0; at < size; at += rowSize) {
            text += "\n   " + HexWords(chunk.payload.subspan(at, rowSize));
        }
        return text;
    }

    static std::optional<std::string> Palette(const ChunkView& chunk, std::string_view name) {
        if (chunk.payload.size() != kPaletteSize) return std::nullopt;
        return std::string(name) + HexWords(chunk.payload);
    }

    static std::optional<std::string> Switch(const ChunkView& chunk, std::string_view name) {
        if (chunk.payload.size() != 1) return std::nullopt;
        return std::string(name) + ' ' + std::to_string(chunk.payload[0]);
    }

    static std::optional<std::string> Caption(const ChunkView& chunk) {
        std::u16string text;
        if (ReadText(chunk, text)) return std::nullopt;
        return "caption " + Quoted(text);
    }

    static std::optional<std::string> Text(const ChunkView& chunk) {
        TextItem item;
        if (ReadTextItem(chunk, item)) return std::nullopt;
        if (!std::ranges::equal(StoredTextItem(item), chunk.payload)) return std::nullopt;
        return "text" + Numbers(item.X, item.Y) + ' ' + Quoted(item.Text);
    }

    // The pictures exist once; tables behind the first are told as bytes.
    std::optional<std::string> Tiles(const ChunkView& chunk) {
        if (chunk.payload.size() != kChrDataSize || !result_.tiles.empty()) return std::nullopt;
        result_.tiles = chunk.payload;
        return "tiles " + std::string(kBackgroundPicture) + ' ' + std::string(kSpritesPicture);
    }

    // The statement that says the chunk exactly, if there is one.
    std::optional<std::string> Words(const ChunkView& chunk) {
        switch (static_cast<ChunkType>(chunk.type)) {
            case ChunkType::kAttributes:
                return Rows(chunk, "attributes", kAttributeSize, kAttributeRow);
            case ChunkType::kBkgPalette:
                return Palette(chunk, "background-palette");
            case ChunkType::kSpritePalette:
                return Palette(chunk, "sprite-palette");
            case ChunkType::kChrData:
                return Tiles(chunk);
            case ChunkType::kCustomText:
                return Text(chunk);
            case ChunkType::kCaptionText:
                return Caption(chunk);
            case ChunkType::kCaptionPos:
                return Place(chunk, "caption-position");
            case ChunkType::kPageNumberPos:
                return Place(chunk, "page-number-position");
            case ChunkType::kItemPos:
                return Place(chunk, "items-position");
            case ChunkType::kBkgTile:
                return Item(chunk, "tile");
            case ChunkType::kSpriteTile:
                return Item(chunk, "sprite");
            case ChunkType::kArrowTile:
                return Item(chunk, "cursor");
            case ChunkType::kArrowTileItem:
                return Item(chunk, "large-cursor-tile");
            case ChunkType::kCharMapData:
                return Rows(chunk, "characters", kCharMapSize, kRowBytes);
            case ChunkType::kBigCursor:
                return Switch(chunk, "large-cursor");
            case ChunkType::kBigSprite:
                return Switch(chunk, "tall-sprites");
        }
        return std::nullopt;
    }

    std::span<const ChunkView> chunks_;
    std::map<uint32_t, uint32_t> counts_;  // chunks of each type so far
    DesignText result_;
};

}  // namespace

DesignText DescribeDesign(std::span<const ChunkView> chunks) {
    return Describer(chunks).Run();
}

}  // namespace bw
