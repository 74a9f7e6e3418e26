#include "update/plain_text.h"

namespace bw {
namespace {

bool IsControl(char16_t unit) {
    if (unit == u'\t' || unit == u'\n' || unit == u'\r') return false;
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

// The marks, embeddings, overrides and isolates of Unicode's bidirectional algorithm (UAX #9), and
// the old format characters behind them, of which some mirror brackets.
bool TurnsWriting(char16_t unit) {
    return unit == 0x061C || unit == 0x200E || unit == 0x200F ||
           (unit >= 0x202A && unit <= 0x202E) || (unit >= 0x2066 && unit <= 0x206F);
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

}  // namespace

std::u16string PlainText(std::u16string_view text) {
    std::u16string plain;
    for (const char16_t unit : text) {
        if (IsControl(unit) || TurnsWriting(unit)) continue;
        if (plain.size() == kMostCharacters) {
            if (IsHighSurrogate(plain.back())) plain.pop_back();
            break;
        }
        plain += unit;
    }
    return plain;
}

}  // namespace bw
