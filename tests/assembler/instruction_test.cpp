#include <map>
#include <set>
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
    bool refusable = true;              // false: another form stands in for a missing one
};

const std::vector<Form> kForms = {{"imm", {"#$12", "# 18", "#(3*6)"}, {0x12}},
                                  {"zp", {"<$34", "< $34 ;x"}, {0x34}},
                                  {"zpx", {"<$34,X", "<$34 , x"}, {0x34}},
                                  {"zpy", {"<$34,Y", "<$34,y"}, {0x34}},
                                  {"abs", {"$1234", "$1200+$34"}, {0x34, 0x12}, false},
                                  {"abs", {"$34", "$0034"}, {0x34, 0}, false},
                                  {"abx", {"$1234,X", "$1234 ,x"}, {0x34, 0x12}},
                                  {"abx", {"$34,x"}, {0x34, 0}, false},
                                  {"aby", {"$1234,Y", "$1234,y"}, {0x34, 0x12}},
                                  {"aby", {"$34,y"}, {0x34, 0}, false},
                                  {"ind", {"[$1234]", "($1234)"}, {0x34, 0x12}},
                                  {"(,x)", {"[$34,X]", "($34,x)", "[ $34 , X ]"}, {0x34}},
                                  {"(),y", {"[$34],Y", "($34),y", "[$34] , Y"}, {0x34}},
                                  {"acc", {"A", "a", ""}, {}, false},
                                  {"rel", {"$8000", "*", "here"}, {0xFE}, false}};

AssemblyResult Assembled(const std::string& name, const std::string& operand) {
    return AssembleText(" .org $8000\nhere " + name + " " + operand + "\n");
}

// Each official opcode comes from its spellings, and what the processor can't do is refused, not
// made into something near it.
TEST(Instructions, AreThoseOfTheProcessor) {
    std::istringstream text(kMatrix);
    std::map<std::string, int> opcodes;  // by name and mode
    std::set<std::string> names;
    int opcode = 0;
    for (std::string cell; text >> cell; ++opcode) {
        if (cell == "-") continue;
        opcodes[cell] = opcode;
        names.insert(cell.substr(0, 3));
    }
    ASSERT_EQ(opcode, 256);
    ASSERT_EQ(opcodes.size(), 151u);
    const auto expectBytes = [&](const std::string& name, const Form& form) {
        std::vector<int> bytes = {opcodes.at(name + form.mode)};
        bytes.insert(bytes.end(), form.bytes.begin(), form.bytes.end());
        bytes.push_back(0xFF);  // and not a byte more
        for (const std::string& operand : form.operands)
            EXPECT_EQ(RomBytes(Assembled(name, operand), bytes.size()), bytes)
                << name << " " << operand;
    };
    for (const std::string& name : names) {
        if (opcodes.contains(name)) {
            expectBytes(name, {"", {""}, {}});
            EXPECT_FALSE(Assembled(name, "$1234").Ok()) << name;
            continue;
        }
        EXPECT_EQ(Assembled(name, "").Ok(), opcodes.contains(name + "acc")) << name;
        for (const Form& form : kForms) {
            if (opcodes.contains(name + form.mode)) {
                expectBytes(name, form);
            } else if (form.refusable) {
                const AssemblyResult result = Assembled(name, form.operands[0]);
                EXPECT_TRUE(!result.Ok() && result.rom.empty()) << name << " " << form.operands[0];
            }
        }
    }
}

}  // namespace
}  // namespace bw::assembler
