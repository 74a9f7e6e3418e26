#pragma once

#include <cstdint>

namespace bw::assembler {

enum class Mode : uint8_t {
    Implied,
    Accumulator,
    Immediate,
    ZeroPage,
    ZeroPageX,
    ZeroPageY,
    Absolute,
    AbsoluteX,
    AbsoluteY,
    Indirect,
    IndirectX,
    IndirectY,
    Relative,
};
inline constexpr int kModeCount = 13;

// The 56 official instructions, in alphabetical order.
enum class Mnemonic : uint8_t {
    ADC,
    AND,
    ASL,
    BCC,
    BCS,
    BEQ,
    BIT,
    BMI,
    BNE,
    BPL,
    BRK,
    BVC,
    BVS,
    CLC,
    CLD,
    CLI,
    CLV,
    CMP,
    CPX,
    CPY,
    DEC,
    DEX,
    DEY,
    EOR,
    INC,
    INX,
    INY,
    JMP,
    JSR,
    LDA,
    LDX,
    LDY,
    LSR,
    NOP,
    ORA,
    PHA,
    PHP,
    PLA,
    PLP,
    ROL,
    ROR,
    RTI,
    RTS,
    SBC,
    SEC,
    SED,
    SEI,
    STA,
    STX,
    STY,
    TAX,
    TAY,
    TSX,
    TXA,
    TXS,
    TYA,
};
inline constexpr int kMnemonicCount = 56;

inline constexpr int kNoOpcode = -1;

// The opcode byte, or kNoOpcode where the processor has no such form.
int Opcode(Mnemonic mnemonic, Mode mode);

inline bool HasMode(Mnemonic mnemonic, Mode mode) {
    return Opcode(mnemonic, mode) != kNoOpcode;
}

}  // namespace bw::assembler
