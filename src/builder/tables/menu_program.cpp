#include "builder/tables/menu_program.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

// Code as text: two hexadecimal digits and a blank for each byte, two points for any byte.
constexpr size_t kLettersOfByte = 3;

// ResetProgram of menu/menu.asm, and the places in it that differ: the address of the values for
// the board's registers, the high byte of the registers' own, and how many they are.
constexpr std::string_view kResetCode =
    "78 D8 A9 00 8D 00 20 8D 02 20 8D 01 20 8D 15 40 8D 05 20 8D 05 20 8D 01 A0 "
    "A9 C0 8D 17 40 A2 00 BD .. .. 9D 00 .. E8 E0 .. D0 F5 A2 FF 9A 20 .. .. 4C .. .. ";
constexpr size_t kValuesPlace = 33;
constexpr size_t kRegistersPlace = 37;
constexpr size_t kCountPlace = 40;

// Where the last bank is seen; its reset vector.
constexpr uint32_t kLastBankAddress = 0xE000;
constexpr uint32_t kResetVector = 0xFFFC;

// MenuSizeData: the registers' values by board and size.
struct SizeValues {
    bool coolgirl;
    uint32_t units;
    std::array<uint8_t, 8> values;
};
constexpr std::array kSizeValues{
    SizeValues{false, 8, {0xC3, 0x80}},
    SizeValues{false, 16, {0x82, 0x80}},
    SizeValues{false, 32, {0x80}},
    SizeValues{true, 8, {0x00, 0x00, 0x78, 0x00, 0x00, 0x00, 0x14, 0x07}},
};

// What shows where the menu has its variables; each stands somewhere in the program's bank.
constexpr std::array<std::string_view, 4> kSigns{
    // UpdatePageEnable: the first item of the page in $53, the redraw under way in $5D
    "A2 01 B5 53 95 .. B5 .. 95 .. CA 10 .. A9 00 85 .. A9 01 85 5D 60 ",
    // OpenGameRecord: the selected item in $57 and $58
    "A5 57 85 .. A5 58 85 .. A2 A0 A0 .. 20 .. .. A0 00 60 ",
    // ProgramBegin: the picture is lit by $1E in $02C1
    "A9 1E 8D C1 02 4C ",
    // SelectGame: the last routine is copied to $01E0
    "A2 00 BD .. .. 9D E0 01 E8 E0 .. D0 F5 4C 00 05 ",
};
// ClearRamProc, which that routine is.
constexpr std::string_view kLastRoutine =
    "A9 00 AA 95 00 9D 00 02 9D 00 03 9D 00 04 9D 00 05 9D 00 06 9D 00 07 E8 D0 .. 6C FC FF ";

constexpr uint32_t DigitValue(char digit) {
    return static_cast<uint32_t>(digit <= '9' ? digit - '0' : digit - 'A' + 10);
}

bool StandsAt(Bytes code, std::string_view text) {
    if (code.size() < text.size() / kLettersOfByte) return false;
    for (size_t i = 0; i < text.size() / kLettersOfByte; ++i) {
        const char* letters = text.data() + i * kLettersOfByte;
        if (letters[0] == '.') continue;
        if (DigitValue(letters[0]) * 16 + DigitValue(letters[1]) != code[i]) return false;
    }
    return true;
}

bool StandsIn(Bytes code, std::string_view text) {
    for (; !code.empty(); code = code.subspan(1)) {
        if (StandsAt(code, text)) return true;
    }
    return false;
}

uint32_t Word(Bytes bytes, size_t at) {
    return bytes[at] | uint32_t{bytes[at + 1]} << 8;
}

// The last bank from a CPU address on; empty if that lies elsewhere.
Bytes From(const CartBank& lastBank, uint32_t address) {
    return Bytes(lastBank).subspan(std::max(address, kLastBankAddress) % kCartBankSize);
}

}  // namespace

std::optional<MenuReset> ReadMenuReset(const CartBank& lastBank) {
    const Bytes code = From(lastBank, Word(From(lastBank, kResetVector), 0));
    if (!StandsAt(code, kResetCode)) return std::nullopt;
    const Bytes values = From(lastBank, Word(code, kValuesPlace));
    const uint32_t count = code[kCountPlace];
    const bool coolgirl = count == 8;
    for (const SizeValues& size : kSizeValues) {
        if (size.coolgirl != coolgirl || values.size() < count || (!coolgirl && count != 4))
            continue;
        if (!std::ranges::equal(values.first(count), Bytes(size.values).first(count))) continue;
        if (coolgirl) return MenuReset{BoardType::kCoolgirl, size.units};
        const bool coolboy = code[kRegistersPlace] == 0x60;
        return MenuReset{coolboy ? BoardType::kCoolboy : BoardType::kMindkids, size.units};
    }
    return std::nullopt;
}

bool IsThisMenuProgram(const CartBank& programBank) {
    return StandsIn(programBank, kLastRoutine) &&
           std::ranges::all_of(kSigns,
                               [&](std::string_view sign) { return StandsIn(programBank, sign); });
}

}  // namespace bw
