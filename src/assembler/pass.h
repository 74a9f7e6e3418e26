#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "assembler/assembler.h"
#include "assembler/diagnostics.h"
#include "assembler/expression.h"
#include "assembler/image.h"
#include "assembler/instructions.h"
#include "assembler/keywords.h"
#include "assembler/source_files.h"

namespace bw::assembler {

// How a value is put into the ROM, and with which limits.
enum class ValueKind : uint8_t { Byte, Word, Immediate, ZeroPage, Absolute, Relative };

// Bytes that a value of this kind takes.
inline uint32_t SizeOf(ValueKind kind) {
    return kind == ValueKind::Word || kind == ValueKind::Absolute ? 2 : 1;
}

// A value that wasn't known when its bytes were passed.
struct Fixup {
    ValueKind kind = ValueKind::Byte;
    int16_t slot = 0;
    uint32_t offset = 0;
    Symbol* name = nullptr;  // if the value is just this one
    ExpressionPlace from;
};

// One line of the listing: what was put from `offset` on, up to `end`, which lies beyond the bank
// if the line went on in the next one.
struct ListedLine {
    Place place;
    std::string_view text;
    int16_t slot = 0;
    uint32_t offset = 0;
    uint32_t end = 0;
    uint32_t address = 0;
};

// One reading of the whole source.
//
// Lines are parsed once: bytes whose values are known are put at once, the others are noted as
// fix-ups and put by Finish(), when all names are known. How much room a line takes is decided on
// the spot, by how its operand is written or from names defined above, so that it can't change.
// Only where the location itself hangs on a name further down (a forward .ORG, or a .BANK whose
// bank is also used otherwise) does the source have to be read again, with the values found before.
class Pass {
  public:
    // `before` is the reading before this one, or null; it must outlive this one.
    Pass(SourceFiles& files, const AssemblyOptions& options, const Pass* before);

    void Read(std::string_view path);
    // Puts the fix-ups. Call once, after Read().
    void Finish();

    // Whether values that decided locations turned out otherwise than assumed.
    bool NeedsAnother() const { return needsAnother_ && !hopeless_; }
    // Ends the search for locations that never settle.
    void ReportUnsettled();

    AssemblyResult TakeResult();

  private:
    enum class FrameKind : uint8_t { File, Macro };

    // A text that is being read: a file, or the expansion of a macro.
    struct Frame {
        FrameKind kind = FrameKind::File;
        const char* at = nullptr;  // the next line
        const char* end = nullptr;
        Place place;            // of the line at hand
        size_t conditions = 0;  // open ones when the frame was entered
        uint32_t scope = 0;     // to go back to at the end of a macro
    };

    struct Macro {
        std::string_view body;  // whole lines
        Place place;            // of the line before the body
    };

    struct Condition {
        Place place;
        bool elseSeen = false;
    };

    struct UnknownBank {
        int16_t slot = 0;
        ExpressionPlace from;
    };

    struct BankUse {
        int64_t bank = 0;
        Place place;
    };

    // One more definition of a name. `from` is what the value comes from if it isn't known yet.
    struct Redefinition {
        const Symbol* symbol = nullptr;
        ExpressionPlace from;
        ExpressionValue value;
    };

    struct Procedure {
        Place place;
        uint32_t scope = 0;
    };

    // What the line at hand has in store for the lines behind it.
    enum class FollowUp : uint8_t { None, SkipToElse, SkipToEndIf, CaptureMacro, Enter, End };

    struct Header {
        uint8_t prg = 1;  // 16 KB units
        uint8_t chr = 0;  // 8 KB units
        uint8_t mapper = 0;
        uint8_t mirroring = 0;  // the low four bits of header byte 6
    };

    // Lines and labels (pass.cpp)
    void AssembleLine();
    void NoteLocation();
    void LabelLine();
    void Statement();
    void UnknownWord(std::string_view word, bool dotted);
    void RunDirective(Directive directive);
    void CheckLocation();
    void DefineLabelHere();
    bool Claim(Symbol& symbol, const ExpressionPlace& from, const ExpressionValue& value);
    Symbol& SymbolNamed(std::string_view name);
    void DefineConstant();
    std::string_view TakeLabel();

    // Conditions, includes, macros, procedures (pass_flow.cpp)
    void RunFollowUp();
    void EnterFrame(Frame frame);
    void LeaveFrame();
    void EndReading();
    void If(bool condition);
    void IfDefined(bool wanted);
    void Else();
    void EndIf();
    void SkipLines(bool stopAtElse);
    void Include();
    void DefineMacro();
    void CaptureMacro();
    void CallMacro(std::string_view name, const Macro& macro);
    std::vector<std::string_view> MacroArguments();
    std::string_view Expand(std::string_view body, const std::vector<std::string_view>& arguments);
    void BeginProcedure();
    void EndProcedure();

    // Banks, addresses, RAM and header (pass_layout.cpp)
    std::optional<int64_t> LayoutValue();
    void SelectBank();
    void SetOrigin();
    void SetRamCounter();
    void AllocateRam();
    void ReserveSpace();
    void HeaderField(Directive directive);

    // Data (pass_data.cpp)
    void Bytes();
    void Words();
    void CountedString();
    void IncludeBinary();
    void FailOnPurpose();
    std::optional<std::string_view> QuotedText();

    // Instructions (pass_operand.cpp)
    void Instruction(Mnemonic mnemonic);
    bool Indirect(Mnemonic mnemonic);
    void Direct(Mnemonic mnemonic);
    void PutInstruction(Mnemonic mnemonic, Mode mode);
    void PutOperand(Mnemonic mnemonic, Mode mode, ValueKind kind, const ExpressionPlace& from,
                    const ExpressionValue& value);

    // Values (pass_values.cpp)
    ExpressionPlace PlaceOfExpression() const;
    ExpressionValue Evaluate(Forward forward = Forward::Wait);
    void PutValue(ValueKind kind, const ExpressionPlace& from, const ExpressionValue& value);
    void Store(ValueKind kind, const ExpressionPlace& from, int64_t value, uint8_t* bytes);
    void Report(const ExpressionPlace& from, const ExpressionValue& value);

    // After the last line (pass_finish.cpp)
    void ResolveBanks();
    void ResolveDeferred();
    void ApplyFixups();
    void SettleBanks();
    void CheckBanks();
    void CheckGuesses();
    void CheckRedefinitions();
    uint32_t BankCount() const;
    void WriteHeader(std::vector<uint8_t>& rom) const;

    const Place& Here() const { return frames_.back().place; }
    // Reports an error of the line at hand and gives up the rest of that line.
    void Error(std::string_view text, std::string_view detail = {});
    void SkipRest();
    void ExpectEnd();

    SourceFiles& files_;
    AssemblyOptions options_;
    Diagnostics diagnostics_;
    Names names_;
    Image image_;
    Header header_;

    std::vector<Frame> frames_;
    Frame next_;  // to enter at FollowUp::Enter
    FollowUp followUp_ = FollowUp::None;
    std::vector<Condition> conditions_;
    std::optional<Procedure> procedure_;
    std::unordered_map<std::string_view, Macro> macros_;
    std::string_view macroName_;  // of the macro to capture; empty if its head had an error
    std::deque<std::string> expandedTexts_;
    size_t textBytes_ = 0;  // of all frames entered so far

    uint32_t sequence_ = 0;
    const char* cursor_ = nullptr;
    std::string_view label_;  // of the line at hand, until it is used
    int16_t lineSlot_ = 0;
    uint32_t lineOffset_ = 0;
    uint32_t lineAddress_ = 0;
    uint32_t scope_ = kFirstScope;
    int64_t ramCounter_ = 0;
    bool overflowReported_ = false;  // in the stretch at hand
    bool needsAnother_ = false;
    bool hopeless_ = false;  // an error that another reading would only find again

    std::vector<Fixup> fixups_;
    std::vector<Symbol*> deferredSymbols_;
    std::vector<Redefinition> redefinitions_;
    std::vector<UnknownBank> unknownBanks_;
    std::vector<BankUse> bankUses_;
    std::vector<ListedLine> listed_;
};

}  // namespace bw::assembler
