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

void Pass::IncludeBinary() {
    const std::optional<std::string_view> path = QuotedText();
    if (!path) return;
    // A file that doesn't fit isn't read: its size is all that the message needs.
    const uint32_t room = image_.Offset() < kBankSize ? kBankSize - image_.Offset() : 0;
    const SourceBytes file = files_.ReadBinary(*path, room);
    if (file.status == ReadStatus::CanNotOpen) return Error("Can not open file!", *path);
    if (file.status == ReadStatus::TooLarge) return image_.Skip(file.size);
    image_.Put(AsBytes({file.bytes.get(), file.size}));
}

void Pass::FailOnPurpose() {
    cursor_ = SkipBlanks(cursor_);
    if (Is(*cursor_, kEnd)) return Error("Stopped by .FAIL!");
    if (const std::optional<std::string_view> text = QuotedText()) Error(*text);
}

}  // namespace bw::assembler
