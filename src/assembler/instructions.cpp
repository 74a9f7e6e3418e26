#include "assembler/instructions.h"

#include <array>
#include <cstddef>

namespace bw::assembler {
namespace {

constexpr int16_t kNone = kNoOpcode;

// Rows in the order of Mnemonic, columns in the order of Mode. Source: NESdev wiki, "CPU unofficial
// opcodes" (the table that has the official ones too), checked against the 6502 data sheet.
// clang-format off
constexpr std::array<std::array<int16_t, kModeCount>, kMnemonicCount> kOpcodes = {{
    // impl acc   imm   zp    zp,x  zp,y  abs   abs,x abs,y ind   (,x)  (),y  rel
    {{kNone, kNone, 0x69, 0x65, 0x75, kNone, 0x6D, 0x7D, 0x79, kNone, 0x61, 0x71, kNone}},  // ADC
    {{kNone, kNone, 0x29, 0x25, 0x35, kNone, 0x2D, 0x3D, 0x39, kNone, 0x21, 0x31, kNone}},  // AND
    {{kNone, 0x0A, kNone, 0x06, 0x16, kNone, 0x0E, 0x1E, kNone, kNone, kNone, kNone, kNone}},  // ASL
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0x90}},  // BCC
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0xB0}},  // BCS
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0xF0}},  // BEQ
    {{kNone, kNone, kNone, 0x24, kNone, kNone, 0x2C, kNone, kNone, kNone, kNone, kNone, kNone}},  // BIT
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0x30}},  // BMI
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0xD0}},  // BNE
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0x10}},  // BPL
    {{0x00, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // BRK
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0x50}},  // BVC
    {{kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, 0x70}},  // BVS
    {{0x18, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // CLC
    {{0xD8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // CLD
    {{0x58, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // CLI
    {{0xB8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // CLV
    {{kNone, kNone, 0xC9, 0xC5, 0xD5, kNone, 0xCD, 0xDD, 0xD9, kNone, 0xC1, 0xD1, kNone}},  // CMP
    {{kNone, kNone, 0xE0, 0xE4, kNone, kNone, 0xEC, kNone, kNone, kNone, kNone, kNone, kNone}},  // CPX
    {{kNone, kNone, 0xC0, 0xC4, kNone, kNone, 0xCC, kNone, kNone, kNone, kNone, kNone, kNone}},  // CPY
    {{kNone, kNone, kNone, 0xC6, 0xD6, kNone, 0xCE, 0xDE, kNone, kNone, kNone, kNone, kNone}},  // DEC
    {{0xCA, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // DEX
    {{0x88, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // DEY
    {{kNone, kNone, 0x49, 0x45, 0x55, kNone, 0x4D, 0x5D, 0x59, kNone, 0x41, 0x51, kNone}},  // EOR
    {{kNone, kNone, kNone, 0xE6, 0xF6, kNone, 0xEE, 0xFE, kNone, kNone, kNone, kNone, kNone}},  // INC
    {{0xE8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // INX
    {{0xC8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // INY
    {{kNone, kNone, kNone, kNone, kNone, kNone, 0x4C, kNone, kNone, 0x6C, kNone, kNone, kNone}},  // JMP
    {{kNone, kNone, kNone, kNone, kNone, kNone, 0x20, kNone, kNone, kNone, kNone, kNone, kNone}},  // JSR
    {{kNone, kNone, 0xA9, 0xA5, 0xB5, kNone, 0xAD, 0xBD, 0xB9, kNone, 0xA1, 0xB1, kNone}},  // LDA
    {{kNone, kNone, 0xA2, 0xA6, kNone, 0xB6, 0xAE, kNone, 0xBE, kNone, kNone, kNone, kNone}},  // LDX
    {{kNone, kNone, 0xA0, 0xA4, 0xB4, kNone, 0xAC, 0xBC, kNone, kNone, kNone, kNone, kNone}},  // LDY
    {{kNone, 0x4A, kNone, 0x46, 0x56, kNone, 0x4E, 0x5E, kNone, kNone, kNone, kNone, kNone}},  // LSR
    {{0xEA, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // NOP
    {{kNone, kNone, 0x09, 0x05, 0x15, kNone, 0x0D, 0x1D, 0x19, kNone, 0x01, 0x11, kNone}},  // ORA
    {{0x48, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // PHA
    {{0x08, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // PHP
    {{0x68, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // PLA
    {{0x28, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // PLP
    {{kNone, 0x2A, kNone, 0x26, 0x36, kNone, 0x2E, 0x3E, kNone, kNone, kNone, kNone, kNone}},  // ROL
    {{kNone, 0x6A, kNone, 0x66, 0x76, kNone, 0x6E, 0x7E, kNone, kNone, kNone, kNone, kNone}},  // ROR
    {{0x40, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // RTI
    {{0x60, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // RTS
    {{kNone, kNone, 0xE9, 0xE5, 0xF5, kNone, 0xED, 0xFD, 0xF9, kNone, 0xE1, 0xF1, kNone}},  // SBC
    {{0x38, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // SEC
    {{0xF8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // SED
    {{0x78, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // SEI
    {{kNone, kNone, kNone, 0x85, 0x95, kNone, 0x8D, 0x9D, 0x99, kNone, 0x81, 0x91, kNone}},  // STA
    {{kNone, kNone, kNone, 0x86, kNone, 0x96, 0x8E, kNone, kNone, kNone, kNone, kNone, kNone}},  // STX
    {{kNone, kNone, kNone, 0x84, 0x94, kNone, 0x8C, kNone, kNone, kNone, kNone, kNone, kNone}},  // STY
    {{0xAA, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TAX
    {{0xA8, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TAY
    {{0xBA, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TSX
    {{0x8A, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TXA
    {{0x9A, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TXS
    {{0x98, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone}},  // TYA
}};
// clang-format on

}  // namespace

int Opcode(Mnemonic mnemonic, Mode mode) {
    return kOpcodes[static_cast<size_t>(mnemonic)][static_cast<size_t>(mode)];
}

}  // namespace bw::assembler
