#include "tiles/tile_pack.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>

namespace bw {
namespace {

constexpr size_t kTileSide = 8;
constexpr size_t kTilesPerRow = 16;
constexpr std::string_view kColours = ".#o+";

std::optional<unsigned> ParseNumber(std::string_view text) {
    const bool hex = !text.empty() && text.front() == '$';
    if (hex) text.remove_prefix(1);
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, hex ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

class Packer {
  public:
    Packer(const std::string& name, PatternTables& tables) : name_(name), tables_(tables) {}

    std::vector<std::string> Run(std::string_view text) {
        while (!text.empty()) {
            const size_t end = text.find('\n');
            ++line_;
            TakeLine(text.substr(0, end));
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        if (rowsLeft_ > 0) Fault("the picture lacks " + std::to_string(rowsLeft_) + " lines");
        return std::move(faults_);
    }

  private:
    void Fault(const std::string& what) {
        faults_.push_back(name_ + ":" + std::to_string(line_) + ": " + what);
    }

    void TakeLine(std::string_view line) {
        std::istringstream words{std::string(line.substr(0, line.find(';')))};
        std::vector<std::string> found;
        for (std::string word; words >> word;)
            found.push_back(word);
        if (found.empty()) return;
        if (rowsLeft_ > 0) {
            std::string pixels;
            for (const std::string& word : found)
                pixels += word;
            TakePixels(pixels);
        } else if (found[0] == "tables" && found.size() == 2) {
            TakeTables(found[1]);
        } else if (found[0] == "tiles" && found.size() == 3) {
            TakeTiles(found[1], found[2]);
        } else {
            Fault("expected \"tables WHICH\" or \"tiles NUMBER WIDTHxHEIGHT\"");
        }
    }

    void TakeTables(const std::string& which) {
        background_ = which == "background" || which == "both";
        sprites_ = which == "sprites" || which == "both";
        if (!background_ && !sprites_) {
            Fault("unknown tables \"" + which + "\": background, sprites or both");
        }
    }

    void TakeTiles(const std::string& number, const std::string& size) {
        const size_t cross = std::min(size.find('x'), size.size() - 1);
        const auto first = ParseNumber(number);
        const auto width = ParseNumber(std::string_view(size).substr(0, cross));
        const auto height = ParseNumber(std::string_view(size).substr(cross + 1));
        if (!first || !width || !height) return Fault("expected \"tiles NUMBER WIDTHxHEIGHT\"");
        if (*width == 0 || *height == 0 || *width > kTilesPerRow || *height > kTilesPerRow ||
            *first + *width + (*height - 1) * kTilesPerRow > PatternTables::kTiles) {
            return Fault("the picture leaves the table of 256 tiles");
        }
        first_ = *first;
        width_ = *width;
        rowsLeft_ = *height * kTileSide;
        row_ = 0;
        MarkDrawn(*height);
    }

    void MarkDrawn(size_t height) {
        for (size_t y = 0; y < height; ++y) {
            for (size_t x = 0; x < width_; ++x)
                MarkTile(first_ + x + y * kTilesPerRow);
        }
    }

    void MarkTile(size_t tile) {
        bool twice = false;
        for (const size_t table : {size_t{0}, size_t{1}}) {
            if (!(table == 0 ? background_ : sprites_)) continue;
            bool& drawn = tables_.drawn[table * PatternTables::kTiles + tile];
            twice = twice || drawn;
            drawn = true;
        }
        if (twice) Fault("tile " + std::to_string(tile) + " is drawn a second time");
    }

    void TakePixels(const std::string& pixels) {
        if (pixels.size() != width_ * kTileSide) {
            Fault("expected " + std::to_string(width_ * kTileSide) + " pixels, found " +
                  std::to_string(pixels.size()));
        } else {
            for (size_t x = 0; x < pixels.size(); ++x)
                TakePixel(x, pixels[x]);
        }
        ++row_;
        --rowsLeft_;
    }

    void TakePixel(size_t x, char pixel) {
        const size_t colour = kColours.find(pixel);
        if (colour == std::string_view::npos) {
            return Fault(std::string("unknown pixel '") + pixel + "'");
        }
        const size_t tile = first_ + x / kTileSide + row_ / kTileSide * kTilesPerRow;
        const auto bit = static_cast<uint8_t>(0x80 >> x % kTileSide);
        for (const size_t table : {size_t{0}, size_t{1}}) {
            if (!(table == 0 ? background_ : sprites_)) continue;
            uint8_t* low =
                &tables_.bytes[(table * PatternTables::kTiles + tile) * PatternTables::kTileBytes +
                               row_ % kTileSide];
            if ((colour & 1) != 0) low[0] |= bit;
            if ((colour & 2) != 0) low[kTileSide] |= bit;
        }
    }

    const std::string& name_;
    PatternTables& tables_;
    std::vector<std::string> faults_;
    size_t line_ = 0;
    bool background_ = true;
    bool sprites_ = true;
    size_t first_ = 0;     // of the picture that is being read
    size_t width_ = 0;     // in tiles
    size_t row_ = 0;       // in pixels
    size_t rowsLeft_ = 0;  // in pixels; 0 between pictures
};

}  // namespace

std::vector<std::string> PackTiles(std::string_view text, const std::string& name,
                                   PatternTables& tables) {
    return Packer(name, tables).Run(text);
}

}  // namespace bw
