#include "assembler/pass.h"

#include <cstring>
#include <utility>

#include "assembler/characters.h"

namespace bw::assembler {
namespace {

const char* LineEnd(const char* at, const char* end) {
    if (*at == '\n') return at;
    return static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
}

std::string_view View(const char* begin, const char* end) {
    return {begin, static_cast<size_t>(end - begin)};
}

}  // namespace

Pass::Pass(SourceFiles& files, const AssemblyOptions& options, const Pass* before)
    : files_(files),
      options_(options),
      diagnostics_(files),
      names_(before == nullptr ? nullptr : &before->names_.table) {
    constexpr size_t kUsualFixups = 4096;  // about as many as a menu for 1,024 games has
    fixups_.reserve(kUsualFixups);
}

void Pass::Read(std::string_view path) {
    const uint32_t file = files_.Open(path);
    const SourceFiles::File& source = files_.At(file);
    if (source.content.status != ReadStatus::Ok) {
        const bool large = source.content.status == ReadStatus::TooLarge;
        diagnostics_.Error({.file = file}, large ? "File is too large!" : "Can not open file!");
        return;
    }
    EnterFrame({.at = source.text.data(),
                .end = source.text.data() + source.text.size(),
                .place = {.file = file}});
    while (!frames_.empty()) {
        Frame& frame = frames_.back();
        if (frame.at == frame.end) {
            LeaveFrame();
            continue;
        }
        ++frame.place.line;
        frame.place.sequence = ++sequence_;
        AssembleLine();
    }
    if (procedure_) diagnostics_.Error(procedure_->place, "Missing .ENDP!");
}

void Pass::AssembleLine() {
    Frame& frame = frames_.back();
    cursor_ = frame.at;
    NoteLocation();
    if (Is(*cursor_, kBlank)) {
        cursor_ = SkipBlanks(cursor_);
        if (!Is(*cursor_, kEnd)) Statement();
    } else if (!Is(*cursor_, kEnd)) {
        LabelLine();
    }
    if (image_.Offset() > kBankSize || !image_.Located()) CheckLocation();
    const char* end = LineEnd(cursor_, frame.end);
    if (options_.listing) {
        const uint32_t listedEnd = image_.Slot() == lineSlot_ ? image_.Offset() : kBankSize * 2;
        listed_.push_back(
            {frame.place, View(frame.at, end), lineSlot_, lineOffset_, listedEnd, lineAddress_});
    }
    frame.at = end + 1;
    if (followUp_ != FollowUp::None) RunFollowUp();
}

void Pass::NoteLocation() {
    lineSlot_ = image_.Slot();
    lineOffset_ = image_.Offset();
    lineAddress_ = image_.Address();
}

// A bank's end is reported once for the stretch that runs over it, not for each line behind.
void Pass::CheckLocation() {
    if (!image_.Located()) {
        if (image_.Offset() != lineOffset_) needsAnother_ = true;
        return;
    }
    if (overflowReported_) return;
    overflowReported_ = true;
    char text[80];
    std::snprintf(text, sizeof text, "Bank overflow, addr: %04X, offset:%04X  > $%04X!",
                  lineAddress_, image_.Offset() - 1, kBankSize - 1);
    diagnostics_.Error(Here(), text);
}

void Pass::LabelLine() {
    const char* begin = cursor_;
    const char* at = *begin == '.' ? begin + 1 : begin;
    if (!Is(*at, kWordStart)) return Error("Unexpected character at the start of a line!", {at, 1});
    at = SkipWord(at);
    label_ = View(begin, at);
    const bool colon = *at == ':';
    cursor_ = SkipBlanks(colon ? at + 1 : at);
    if (Is(*cursor_, kEnd)) {
        if (!colon && *begin == '.' &&
            FindKeyword(PackWord(label_.substr(1))).kind == KeywordKind::Directive) {
            diagnostics_.Warning(Here(), "A word in the first column is a label, not a directive!",
                                 label_);
        }
        DefineLabelHere();
        return;
    }
    Statement();
}

// The cursor stands on the first character of a statement; label_ is the line's label, if any.
void Pass::Statement() {
    if (*cursor_ == '=' && !label_.empty()) {
        ++cursor_;
        return DefineConstant();
    }
    const char* begin = cursor_;
    const bool dotted = *begin == '.';
    const char* wordBegin = dotted ? begin + 1 : begin;
    if (!Is(*wordBegin, kWordStart)) {
        if (!label_.empty()) DefineLabelHere();
        return Error("Unexpected character!", {wordBegin, 1});
    }
    const char* end = SkipWord(wordBegin);
    const Keyword keyword = FindKeyword(PackWord(View(wordBegin, end)));
    cursor_ = end;
    if (*end == ':' && label_.empty()) {
        label_ = View(begin, end);
        cursor_ = SkipBlanks(end + 1);
        return Is(*cursor_, kEnd) ? DefineLabelHere() : Statement();
    }
    if (keyword.kind == KeywordKind::Directive) {
        RunDirective(static_cast<Directive>(keyword.index));
    } else if (keyword.kind == KeywordKind::Instruction && !dotted) {
        if (!label_.empty()) DefineLabelHere();
        Instruction(static_cast<Mnemonic>(keyword.index));
    } else {
        UnknownWord(View(begin, end), dotted);
    }
    ExpectEnd();
}

// A macro's name, or an indented name that is about to be defined.
void Pass::UnknownWord(std::string_view word, bool dotted) {
    if (const auto macro = macros_.find(word); macro != macros_.end()) {
        if (!label_.empty()) DefineLabelHere();
        return CallMacro(word, macro->second);
    }
    const char* next = SkipBlanks(cursor_);
    if (label_.empty() && *next == '=') {
        label_ = word;
        cursor_ = next + 1;
        return DefineConstant();
    }
    if (label_.empty() && (Is(*next, kWordStart) || *next == '.')) {
        const char* begin = *next == '.' ? next + 1 : next;
        const char* end = SkipWord(begin);
        const Keyword keyword = FindKeyword(PackWord(View(begin, end)));
        if (keyword.Is(Directive::Equ) || keyword.Is(Directive::Rs) ||
            keyword.Is(Directive::Macro)) {
            label_ = word;
            cursor_ = end;
            return RunDirective(static_cast<Directive>(keyword.index));
        }
    }
    if (!label_.empty()) DefineLabelHere();
    Error(dotted ? "Unknown directive!" : "Unknown instruction!", word);
}

void Pass::RunDirective(Directive directive) {
    switch (directive) {
        case Directive::Equ:
            return DefineConstant();
        case Directive::Rs:
            return AllocateRam();
        case Directive::Macro:
            return DefineMacro();
        case Directive::Proc:
            return BeginProcedure();
        default:
            break;
    }
    if (!label_.empty()) DefineLabelHere();
    switch (directive) {
        case Directive::Bank:
            return SelectBank();
        case Directive::Byte:
            return Bytes();
        case Directive::Ds:
            return ReserveSpace();
        case Directive::Else:
            return Else();
        case Directive::EndIf:
            return EndIf();
        case Directive::EndM:
            return Error(".ENDM without .MACRO!");
        case Directive::EndP:
            return EndProcedure();
        case Directive::Fail:
            return FailOnPurpose();
        case Directive::If: {
            const ExpressionPlace from = PlaceOfExpression();
            const ExpressionValue value = Evaluate();
            if (!value.Known()) Report(from, value);
            return If(value.Known() && value.value != 0);
        }
        case Directive::IfDef:
            return IfDefined(true);
        case Directive::IfNDef:
            return IfDefined(false);
        case Directive::IncBin:
            return IncludeBinary();
        case Directive::Include:
            return Include();
        case Directive::Org:
            return SetOrigin();
        case Directive::RsSet:
            return SetRamCounter();
        case Directive::Str:
            return CountedString();
        case Directive::Word:
            return Words();
        default:
            return HeaderField(directive);
    }
}

std::string_view Pass::TakeLabel() {
    return std::exchange(label_, {});
}

Symbol& Pass::SymbolNamed(std::string_view name) {
    return names_.table.Get(name, name.front() == '.' ? scope_ : 0);
}

// Makes the symbol ready for its definition. One that has a definition keeps it; whether this one
// says the same is looked at when all values are known.
bool Pass::Claim(Symbol& symbol, const ExpressionPlace& from, const ExpressionValue& value) {
    if (symbol.state == SymbolState::Undefined) {
        symbol.place = Here();
        return true;
    }
    redefinitions_.push_back({&symbol, from, value});
    return false;
}

void Pass::DefineLabelHere() {
    const std::string_view name = TakeLabel();
    // A global label opens a stretch of its own for local ones; in a macro it can still see out.
    if (name.front() != '.') {
        const bool inMacro = frames_.back().kind == FrameKind::Macro;
        scope_ = names_.scopes.Open(inMacro ? frames_.back().scope : 0);
    }
    Symbol& symbol = SymbolNamed(name);
    if (!image_.Located()) needsAnother_ = true;
    if (!Claim(symbol, PlaceOfExpression(), {.value = lineAddress_})) return;
    symbol.state = SymbolState::Defined;
    symbol.value = lineAddress_;
    symbol.bank = image_.Slot();
}

void Pass::DefineConstant() {
    if (label_.empty()) return Error("A name must stand in front!");
    const std::string_view name = TakeLabel();
    Symbol& symbol = SymbolNamed(name);
    const ExpressionPlace from = PlaceOfExpression();
    const ExpressionValue value = Evaluate();
    if (value.Failed()) Report(from, value);
    if (!Claim(symbol, from, value)) return ExpectEnd();
    if (value.Known()) {
        symbol.state = SymbolState::Defined;
        symbol.value = value.value;
    } else if (value.Failed()) {
        symbol.state = SymbolState::Failed;
    } else {
        symbol.state = SymbolState::Deferred;
        symbol.value = static_cast<int64_t>(names_.deferred.size());
        names_.deferred.push_back(from);
        deferredSymbols_.push_back(&symbol);
    }
    ExpectEnd();
}

void Pass::Error(std::string_view text, std::string_view detail) {
    diagnostics_.Error(Here(), text, detail);
    SkipRest();
}

void Pass::SkipRest() {
    cursor_ = LineEnd(cursor_, frames_.back().end);
}

void Pass::ExpectEnd() {
    cursor_ = SkipBlanks(cursor_);
    if (Is(*cursor_, kEnd)) return;
    const char* end = cursor_;
    while (!Is(*end, kEnd))
        ++end;
    while (Is(end[-1], kBlank))
        --end;
    Error("Unexpected text behind the statement!", View(cursor_, end));
}

}  // namespace bw::assembler
