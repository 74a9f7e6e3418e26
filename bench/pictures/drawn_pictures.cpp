#include "pictures/drawn_pictures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "designer/model/design_store.h"

namespace bw::bench {
namespace {

constexpr int kWidth = 256;
constexpr int kHeight = 240;

struct Rgb {
    double r = 0, g = 0, b = 0;  // 0 to 255

    Rgb operator+(const Rgb& o) const { return {r + o.r, g + o.g, b + o.b}; }
    Rgb operator*(double f) const { return {r * f, g * f, b * f}; }
};

constexpr Rgb FromHex(uint32_t hex) {
    return {double(hex >> 16 & 0xFF), double(hex >> 8 & 0xFF), double(hex & 0xFF)};
}

Rgb Between(const Rgb& from, const Rgb& to, double part) {
    part = std::clamp(part, 0.0, 1.0);
    return from * (1 - part) + to * part;
}
Rgb Between(uint32_t from, uint32_t to, double part) {
    return Between(FromHex(from), FromHex(to), part);
}

// 0 to 1, the same for the same numbers.
double Random(int x, int y, int seed) {
    auto bits = static_cast<uint32_t>(x) * 374761393u + static_cast<uint32_t>(y) * 668265263u +
                static_cast<uint32_t>(seed) * 974711u;
    bits = (bits ^ bits >> 13) * 1274126177u;
    return static_cast<double>((bits ^ bits >> 16) & 0xFFFF) / 0xFFFF;
}

// Random numbers at whole places, smooth between them.
double Noise(double x, double y, int seed) {
    const int column = static_cast<int>(std::floor(x));
    const int row = static_cast<int>(std::floor(y));
    const auto smooth = [](double part) { return part * part * (3 - 2 * part); };
    const double right = smooth(x - column);
    const double down = smooth(y - row);
    const auto line = [&](int at) {
        return std::lerp(Random(column, at, seed), Random(column + 1, at, seed), right);
    };
    return std::lerp(line(row), line(row + 1), down);
}
double Clouds(double x, double y, int seed) {
    double sum = 0;
    for (int octave = 0; octave < 5; ++octave)
        sum += Noise(x * (1 << octave), y * (1 << octave), seed + octave) / (2 << octave);
    return sum;
}

double Away(double x, double y, double fromX, double fromY) {
    return std::hypot(x - fromX, y - fromY);
}

Rgb Sunset(int x, int y) {
    if (y > 170) {
        const double glitter = std::abs(x - 128) < 50 - (y - 170) / 2 + 12 * Random(x / 6, y, 1);
        return Between(0x102850, 0xFFC060,
                       glitter > 0 && Random(x / 5, y / 2, 2) > 0.45 ? 0.9 : 0.1);
    }
    if (Away(x, y, 128, 150) < 34) return Between(0xFFF0A0, 0xFF8030, (y - 116) / 54.0);
    return y < 90 ? Between(0x182060, 0xB04080, y / 90.0)
                  : Between(0xB04080, 0xFFB050, (y - 90) / 80.0);
}

Rgb Village(int x, int y) {
    const double hill = 150 + 18 * std::sin(x / 37.0) + 7 * std::sin(x / 11.0);
    if (x > 70 && x < 130 && y > 150 && y < 200) {  // a house
        if (x > 92 && x < 108 && y > 170) return FromHex(0x603010);
        const bool window = y > 160 && y < 176 && ((x > 76 && x < 88) || (x > 112 && x < 124));
        return FromHex(window                                          ? 0x70C8F8
                       : (y / 6 % 2 == 0 || (x + y / 6 * 5) % 12 != 0) ? 0xE0D0B0
                                                                       : 0xC0A080);
    }
    if (y > 118 && y <= 150 && std::abs(x - 100) < (y - 112))
        return FromHex((x + y) % 9 < 2 ? 0x902020 : 0xC83828);
    for (const int tree : {28, 170, 205, 236}) {
        if (Away(x, y, tree, 158) < 20)
            return FromHex(Away(x, y, tree - 5, 152) < 10 ? 0x60B840 : 0x308030);
        if (std::abs(x - tree) < 4 && y > 158 && y < 205) return FromHex(0x704820);
    }
    if (y > 198) return FromHex(Random(x / 2, y / 2, 3) > 0.8 ? 0x58A838 : 0x409028);
    if (y > hill) return FromHex(0x78C048);
    if (Away(x, y, 214, 36) < 18) return FromHex(0xF8E058);
    if (Noise(x / 30.0, y / 12.0, 4) > 0.72 && y < 90) return FromHex(0xF8F8F8);
    return Between(0x4890E8, 0xA8D8F8, y / 150.0);
}

// 5 by 7 pixels a letter, rows from the top, the leftmost pixel in bit 4.
constexpr std::string_view kLetters = "BANKWEVRSTO1";
constexpr uint8_t kShapes[][7] = {
    {30, 17, 17, 30, 17, 17, 30}, {14, 17, 17, 31, 17, 17, 17}, {17, 25, 21, 19, 17, 17, 17},
    {17, 18, 20, 24, 20, 18, 17}, {17, 17, 17, 21, 21, 27, 17}, {31, 16, 16, 30, 16, 16, 31},
    {17, 17, 17, 17, 17, 10, 4},  {30, 17, 17, 30, 20, 18, 17}, {15, 16, 16, 14, 1, 1, 30},
    {31, 4, 4, 4, 4, 4, 4},       {14, 17, 17, 17, 17, 17, 14}, {4, 12, 4, 4, 4, 4, 14}};

// Whether a pixel is in a word that stands at a place, its letters `scale` times as large.
bool InWord(std::string_view word, int x, int y, int scale) {
    if (x < 0 || y < 0 || y / scale > 6) return false;
    const auto letter = static_cast<size_t>(x / scale / 6);
    const int column = x / scale % 6;
    if (letter >= word.size() || column > 4) return false;
    const size_t shape = kLetters.find(word[letter]);
    return shape != kLetters.npos && (kShapes[shape][y / scale] >> (4 - column) & 1) != 0;
}

Rgb Title(int x, int y) {
    const int line = (y - 110) / 16;
    if (InWord("WEAVER", x - 22, y - 20, 6)) return Between(0xFFF060, 0xF05020, (y - 20) / 42.0);
    if (InWord("WEAVER", x - 25, y - 23, 6)) return FromHex(0x401060);
    if (InWord("BANK", x - 60, y - 72, 4)) return Between(0xA0F0FF, 0x2060E0, (y - 72) / 28.0);
    static constexpr std::string_view kLines[] = {
        "STAR 1", "RAVEN NOTES", "WAR ON STARS", "OAK TREE", "BEAR", "SEVEN STONES", "TWO BEES"};
    if (y >= 110 && line < 7 &&
        InWord(kLines[line], x - 60, (y - 110) % 16, 1 + (line == 2 ? 1 : 0)))
        return FromHex(line == 2 ? 0xF8F8F8 : line % 2 == 0 ? 0x90E060 : 0xF0A0C0);
    return (x / 4 + y / 4) % 8 == 0 ? FromHex(0x203878) : Between(0x101840, 0x182858, y / 240.0);
}

Rgb Mountains(int x, int y) {
    const double ridge = 90 + 60 * Clouds(x / 60.0, 1, 10);
    const double grain = Clouds(x / 14.0, y / 14.0, 20) - 0.5;
    if (y > 190)
        return Between(0x203820, 0x587840, Clouds(x / 9.0, y / 5.0, 30)) +
               FromHex(0x202020) * grain;
    if (y > ridge) {
        const bool snow = y < ridge + 22 + 30 * grain;
        return Between(snow ? 0xD8E0F0 : 0x685850, snow ? 0xF8F8FF : 0x403848,
                       (y - ridge) / 70 + grain);
    }
    return Between(0x5080C0, 0xE8E8F0, 1.6 * Clouds(x / 50.0, y / 25.0, 40) - 0.4);
}

Rgb Spheres(int x, int y) {
    constexpr struct {
        double x, y, r;
        uint32_t colour;
    } kBalls[] = {{86, 110, 60, 0xE04040},
                  {178, 140, 52, 0x40A0E0},
                  {128, 56, 34, 0x60C050},
                  {214, 62, 24, 0xF0C030}};
    for (const auto& ball : kBalls) {
        const double u = (x - ball.x) / ball.r, v = (y - ball.y) / ball.r;
        if (u * u + v * v > 1) continue;
        const double w = std::sqrt(1 - u * u - v * v);
        const double light = std::max(0.0, (-u - v + 1.4 * w) / 2);
        return FromHex(ball.colour) * (0.15 + 0.85 * light) +
               FromHex(0xFFFFFF) * (0.9 * std::pow(light, 24));
    }
    const bool floor = y > 170;
    if (floor)
        return FromHex((x / 16 + y / 12) % 2 == 0 ? 0xC8C0B0 : 0x706860) *
               (0.5 + (y - 170) / 140.0);
    return Between(0x303848, 0x90A0B8, y / 170.0);
}

// Two colours at a time, mixed by a fine pattern as old machines did.
Rgb Patterned(int x, int y) {
    static constexpr uint32_t kRamp[] = {0x000000, 0x24188E, 0x2038EF,
                                         0x5D96FF, 0xC7D7FF, 0xFFFFFF};
    const double height = 2.5 + 1.6 * std::sin(x / 28.0) * std::cos(y / 23.0) + y / 160.0;
    const auto step = static_cast<size_t>(std::clamp(height, 0.0, 4.99));
    static constexpr double kBayer[2][2] = {{0.125, 0.625}, {0.875, 0.375}};
    return FromHex(kRamp[step + (height - double(step) > kBayer[y % 2][x % 2] ? 1 : 0)]);
}

// Tiles and sub-palettes as a console has them, in colours of another emulator.
Rgb Bricks(int x, int y) {
    static constexpr uint32_t kColours[4][4] = {{0x080808, 0xB03020, 0xE88060, 0x602018},
                                                {0x080808, 0x20A030, 0x90E070, 0x085018},
                                                {0x080808, 0x3058E8, 0xA0C8FF, 0x102878},
                                                {0x080808, 0xF0F0F0, 0xA0A0A0, 0x505050}};
    const int block = x / 16 + y / 16 * 16;
    const int palette = y < 48 ? 2 : y >= 192 ? 1 : static_cast<int>(Random(block, 3, 5) * 4);
    const int along = (x + y / 8 % 2 * 8) % 16;  // each row of bricks half a brick further
    const bool cracked = Random((x + y / 8 % 2 * 8) / 16, y / 8, 6) > 0.8;
    int index = along == 15 || y % 8 == 7 ? 0 : along == 0 || y % 8 == 0 ? 2 : 1;
    if (index == 1 && (y % 8 == 6 || along == 14)) index = 3;
    if (index == 1 && cracked && (along + y % 8) % 5 == 0) index = 3;
    return FromHex(kColours[palette][index]);
}

Rgb Grain(int x, int y) {
    const double mood = Clouds(x / 70.0, y / 70.0, 50);
    return Between(0x402838, 0xD0B890, mood * 1.8 - 0.4) +
           Rgb{Random(x, y, 51), Random(x, y, 52), Random(x, y, 53)} * 60;
}

Rgb Wheel(int x, int y) {
    const double away = Away(x, y, 128, 120) / 118;
    if (away > 1) return FromHex(0x808080);
    const double turn = std::atan2(y - 120, x - 128) / (2 * std::numbers::pi) * 6 + 3;
    const auto channel = [&](double at) {
        const double level = std::clamp(std::abs(std::fmod(turn + at + 6, 6.0) - 3) - 1, 0.0, 1.0);
        return 255 * (1 - away * (1 - level));
    };
    return {channel(0), channel(4), channel(2)};
}

Rgb City(int x, int y) {
    const int house = x / 24;
    const double top = 90 + 90 * Random(house, 0, 60);
    if (y < top || x % 24 == 23) {
        if (Random(x, y, 61) > 0.996 && y < 150) return FromHex(0xFFFFFF);
        return Between(0x040418, 0x301048, y / 240.0);
    }
    if (house % 3 == 1 && y - top < 10) return FromHex(house % 2 == 0 ? 0xFF40A0 : 0x40E0E0);
    const bool window = x % 24 % 6 > 1 && x % 24 < 21 && (y - static_cast<int>(top)) % 8 > 3;
    if (!window) return Between(0x101420, 0x202838, Random(house, 1, 62));
    const double lit = Random(x / 6, y / 8, 63);
    return FromHex(lit > 0.75 ? 0xF8D870 : lit > 0.65 ? 0xF8F0D0 : 0x182030);
}

template <typename Draw>
Picture Drawn(Draw draw) {
    Picture picture{.width = kWidth, .height = kHeight, .pixels = {}};
    const auto channel = [](double value) {
        return static_cast<uint32_t>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const Rgb colour = draw(x, y);
            picture.pixels.push_back(channel(colour.r) << 16 | channel(colour.g) << 8 |
                                     channel(colour.b));
        }
    return picture;
}

}  // namespace

std::array<DrawnPicture, 10> DrawnPictures() {
    return {{{"sunset", Drawn(Sunset)},
             {"village", Drawn(Village)},
             {"title", Drawn(Title)},
             {"mountains", Drawn(Mountains)},
             {"spheres", Drawn(Spheres)},
             {"patterned", Drawn(Patterned)},
             {"bricks", Drawn(Bricks)},
             {"grain", Drawn(Grain)},
             {"wheel", Drawn(Wheel)},
             {"city", Drawn(City)}}};
}

}  // namespace bw::bench
