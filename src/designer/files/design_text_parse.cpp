#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

#include "designer/files/design_text.h"
#include "designer/files/design_words.h"
#include "designer/model/design_chunks.h"
#include "designer/model/design_records.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr size_t kRowBytes = 16;
constexpr size_t kAttributeRow = 8;
constexpr std::string_view kEmptyCell = "..";

template <typename Number>
bool ReadNumber(std::string_view word, Number& value, int base = 10) {
    const char* const end = word.data() + word.size();
    const auto [stopped, error] = std::from_chars(word.data(), end, value, base);
    return error == std::errc() && stopped == end;
}

bool ReadHexByte(std::string_view word, uint8_t& value) {
    return word.size() == 2 && ReadNumber(word, value, 16);
}

// A file beside the text, and no way out of its folder.
bool IsPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\:") == std::string_view::npos;
}

class Parser {
  public:
    Parser(std::string_view text, const PictureReader& readPicture)
        : lines_(text), readPicture_(readPicture) {}

    std::optional<Diagnostic> Run(std::vector<uint8_t>& bytes) {
        while (Next()) {
            if (!Statement()) break;
        }
        if (problem_.empty() && lines_.Problem().empty() && !isDesign_) {
            Fail("nothing in the text belongs to a design");
        }
        if (problem_.empty() && lines_.Problem().empty()) {
            bytes = std::move(bytes_);
            return std::nullopt;
        }
        return Diagnostic{Severity::kError,
                          ToWide(problem_.empty() ? lines_.Problem() : problem_),
                          {.line = static_cast<uint32_t>(std::max<size_t>(lines_.Number(), 1))}};
    }

  private:
    bool Fail(std::string problem) {
        problem_ = std::move(problem);
        return false;
    }
    bool Next() {
        auto words = lines_.Next();
        at_ = 0;
        words_ = words ? std::move(*words) : std::vector<DesignWord>();
        return words.has_value();
    }

    // The words of the line, one after the other.
    bool AtEnd() const { return at_ == words_.size(); }
    bool Word(std::string_view& word, std::string_view what) {
        if (AtEnd()) return Fail("the line ends, " + std::string(what) + " was expected");
        if (words_[at_].quoted) {
            return Fail(std::string(what) + " was expected instead of a quoted text");
        }
        word = words_[at_++].text;
        return true;
    }
    bool FailAt(std::string_view word, std::string_view what) {
        return Fail('"' + std::string(word) + "\" was found, " + std::string(what) +
                    " was expected");
    }
    bool HexByte(uint8_t& value) {
        static constexpr std::string_view kWhat = "a byte of two hexadecimal digits";
        std::string_view word;
        return Word(word, kWhat) && (ReadHexByte(word, value) || FailAt(word, kWhat));
    }
    template <typename Number>
    bool WholeNumber(Number& value, std::string_view what) {
        std::string_view word;
        return Word(word, what) && (ReadNumber(word, value) || FailAt(word, what));
    }
    bool Place(int32_t& x, int32_t& y) {
        return WholeNumber(x, "a column (a whole number)") &&
               WholeNumber(y, "a row (a whole number)");
    }
    bool Text(std::u16string& text) {
        if (AtEnd() || !words_[at_].quoted) return Fail("a text in double quotes was expected");
        const auto unquoted = Unquoted(words_[at_++].text);
        if (!unquoted) {
            return Fail(
                "the text isn't UTF-8, or a backslash in it is followed by something else "
                "than \", \\ or u and four hexadecimal digits");
        }
        text = *unquoted;
        return true;
    }
    bool End() {
        if (AtEnd()) return true;
        return Fail('"' + std::string(words_[at_].text) + "\" is left over at the line's end");
    }

    bool Add(uint32_t type, std::span<const uint8_t> payload, uint32_t reserved = 0,
             uint32_t version = 1) {
        // What couldn't be read again is refused here, where its line is known.
        if (const auto fault = ApplyChunk({.type = type, .payload = payload}, read_)) {
            return Fail(ToUtf8(FaultReason(*fault, Language::kEnglish)));
        }
        AppendChunk(bytes_, type, payload, reserved, version);
        ++counts_[type];
        isDesign_ |= IsDesignChunk(type);
        return true;
    }
    bool Add(ChunkType type, std::span<const uint8_t> payload) {
        return Add(static_cast<uint32_t>(type), payload);
    }

    bool Option(std::string_view word, TileItem& item) {
        static constexpr std::string_view kWhat =
            "flip-v, flip-h, behind, or index=, selected=, palette=, flags= or reserved= with a "
            "number";
        const size_t sign = word.find('=');
        const std::string_view name = word.substr(0, sign);
        if (sign == std::string_view::npos) {
            const uint8_t flag = name == "flip-v"   ? TileItem::kFlipVertically
                                 : name == "flip-h" ? TileItem::kFlipHorizontally
                                 : name == "behind" ? TileItem::kBehindBackground
                                                    : uint8_t{0};
            item.Flags |= flag;
            return flag != 0 || FailAt(word, kWhat);
        }
        const std::string_view value = word.substr(sign + 1);
        uint8_t flags = 0;
        const bool known = name == "index"      ? ReadNumber(value, item.Index)
                           : name == "selected" ? ReadNumber(value, item.Selected)
                           : name == "palette"  ? ReadNumber(value, item.Palette)
                           : name == "reserved" ? ReadNumber(value, item.Reserved)
                           : name == "flags"    ? ReadNumber(value, flags)
                                                : false;
        item.Flags |= flags;
        return known || FailAt(word, kWhat);
    }
    bool Item(ChunkType type) {
        const bool single = type == ChunkType::kArrowTile;
        TileItem item{.Index = single ? 0 : counts_[static_cast<uint32_t>(type)]};
        if (!Place(item.X, item.Y) || !HexByte(item.Tile)) return false;
        while (!AtEnd()) {
            std::string_view word;
            if (!Word(word, "an option") || !Option(word, item)) return false;
        }
        return AddItem(type, item);
    }
    bool AddItem(ChunkType type, const TileItem& item) { return Add(type, StoredTile(item)); }

    // The next row of a block: `count` words.
    bool Row(std::string_view block, size_t row, size_t count) {
        const std::string name = "row " + std::to_string(row) + " of " + std::string(block);
        if (!Next()) {
            return Fail(lines_.Problem().empty() ? "the text ends before " + name
                                                 : lines_.Problem());
        }
        if (words_.size() == count) return true;
        return Fail(name + " has " + std::to_string(words_.size()) + " words, " +
                    std::to_string(count) + " were expected");
    }
    bool Screen() {
        if (!End()) return false;
        for (int32_t y = 0; y < kScreenRows; ++y) {
            if (!Row("the screen", static_cast<size_t>(y) + 1, kScreenColumns)) return false;
            for (int32_t x = 0; x < kScreenColumns; ++x) {
                if (words_[at_].text == kEmptyCell && !words_[at_].quoted) {
                    ++at_;
                    continue;
                }
                TileItem item{
                    .Index = counts_[static_cast<uint32_t>(ChunkType::kBkgTile)], .X = x, .Y = y};
                if (!HexByte(item.Tile) || !AddItem(ChunkType::kBkgTile, item)) return false;
            }
        }
        return true;
    }
    bool Rows(ChunkType type, std::string_view name, size_t size, size_t rowSize) {
        std::vector<uint8_t> table;
        if (!End()) return false;
        while (table.size() < size) {
            if (!Row(name, table.size() / rowSize + 1, rowSize)) return false;
            if (!HexBytes(rowSize, table)) return false;
        }
        return Add(type, table);
    }
    bool HexBytes(size_t count, std::vector<uint8_t>& bytes) {
        for (size_t i = 0; i < count; ++i) {
            bytes.push_back(0);
            if (!HexByte(bytes.back())) return false;
        }
        return true;
    }
    bool Palette(ChunkType type) {
        std::vector<uint8_t> colours;
        return HexBytes(kPaletteSize, colours) && End() && Add(type, colours);
    }
    bool Position(ChunkType type) {
        Pos place;
        return Place(place.X, place.Y) && End() && Add(type, StoredPos(place));
    }
    bool Switch(ChunkType type) {
        uint8_t value = 0;
        return WholeNumber(value, "a number from 0 to 255") && End() && Add(type, {&value, 1});
    }
    bool TextFits(const std::u16string& text) {
        const size_t most = kLongestStoredText / 2;
        return text.size() <= most ||
               Fail("the text has " + std::to_string(text.size()) + " characters, at most " +
                    std::to_string(most) + " were expected");
    }
    bool Caption() {
        std::u16string text;
        return Text(text) && End() && TextFits(text) &&
               Add(ChunkType::kCaptionText, StoredText(text));
    }
    bool PlacedText() {
        TextItem item;
        return Place(item.X, item.Y) && Text(item.Text) && End() && TextFits(item.Text) &&
               Add(ChunkType::kCustomText, StoredTextItem(item));
    }
    bool Tiles() {
        std::vector<uint8_t> tables(kChrDataSize);
        const auto halves = std::span(tables);
        for (const auto half : {halves.first(kChrDataSize / 2), halves.last(kChrDataSize / 2)}) {
            if (AtEnd()) return Fail("the line ends, the name of a picture was expected");
            const std::string name(words_[at_++].text);
            if (!IsPlainName(name)) {
                return Fail('"' + name + "\" is no name of a file beside the text");
            }
            if (auto problem = readPicture_(name, half)) return Fail(std::move(*problem));
        }
        return End() && Add(ChunkType::kChrData, tables);
    }
    bool Chunk() {
        uint32_t type = 0;
        uint32_t reserved = 0;
        uint32_t version = 1;
        if (!WholeNumber(type, "a type (a whole number)")) return false;
        while (!AtEnd() && words_[at_].text.find('=') != std::string_view::npos) {
            const std::string_view word = words_[at_++].text;
            const std::string_view value = word.substr(word.find('=') + 1);
            const bool known = word.starts_with("reserved=")  ? ReadNumber(value, reserved)
                               : word.starts_with("version=") ? ReadNumber(value, version)
                                                              : false;
            if (!known) return FailAt(word, "reserved= or version= with a number");
        }
        std::vector<uint8_t> payload;
        return HexBytes(words_.size() - at_, payload) && Add(type, payload, reserved, version);
    }

    bool Statement() {
        std::string_view name;
        if (!Word(name, "a statement")) return false;
        if (name == "screen") return Screen();
        if (name == "tile") return Item(ChunkType::kBkgTile);
        if (name == "sprite") return Item(ChunkType::kSpriteTile);
        if (name == "cursor") return Item(ChunkType::kArrowTile);
        if (name == "large-cursor-tile") return Item(ChunkType::kArrowTileItem);
        if (name == "characters") {
            return Rows(ChunkType::kCharMapData, name, kCharMapSize, kRowBytes);
        }
        if (name == "attributes") {
            return Rows(ChunkType::kAttributes, name, kAttributeSize, kAttributeRow);
        }
        if (name == "background-palette") return Palette(ChunkType::kBkgPalette);
        if (name == "sprite-palette") return Palette(ChunkType::kSpritePalette);
        if (name == "caption-position") return Position(ChunkType::kCaptionPos);
        if (name == "page-number-position") return Position(ChunkType::kPageNumberPos);
        if (name == "items-position") return Position(ChunkType::kItemPos);
        if (name == "caption") return Caption();
        if (name == "text") return PlacedText();
        if (name == "tiles") return Tiles();
        if (name == "large-cursor") return Switch(ChunkType::kBigCursor);
        if (name == "tall-sprites") return Switch(ChunkType::kBigSprite);
        if (name == "chunk") return Chunk();
        return FailAt(name, "a statement");
    }

    DesignLines lines_;
    const PictureReader& readPicture_;
    std::vector<DesignWord> words_;
    size_t at_ = 0;
    std::map<uint32_t, uint32_t> counts_;  // chunks of each type so far
    std::vector<uint8_t> bytes_;
    DesignDocument read_;  // what a reader makes of the bytes
    bool isDesign_ = false;
    std::string problem_;
};

}  // namespace

std::optional<Diagnostic> ParseDesign(std::string_view text, const PictureReader& readPicture,
                                      std::vector<uint8_t>& bytes) {
    return Parser(text, readPicture).Run(bytes);
}

}  // namespace bw
