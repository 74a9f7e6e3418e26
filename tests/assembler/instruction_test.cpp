#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "memory_source.h"

namespace bw::assembler {
namespace {

// The processor's opcode matrix, sixteen to a row, `-` where there is no official instruction.
// Typed from the matrix of the MCS6500 family programming manual, which is ordered by opcode, so
// that a slip in the assembler's table, which is ordered by name, can't repeat here.
constexpr const char* kMatrix = R"(
BRK     ORA(,x) - - -      ORAzp   ASLzp   - PHP ORAimm ASLacc - -       ORAabs  ASLabs  -
BPLrel  ORA(),y - - -      ORAzpx  ASLzpx  - CLC ORAaby -      - -       ORAabx  ASLabx  -
JSRabs  AND(,x) - - BITzp  ANDzp   ROLzp   - PLP ANDimm ROLacc - BITabs  ANDabs  ROLabs  -
BMIrel  AND(),y - - -      ANDzpx  ROLzpx  - SEC ANDaby -      - -       ANDabx  ROLabx  -
RTI     EOR(,x) - - -      EORzp   LSRzp   - PHA EORimm LSRacc - JMPabs  EORabs  LSRabs  -
BVCrel  EOR(),y - - -      EORzpx  LSRzpx  - CLI EORaby -      - -       EORabx  LSRabx  -
RTS     ADC(,x) - - -      ADCzp   RORzp   - PLA ADCimm RORacc - JMPind  ADCabs  RORabs  -
BVSrel  ADC(),y - - -      ADCzpx  RORzpx  - SEI ADCaby -      - -       ADCabx  RORabx  -
-       STA(,x) - - STYzp  STAzp   STXzp   - DEY -      TXA    - STYabs  STAabs  STXabs  -
BCCrel  STA(),y - - STYzpx STAzpx  STXzpy  - TYA STAaby TXS    - -       STAabx  -       -
LDYimm  LDA(,x) LDXimm - LDYzp LDAzp LDXzp - TAY LDAimm TAX    - LDYabs  LDAabs  LDXabs  -
BCSrel  LDA(),y - - LDYzpx LDAzpx  LDXzpy  - CLV LDAaby TSX    - LDYabx  LDAabx  LDXaby  -
CPYimm  CMP(,x) - - CPYzp  CMPzp   DECzp   - INY CMPimm DEX    - CPYabs  CMPabs  DECabs  -
BNErel  CMP(),y - - -      CMPzpx  DECzpx  - CLD CMPaby -      - -       CMPabx  DECabx  -
CPXimm  SBC(,x) - - CPXzp  SBCzp   INCzp   - INX SBCimm NOP    - CPXabs  SBCabs  INCabs  -
BEQrel  SBC(),y - - -      SBCzpx  INCzpx  - SED SBCaby -      - -       SBCabx  INCabx  -
)";

struct Form {
    std::string mode;
    std::vector<std::string> operands;  // spellings, all to give `bytes`
    std::vector<int> bytes;             // behind the opcode
};

const std::vector<Form>& Forms() {
    static const std::vector<Form> forms = {
        {"", {""}, {}},
        {"acc", {"A", "a", ""}, {}},
        {"imm", {"#$12", "# 18", "#(3*6)"}, {0x12}},
        {"zp", {"<$34", "$34", "< $34 ;x"}, {0x34}},
        {"zpx", {"<$34,X", "$34,x", "<$34 , X"}, {0x34}},
        {"zpy", {"<$34,Y", "$34,y"}, {0x34}},
        {"abs", {"$1234", "$1200+$34"}, {0x34, 0x12}},
        {"abx", {"$1234,X", "$1234 ,x"}, {0x34, 0x12}},
        {"aby", {"$1234,Y", "$1234,y"}, {0x34, 0x12}},
        {"ind", {"[$1234]", "($1234)"}, {0x34, 0x12}},
        {"(,x)", {"[$34,X]", "($34,x)", "[ $34 , X ]"}, {0x34}},
        {"(),y", {"[$34],Y", "($34),y", "[$34] , Y"}, {0x34}},
        {"rel", {"$8000", "*", "here"}, {0xFE}},
    };
    return forms;
}

std::vector<std::string> MatrixCells() {
    std::istringstream text(kMatrix);
    std::vector<std::string> cells;
    for (std::string cell; text >> cell;)
        cells.push_back(cell);
    return cells;
}

std::string Program(const std::string& name, const std::string& operand) {
    return " .org $8000\nhere " + name + " " + operand + "\n";
}

TEST(Instructions, EveryOfficialOpcodeComesFromItsSpellings) {
    const std::vector<std::string> cells = MatrixCells();
    ASSERT_EQ(cells.size(), 256U);
    int checked = 0;
    for (std::size_t opcode = 0; opcode < cells.size(); ++opcode) {
        if (cells[opcode] == "-") continue;
        const std::string name = cells[opcode].substr(0, 3);
        const std::string mode = cells[opcode].substr(3);
        for (const Form& form : Forms()) {
            if (form.mode != mode) continue;
            std::vector<int> expected = {static_cast<int>(opcode)};
            expected.insert(expected.end(), form.bytes.begin(), form.bytes.end());
            expected.push_back(0xFF);  // and not a byte more
            for (const std::string& operand : form.operands) {
                const AssemblyResult result = AssembleText(Program(name, operand));
                EXPECT_EQ(RomBytes(result, expected.size()), expected)
                    << name << " " << operand << "\n"
                    << Messages(result);
            }
            ++checked;
        }
    }
    EXPECT_EQ(checked, 151);
}

// What the processor can't do is refused, not made into something near it. Left out are forms that
// another one stands in for: absolute for zero page, accumulator without its letter, and
// parentheses that are part of an expression.
TEST(Instructions, FormsThatTheProcessorLacksAreRefused) {
    const std::vector<std::string> cells = MatrixCells();
    const auto has = [&cells](const std::string& cell) {
        return std::find(cells.begin(), cells.end(), cell) != cells.end();
    };
    for (const std::string& cell : cells) {
        if (cell == "-") continue;
        const std::string name = cell.substr(0, 3);
        if (has(name)) {
            EXPECT_FALSE(AssembleText(Program(name, "$1234")).Ok()) << name;
            continue;
        }
        const std::array<std::array<std::string, 2>, 7> forms = {{{"imm", "#1"},
                                                                  {"abx", "$1234,X"},
                                                                  {"aby", "$1234,Y"},
                                                                  {"ind", "[$1234]"},
                                                                  {"(,x)", "[$34,X]"},
                                                                  {"(),y", "[$34],Y"},
                                                                  {"zp", "<$34"}}};
        for (const auto& [mode, operand] : forms) {
            if (has(name + mode)) continue;
            const AssemblyResult result = AssembleText(Program(name, operand));
            EXPECT_FALSE(result.Ok()) << name << " " << operand;
            EXPECT_TRUE(result.rom.empty());
        }
        EXPECT_EQ(AssembleText(Program(name, "")).Ok(), has(name + "acc")) << name;
    }
}

// A size decided by a name further down would move everything behind it.
TEST(Instructions, SizeHangsOnNamesAboveOnly) {
    const AssemblyResult result = AssembleText(
        " .org $8000\n LDA ahead\n STY ahead,X\n STA ahead,X\nahead = $12\n LDA ahead\n");
    EXPECT_EQ(RomBytes(result, 11),
              (std::vector<int>{0xAD, 0x12, 0x00, 0x94, 0x12, 0x9D, 0x12, 0x00, 0xA5, 0x12, 0xFF}));
}

}  // namespace
}  // namespace bw::assembler
