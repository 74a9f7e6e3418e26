#include <cstring>
#include <string>
#include <utility>

#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

const char* NextLine(const char* at, const char* end) {
    return static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at))) + 1;
}

// The keyword that a line's statement begins with, for lines that are only looked through.
Keyword KeywordOfLine(const char* at) {
    if (!Is(*at, kBlank)) {
        while (!Is(*at, kBlank | kEnd))
            ++at;
    }
    at = SkipBlanks(at);
    if (*at == '.') ++at;
    const char* end = SkipWord(at);
    return FindKeyword(PackWord({at, static_cast<size_t>(end - at)}));
}

}  // namespace

// Every text that is gone through is counted, so that no nest of macros or includes can run on
// without end.
void Pass::EnterFrame(Frame frame) {
    textBytes_ += static_cast<size_t>(frame.end - frame.at);
    if (textBytes_ > options_.textLimit) {
        diagnostics_.Error(frame.place, "Source is too large!");
        return EndReading();
    }
    frame.conditions = conditions_.size();
    frame.scope = scope_;
    if (frame.kind == FrameKind::Macro) scope_ = names_.scopes.Open(scope_);
    frames_.push_back(frame);
}

// Gives up. What the rest would have defined or closed isn't missed.
void Pass::EndReading() {
    for (Frame& frame : frames_)
        frame.at = frame.end;
    conditions_.clear();
    procedure_.reset();
    hopeless_ = true;
}

void Pass::LeaveFrame() {
    const Frame& frame = frames_.back();
    while (conditions_.size() > frame.conditions) {
        diagnostics_.Error(conditions_.back().place, "Missing .ENDIF!");
        conditions_.pop_back();
    }
    if (frame.kind == FrameKind::Macro) scope_ = frame.scope;
    frames_.pop_back();
}

void Pass::RunFollowUp() {
    switch (std::exchange(followUp_, FollowUp::None)) {
        case FollowUp::SkipToElse:
            return SkipLines(true);
        case FollowUp::SkipToEndIf:
            return SkipLines(false);
        case FollowUp::CaptureMacro:
            return CaptureMacro();
        case FollowUp::Enter:
            return EnterFrame(next_);
        case FollowUp::End:
            return EndReading();
        case FollowUp::None:
            return;
    }
}

void Pass::If(bool condition) {
    if (conditions_.size() >= kConditionDepth) return Error("Conditions nested too deeply!");
    conditions_.push_back({Here()});
    if (!condition) followUp_ = FollowUp::SkipToElse;
}

void Pass::IfDefined(bool wanted) {
    cursor_ = SkipBlanks(cursor_);
    const char* begin = cursor_;
    const char* end = begin;
    if (*end == '.' || Is(*end, kWordStart)) end = SkipWord(end + 1);
    const std::string_view name(begin, static_cast<size_t>(end - begin));
    if (name.empty()) {
        Error("Missing operand!");
        return If(false);
    }
    cursor_ = end;
    const Symbol* symbol = names_.table.Find(name, name.front() == '.' ? scope_ : 0);
    const bool defined =
        (symbol != nullptr && symbol->state != SymbolState::Undefined) || macros_.contains(name);
    If(defined == wanted);
}

void Pass::Else() {
    if (conditions_.size() == frames_.back().conditions) return Error(".ELSE without .IF!");
    if (conditions_.back().elseSeen) Error("Second .ELSE of one .IF!");
    conditions_.back().elseSeen = true;
    followUp_ = FollowUp::SkipToEndIf;
}

void Pass::EndIf() {
    if (conditions_.size() == frames_.back().conditions) return Error(".ENDIF without .IF!");
    conditions_.pop_back();
}

// Skips the branch that isn't assembled, with its .ELSE or .ENDIF. A condition ends in the file or
// macro where it began; LeaveFrame() reports it if it doesn't.
void Pass::SkipLines(bool stopAtElse) {
    Frame& frame = frames_.back();
    size_t depth = 0;
    while (frame.at != frame.end) {
        const Keyword keyword = KeywordOfLine(frame.at);
        frame.at = NextLine(frame.at, frame.end);
        ++frame.place.line;
        frame.place.sequence = ++sequence_;
        if (keyword.kind != KeywordKind::Directive) continue;
        if (keyword.Is(Directive::If) || keyword.Is(Directive::IfDef) ||
            keyword.Is(Directive::IfNDef)) {
            ++depth;
        } else if (keyword.Is(Directive::EndIf)) {
            if (depth-- == 0) return conditions_.pop_back();
        } else if (keyword.Is(Directive::Else) && depth == 0) {
            if (conditions_.back().elseSeen) diagnostics_.Error(Here(), "Second .ELSE of one .IF!");
            conditions_.back().elseSeen = true;
            if (stopAtElse) return;
        }
    }
}

void Pass::Include() {
    const std::optional<std::string_view> path = QuotedText();
    if (!path) return;
    const uint32_t file = files_.Open(*path);
    const SourceFiles::File& source = files_.At(file);
    if (source.content.status == ReadStatus::CanNotOpen) return Error("Can not open file!", *path);
    if (source.content.status == ReadStatus::TooLarge) return Error("File is too large!", *path);
    size_t depth = 0;
    for (const Frame& frame : frames_) {
        if (frame.kind != FrameKind::File) continue;
        ++depth;
        if (frame.place.file == file) return Error("File includes itself!", *path);
    }
    if (depth > kIncludeDepth) return Error("Includes nested too deeply!", *path);
    next_ = {.at = source.text.data(),
             .end = source.text.data() + source.text.size(),
             .place = {.file = file, .expansion = Here().expansion}};
    followUp_ = FollowUp::Enter;
}

// NAME .MACRO or .MACRO NAME
void Pass::DefineMacro() {
    std::string_view name = TakeLabel();
    cursor_ = SkipBlanks(cursor_);
    if (name.empty() && Is(*cursor_, kWordStart)) {
        const char* end = SkipWord(cursor_);
        name = {cursor_, static_cast<size_t>(end - cursor_)};
        cursor_ = end;
    }
    followUp_ = FollowUp::CaptureMacro;
    macroName_ = {};
    if (name.empty()) return Error("Macro without a name!");
    if (FindKeyword(PackWord(name)).kind != KeywordKind::None) {
        return Error("Macro has the name of an instruction or directive!", name);
    }
    if (const auto old = macros_.find(name); old != macros_.end()) {
        return Error("Macro is defined already!",
                     std::string(name) + " (at " + diagnostics_.Spot(old->second.place) + ")");
    }
    macroName_ = name;
}

void Pass::CaptureMacro() {
    Frame& frame = frames_.back();
    const Place head = frame.place;
    const char* begin = frame.at;
    size_t depth = 0;
    while (frame.at != frame.end) {
        const char* line = frame.at;
        const Keyword keyword = KeywordOfLine(line);
        frame.at = NextLine(line, frame.end);
        ++frame.place.line;
        frame.place.sequence = ++sequence_;
        if (keyword.Is(Directive::Macro)) ++depth;
        if (!keyword.Is(Directive::EndM) || depth-- != 0) continue;
        if (!macroName_.empty()) {
            macros_[macroName_] = {{begin, static_cast<size_t>(line - begin)}, head};
        }
        return;
    }
    diagnostics_.Error(head, "Missing .ENDM!");
}

void Pass::CallMacro(std::string_view name, const Macro& macro) {
    size_t depth = 0;
    for (const Frame& frame : frames_)
        depth += frame.kind == FrameKind::Macro ? 1 : 0;
    if (depth >= kMacroDepth) {
        Error("Macro calls nested too deeply!", name);
        followUp_ = FollowUp::End;
        return;
    }
    const std::vector<std::string_view> arguments = MacroArguments();
    if (arguments.size() > 9) return Error("More than 9 macro arguments!");
    const Place caller = Here();
    diagnostics_.expansions.push_back({name, caller});
    const std::string_view text = Expand(macro.body, arguments);
    next_ = {.kind = FrameKind::Macro,
             .at = text.data(),
             .end = text.data() + text.size(),
             .place = macro.place};
    next_.place.expansion = static_cast<uint32_t>(diagnostics_.expansions.size() - 1);
    followUp_ = FollowUp::Enter;
}

// Splits the operand field at its commas, but not within quotes, parentheses and brackets.
std::vector<std::string_view> Pass::MacroArguments() {
    std::vector<std::string_view> arguments;
    cursor_ = SkipBlanks(cursor_);
    if (Is(*cursor_, kEnd)) return arguments;
    for (;; ++cursor_) {
        cursor_ = SkipBlanks(cursor_);
        const char* begin = cursor_;
        int depth = 0;
        for (; *cursor_ != '\n'; ++cursor_) {
            const char c = *cursor_;
            if (c == '"') {
                const char* close = cursor_ + 1;
                while (*close != '"' && *close != '\n')
                    ++close;
                if (*close == '"') cursor_ = close;
            } else if (c == '\'' && cursor_[1] != '\n' && cursor_[2] == '\'') {
                cursor_ += 2;
            } else if (c == ';' || (c == ',' && depth <= 0)) {
                break;
            } else if (c == '(' || c == '[') {
                ++depth;
            } else if (c == ')' || c == ']') {
                --depth;
            }
        }
        const char* end = cursor_;
        while (end != begin && Is(end[-1], kBlank))
            --end;
        arguments.emplace_back(begin, static_cast<size_t>(end - begin));
        if (*cursor_ != ',') return arguments;
    }
}

// Puts the arguments into the body: \1 to \9, \# their number, \@ the number of this expansion.
// Text beyond the limit is cut; EnterFrame() refuses it then.
std::string_view Pass::Expand(std::string_view body,
                              const std::vector<std::string_view>& arguments) {
    if (body.find('\\') == std::string_view::npos) return body;
    std::string& text = expandedTexts_.emplace_back();
    for (size_t at = 0; at < body.size();) {
        const size_t slash = std::min(body.find('\\', at), body.size());
        text.append(body, at, slash - at);
        at = slash + 2;
        if (slash == body.size()) break;
        const char code = body[slash + 1];  // the body ends in a line feed
        if (code >= '1' && code <= '9') {
            const auto index = static_cast<size_t>(code - '1');
            if (index < arguments.size()) text.append(arguments[index]);
        } else if (code == '#') {
            text.append(std::to_string(arguments.size()));
        } else if (code == '@') {
            text.append(std::to_string(diagnostics_.expansions.size() - 1));
        } else {
            text.append(body, slash, 2);
        }
        if (text.size() > options_.textLimit) break;
    }
    const size_t size = text.size();
    text.append(kSourcePadding, '\0');
    return std::string_view(text.data(), size);
}

// .PROC NAME or NAME .PROC: a label whose local labels end at .ENDP.
void Pass::BeginProcedure() {
    cursor_ = SkipBlanks(cursor_);
    if (label_.empty() && Is(*cursor_, kWordStart)) {
        const char* end = SkipWord(cursor_);
        label_ = {cursor_, static_cast<size_t>(end - cursor_)};
        cursor_ = end;
    }
    if (label_.empty()) return Error("Procedure without a name!");
    if (procedure_) {
        TakeLabel();
        return Error("Procedure within a procedure!");
    }
    procedure_ = Procedure{Here(), scope_};
    DefineLabelHere();
}

void Pass::EndProcedure() {
    if (!procedure_) return Error(".ENDP without .PROC!");
    scope_ = procedure_->scope;
    procedure_.reset();
}

}  // namespace bw::assembler
