// Small games that run: for carts and shelves of thousands of them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "assembler/assembler.h"
#include "assembler/memory_source.h"
#include "common/game_image.h"

namespace bench {

// What a small game is made with. No two numbers give the same data.
struct SmallGame {
    uint32_t number = 0;    // stands for its speed, too: every eighth one stands still
    bool mmc3 = false;      // mapper 4; else none
    uint32_t prgUnits = 1;  // 16 KB; with the mapper 8 and more
    uint32_t chrUnits = 1;  // 8 KB, 1 without the mapper
    bool battery = false;
};

inline constexpr std::string_view kSmallGame = R"asm(
 .INESPRG 1
 .INESCHR 1
 .INESMAP 0
 .INESMIR 1
 .BANK 0
 .ORG $C000
Reset:
 SEI
 CLD
 LDX #0
 STX $2000
 STX $2001
 .IF MMC3
 STX $E000
 STX $A000
.bank
 STX $8000
 LDA Banks,X
 STA $8001
 INX
 CPX #8
 BNE .bank
 LDX #0
 .ENDIF
 JSR Wait
 JSR Wait
 LDA #$3F
 STA $2006
 LDX #0
 STX $2006
.colour
 STX $2007
 INX
 CPX #$20
 BNE .colour
 LDA #$0A
 STA $2001
Loop:
 JSR Wait
 LDA <$10
 CLC
 ADC #SPEED
 STA <$10
 STA $2005
 STA $2005
 JMP Loop
Wait:
 BIT $2002
.wait
 BIT $2002
 BPL .wait
 RTS
Banks:
 .DB 0, 2, 4, 5, 6, 7, 0, 1
 .BANK 1
 .ORG $FFFA
 .DW Reset, Reset, Reset
)asm";

// 16 KB: what lies at the end of the game's PRG.
inline std::string SmallProgram(uint32_t speed, bool mmc3) {
    bw::assembler::MemorySource source;
    source.files["game.asm"] = "SPEED = " + std::to_string(speed) +
                               "\nMMC3 = " + (mmc3 ? "1" : "0") + "\n" + std::string(kSmallGame);
    const auto assembled = bw::assembler::Assemble("game.asm", source);
    if (!assembled.Ok()) throw std::runtime_error(bw::assembler::FormatDiagnostics(assembled));
    return {assembled.rom.begin() + 16, assembled.rom.begin() + 16 + 0x4000};
}

// The image, header and all. `program`: as SmallProgram gives it.
inline std::string SmallImage(const SmallGame& game, std::string program) {
    constexpr size_t kNoise = 0x1000;
    const std::string noise = bw::test::Noise(kNoise, game.number);
    std::string image = "NES\x1A";
    image += static_cast<char>(game.prgUnits);
    image += static_cast<char>(game.chrUnits);
    image += static_cast<char>((game.mmc3 ? 0x40 : 0) | (game.battery ? 2 : 0) | 1);
    image.resize(16);
    while (image.size() < 16 + (game.prgUnits - 1) * size_t{0x4000})
        image += noise;
    image += program.replace(kNoise, kNoise, noise);  // equal programs would share their place
    while (image.size() < 16 + game.prgUnits * size_t{0x4000} + game.chrUnits * size_t{0x2000})
        image += noise;
    return image;
}

}  // namespace bench
