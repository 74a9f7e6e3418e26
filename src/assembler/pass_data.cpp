#include <cstring>
#include <span>
#include <string>

#include "assembler/characters.h"
#include "assembler/pass.h"

namespace bw::assembler {
namespace {

constexpr size_t kCountedStringLimit = 255;

std::span<const uint8_t> AsBytes(std::string_view text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

}  // namespace

// Takes "text" with straight quotes. Nothing in it is special: it ends at the next quote.
std::optional<std::string_view> Pass::QuotedText() {
    cursor_ = SkipBlanks(cursor_);
    if (*cursor_ != '"') {
        Error("Missing quoted text!");
        return std::nullopt;
    }
    const char* begin = ++cursor_;
    while (*cursor_ != '"' && *cursor_ != '\n')
        ++cursor_;
    if (*cursor_ != '"') {
        Error("Missing closing quote!");
        return std::nullopt;
    }
    return std::string_view(begin, static_cast<size_t>(cursor_++ - begin));
}

void Pass::Bytes() {
    for (;; ++cursor_) {
        const char* p = cursor_ = SkipBlanks(cursor_);
        if (*p == '$' && Is(p[1], kHexDigit) && Is(p[2], kHexDigit) &&
            (Is(p[3], kEnd | kBlank) || p[3] == ',')) {
            image_.Put(static_cast<uint8_t>(HexValue(p[1]) << 4U | HexValue(p[2])));
            cursor_ = p + 3;
        } else if (*p == '"') {
            const std::optional<std::string_view> text = QuotedText();
            if (!text) return;
            image_.Put(AsBytes(*text));
        } else {
            const ExpressionPlace from = PlaceOfExpression();
            PutValue(ValueKind::Byte, from, Evaluate());
        }
        cursor_ = SkipBlanks(cursor_);
        if (*cursor_ != ',') return;
    }
}

void Pass::Words() {
    for (;; ++cursor_) {
        cursor_ = SkipBlanks(cursor_);
        const ExpressionPlace from = PlaceOfExpression();
        PutValue(ValueKind::Word, from, Evaluate());
        cursor_ = SkipBlanks(cursor_);
        if (*cursor_ != ',') return;
    }
}

void Pass::CountedString() {
    const std::optional<std::string_view> text = QuotedText();
    if (!text) return;
    if (text->size() > kCountedStringLimit) {
        return Error("The string length overflows, up to 255 characters!",
                     std::to_string(text->size()));
    }
    image_.Put(static_cast<uint8_t>(text->size()));
    image_.Put(AsBytes(*text));
}

// A file that is longer than what is left of its bank goes on in the banks behind it.
void Pass::IncludeBinary() {
    const std::optional<std::string_view> path = QuotedText();
    if (!path) return;
    // Behind a bank of unknown number stands nothing: its file waits for the next reading.
    const bool known = image_.Slot() < kBankCountLimit;
    const size_t banks = known ? static_cast<size_t>(kBankCountLimit - image_.Slot()) : 1;
    const size_t room = image_.Offset() > kBankSize ? 0 : banks * kBankSize - image_.Offset();
    const SourceBytes file = files_.ReadBinary(*path, room);
    if (file.status == ReadStatus::CanNotOpen) return Error("Can not open file!", *path);
    if (file.status == ReadStatus::TooLarge) {
        // It isn't read: its size is all that the message needs.
        if (!known) needsAnother_ = true;
        return image_.Skip(file.size);
    }
    std::span<const uint8_t> rest = AsBytes({file.bytes.get(), file.size});
    const int16_t first = image_.Slot();
    while (image_.Offset() + rest.size() > kBankSize) {
        const size_t part = kBankSize - image_.Offset();
        image_.Put(rest.first(part));
        rest = rest.subspan(part);
        image_.SelectNext();
        if (part == 0) NoteLocation();
    }
    image_.Put(rest);
    if (image_.Slot() != first) bankUses_.push_back({image_.Slot(), Here()});
}

void Pass::FailOnPurpose() {
    cursor_ = SkipBlanks(cursor_);
    if (Is(*cursor_, kEnd)) return Error("Stopped by .FAIL!");
    if (const std::optional<std::string_view> text = QuotedText()) Error(*text);
}

}  // namespace bw::assembler
