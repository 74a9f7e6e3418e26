#include "console/contact_sheet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "builder/resources.h"
#include "designer/files/png_file.h"
#include "designer/pictures/surface.h"
#include "designer/pictures/tile_image.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr Colour kBackground = 0x16181D;
constexpr Colour kEmptyPlace = 0x33363D;
constexpr Colour kEdge = 0x2A2D34;
constexpr Colour kNumberInk = 0x8A919E;
constexpr Colour kNameInk = 0xE6E8EC;
constexpr Colour kErrorInk = 0xFF4D4D;
constexpr Colour kNoteInk = 0xFFB02E;

constexpr size_t kLargestFullSize = 20;  // games; more are shown at half size
constexpr double kShape = 1.5;           // width to height of the sheet
constexpr int kGap = 8;                  // pixels around a place and its text
constexpr int kFrame = 3;
constexpr int kLine = kTilePixels + 3;  // height of a line of text

int Whole(uint32_t value) {
    return static_cast<int>(value);
}

bool IsWhole(const ConsolePicture& picture) {
    return picture.pixels.size() == size_t{ConsolePicture::kWidth} * ConsolePicture::kHeight;
}

// Text in the tiles of the menu's own font.
class Lettering {
  public:
    void Draw(Surface& target, Point at, std::u16string_view text, Colour ink) const {
        for (const char16_t unit : text) {
            const Point tile = PlaceOf(unit);
            for (int y = 0; y < kTilePixels; ++y) {
                for (int x = 0; x < kTilePixels; ++x) {
                    if (font_.At({tile.x + x, tile.y + y}) == 0) continue;
                    target.At({at.x + x, at.y + y}) = ink;
                }
            }
            at.x += kTilePixels;
        }
    }

  private:
    // The font has the characters from the space to the underscore.
    static Point PlaceOf(char16_t unit) {
        const char16_t capital = AsciiUpper(unit);
        const int code = capital >= u' ' && capital <= u'_' ? capital : u'?';
        return {code % kTilesInRow * kTilePixels, code / kTilesInRow * kTilePixels};
    }

    Surface font_ = MakeFontImage(DefaultTileSet().first<kChrDataSize>());
};

// How the games lie on the sheet, in pixels.
struct Layout {
    explicit Layout(size_t games) : step(games <= kLargestFullSize ? 1 : 2) {
        width = Whole(ConsolePicture::kWidth) / step;
        height = Whole(ConsolePicture::kHeight) / step;
        nameLines = step;  // a narrow one goes on in a second line
        const double cells = static_cast<double>(std::max<size_t>(games, 1));
        const double wanted = std::sqrt(cells * kShape * CellHeight() / CellWidth());
        columns = std::clamp(static_cast<int>(std::lround(wanted)), 1, static_cast<int>(cells));
        rows = (static_cast<int>(cells) + columns - 1) / columns;
    }
    int CellWidth() const { return width + 2 * kFrame + kGap; }
    int CellHeight() const { return height + 2 * kFrame + (nameLines + 1) * kLine + 2 * kGap; }
    int SheetWidth() const { return columns * CellWidth() + kGap; }
    int Letters() const { return width / kTilePixels; }

    int step;  // pixels of the console for one of the sheet, each way
    int width = 0;
    int height = 0;
    int nameLines = 1;
    int columns = 1;
    int rows = 1;
};

void FillRect(Surface& target, Point at, int width, int height, Colour colour) {
    for (int y = 0; y < height; ++y)
        std::fill_n(target.From({at.x, at.y + y}), width, colour);
}

// The mean colour of step by step pixels.
Colour MeanColour(const ConsolePicture& picture, int x, int y, int step) {
    std::array<uint32_t, 3> sums{};
    for (int dy = 0; dy < step; ++dy) {
        for (int dx = 0; dx < step; ++dx) {
            const int at = (y * step + dy) * Whole(ConsolePicture::kWidth) + x * step + dx;
            const uint32_t pixel = picture.pixels[static_cast<size_t>(at)];
            for (size_t part = 0; part < sums.size(); ++part)
                sums[part] += pixel >> (8 * part) & 0xFF;
        }
    }
    const auto count = static_cast<uint32_t>(step * step);
    Colour mean = 0;
    for (size_t part = 0; part < sums.size(); ++part)
        mean |= (sums[part] + count / 2) / count << (8 * part);
    return mean;
}

// "BLACK, TILES".
std::u16string KindsOf(const CheckedGame& game) {
    std::u16string text;
    std::vector<FindingKind> named;
    for (const CheckFinding& finding : game.findings) {
        if (std::ranges::find(named, finding.kind) != named.end()) continue;
        named.push_back(finding.kind);
        text += text.empty() ? u"" : u", ";
        text += ToWide(FindingKindName(finding.kind));
    }
    return text;
}

// Cut to the width, the cut shown.
std::u16string_view Fitting(std::u16string& text, int letters) {
    const auto room = static_cast<size_t>(letters);
    if (text.size() > room) text = text.substr(0, room - 2) + u"..";
    return text;
}

class CellPainter {
  public:
    CellPainter(const Layout& layout, const Lettering& letters)
        : layout_(layout), letters_(letters) {}

    void Draw(Surface& target, Point corner, const CheckedGame& game) const {
        const bool error = game.HasErrors();
        const Colour mark = error ? kErrorInk : kNoteInk;
        const bool marked = error || !game.findings.empty();
        FillRect(target, corner, layout_.width + 2 * kFrame, layout_.height + 2 * kFrame,
                 marked ? mark : kEdge);
        const Point place{corner.x + kFrame, corner.y + kFrame};
        if (IsWhole(game.picture)) {
            DrawPicture(target, place, game.picture);
        } else {
            FillRect(target, place, layout_.width, layout_.height, kEmptyPlace);
        }
        Point line{place.x, place.y + layout_.height + kFrame + kGap / 2};
        line.y = DrawName(target, line, game);
        std::u16string kinds = KindsOf(game);
        if (kinds.empty() && !game.notRun.empty()) kinds = u"not run";
        letters_.Draw(target, line, Fitting(kinds, layout_.Letters()), marked ? mark : kNumberInk);
    }

  private:
    void DrawPicture(Surface& target, Point place, const ConsolePicture& picture) const {
        for (int y = 0; y < layout_.height; ++y) {
            for (int x = 0; x < layout_.width; ++x)
                target.At({place.x + x, place.y + y}) = MeanColour(picture, x, y, layout_.step);
        }
    }
    // Gives the place below the last line.
    int DrawName(Surface& target, Point line, const CheckedGame& game) const {
        const std::u16string number = ToWide(std::to_string(game.index + 1));
        std::u16string text = number + u' ' + game.name;
        std::u16string_view rest = Fitting(text, layout_.Letters() * layout_.nameLines);
        const auto room = static_cast<size_t>(layout_.Letters());
        letters_.Draw(target, line, rest.substr(0, room), kNameInk);
        letters_.Draw(target, line, number, kNumberInk);
        for (line.y += kLine; rest.size() > room; line.y += kLine) {
            rest.remove_prefix(room);
            letters_.Draw(target, line, rest.substr(0, room), kNameInk);
        }
        return line.y;
    }

    const Layout& layout_;
    const Lettering& letters_;
};

void AppendSamples(std::vector<uint8_t>& samples, const Surface& surface) {
    for (const Colour colour : surface.Pixels()) {
        for (const int shift : {16, 8, 0})
            samples.push_back(static_cast<uint8_t>(colour >> shift));
    }
}

FileResult<> WritePng(const std::filesystem::path& file, uint32_t width,
                      const std::vector<uint8_t>& samples) {
    if (width == 0) return ProblemOf(file, std::errc::invalid_argument);
    const auto height = static_cast<uint32_t>(samples.size() / 3 / width);
    const std::vector<uint8_t> png = EncodePng(width, height, samples);
    if (png.empty()) return ProblemOf(file, std::errc::not_enough_memory);
    return WriteFile(file, png);
}

}  // namespace

// One row of games at a time is a surface; a thousand games make a sheet of 70 MB.
FileResult<> WriteContactSheet(std::span<const CheckedGame> games,
                               const std::filesystem::path& file) {
    const Layout layout(games.size());
    const Lettering letters;
    const CellPainter painter(layout, letters);
    std::vector<uint8_t> samples;
    AppendSamples(samples, Surface(layout.SheetWidth(), kGap, kBackground));
    Surface row(layout.SheetWidth(), layout.CellHeight());
    for (size_t first = 0; first < games.size(); first += static_cast<size_t>(layout.columns)) {
        row.Fill(kBackground);
        Point corner{kGap, 0};
        for (const CheckedGame& game : games.subspan(first).first(
                 std::min<size_t>(games.size() - first, static_cast<size_t>(layout.columns)))) {
            painter.Draw(row, corner, game);
            corner.x += layout.CellWidth();
        }
        AppendSamples(samples, row);
    }
    return WritePng(file, static_cast<uint32_t>(layout.SheetWidth()), samples);
}

FileResult<> WritePicture(const ConsolePicture& picture, uint32_t scale,
                          const std::filesystem::path& file) {
    if (!IsWhole(picture) || scale == 0) return ProblemOf(file, std::errc::invalid_argument);
    std::vector<uint8_t> samples;
    for (uint32_t y = 0; y < ConsolePicture::kHeight * scale; ++y) {
        for (uint32_t x = 0; x < ConsolePicture::kWidth * scale; ++x) {
            const uint32_t pixel = picture.pixels[y / scale * ConsolePicture::kWidth + x / scale];
            for (const int shift : {16, 8, 0})
                samples.push_back(static_cast<uint8_t>(pixel >> shift));
        }
    }
    return WritePng(file, ConsolePicture::kWidth * scale, samples);
}

}  // namespace bw
